#include "console/ConsoleSession.h"

#include "console/frmMain.h"
#include "ui/Forms.h"

namespace hv {

namespace {
frmMain& Loaded_Main() {
    frmMain& main = ui::Forms::Get<frmMain>();
    main.Load();
    return main;
}
} // namespace

Subject ConsoleSession::Current_Subject() {
    frmMain& main = Loaded_Main();
    Subject s;
    s.computerId = main.m_lngComputerID;
    s.userId = ui::Tag_Number(main.cboUsers);
    return s;
}

QString ConsoleSession::Current_User_Text() {
    return Loaded_Main().cboUsers->Text();
}

void ConsoleSession::Show_Page(const QString& formName, const QString& word) {
    if (!ui::Forms::Known(formName))
        return;
    if (ui::Form* page = ui::Forms::Create(formName))
        page->Open(word, ui::Forms::Find(QStringLiteral("frmMain")));
}

void ConsoleSession::Get_Internet_Mode() {
    Loaded_Main().Get_Internet_Mode();
}

void ConsoleSession::Get_Working_Mode() {
    Loaded_Main().Get_Working_Mode();
}

void ConsoleSession::Fill_Users_In_ComboBox() {
    Loaded_Main().Fill_Users_In_ComboBox();
}

} // namespace hv
