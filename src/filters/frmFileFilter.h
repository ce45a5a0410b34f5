#pragma once
// The file extensions the subject may not download, and the File Filter switch.
#include "filters/frmSingleListPage.h"

namespace hv {

class frmFileFilter final : public SingleListPage {
    Q_OBJECT
public:
    frmFileFilter();
};

} // namespace hv
