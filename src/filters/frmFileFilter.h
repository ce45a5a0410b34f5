#pragma once
// The file extensions the subject may not download, and the File Filter switch.
#include "filters/frmSingleListPage.h"

namespace hv {

class frmFileFilter final : public SingleListPage {
    Q_OBJECT
public:
    frmFileFilter();

    ui::CheckBox* chkEnableFileFilter;
    QGroupBox* frameFileFilter;
    ui::Label* lblFileExtension;
    ui::TextBox* txtFileExtension;
    ui::ListView* lvwFileFilter;
    ui::ImageList* ilsFileFilter;

    void chkEnableFileFilter_Click() { Enable_Box_Click(); }
    void lvwFileFilter_AfterLabelEdit(int& Cancel, QString& NewString) {
        List_After_Label_Edit(Cancel, NewString);
    }
};

} // namespace hv
