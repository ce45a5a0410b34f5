#pragma once
// The window titles blocked for the subject, and the Window Blocker switch.
#include "filters/frmSingleListPage.h"

namespace hv {

class frmWindowBlocker final : public SingleListPage {
    Q_OBJECT
public:
    frmWindowBlocker();
};

} // namespace hv
