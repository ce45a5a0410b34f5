#pragma once
// The window titles blocked for the subject, and the Window Blocker switch.
#include "filters/frmSingleListPage.h"

namespace hv {

class frmWindowBlocker final : public SingleListPage {
    Q_OBJECT
public:
    frmWindowBlocker();

    ui::CheckBox* chkEnableWindowBlocker;
    QGroupBox* frameWindowBlocker;
    ui::Label* lblWindowTitle;
    ui::TextBox* txtWindowBlocker;
    ui::ListView* lvwWindowBlocker;
    ui::ImageList* ilsWindowBlocker;

    void chkEnableWindowBlocker_Click() { Enable_Box_Click(); }
    void lvwWindowBlocker_AfterLabelEdit(int& Cancel, QString& NewString) {
        List_After_Label_Edit(Cancel, NewString);
    }
};

} // namespace hv
