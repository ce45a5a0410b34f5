#pragma once
// The main console: launcher of the pages, selector of the subject, display of mode and internet state.
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"

namespace hv {

class frmMain final : public ui::Form {
    Q_OBJECT
public:
    frmMain();

    // Computer identifier of the subject: never assigned, stays 0.
    long m_lngComputerID = 0;
    // PROGRAM_MODE as last read.
    long m_lngHVMode = 0;

    void Get_Working_Mode();
    void Get_Internet_Mode();
    void Fill_Users_In_ComboBox();

    ui::ComboBox* cboUsers = nullptr;
    // (the remaining controls are members too; see frmMain.cpp)

protected:
    void Form_Load() override;
    void Form_Unload(int& Cancel) override;
};

// The subject every page acts on, read from the main console at each use: the computer id and the
// number in cboUsers.Tag (a blank or non-numeric tag raises "Type mismatch", 13).
struct Subject {
    long computerId = 0;
    long userId = 0;
};
Subject Current_Subject();

// Shows a page from the catalogue modally over the main console; nothing when the page is not there.
void Show_Page(const QString& formName);

} // namespace hv
