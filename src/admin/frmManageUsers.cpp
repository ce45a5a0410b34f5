#include "admin/frmManageUsers.h"
#include "admin/model/AdminWords.h"

#include "core/ListFile.h"
#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/modCommonFuns.h"
#include "store/modDBFunctions.h"
#include "ui/BusyCursor.h"
#include "ui/ListFind.h"
#include "ui/PageSwitches.h"
#include "ui/Session.h"

#include <QApplication>
#include <QStyle>
#include <algorithm>

namespace hv {

namespace {
const QString kFileFilter = QStringLiteral("Text Files|*.txt|All Files|*.*");
// An import looks at the clock every so many names, to let the window repaint.
constexpr int kNamesBetweenEvents = 500;
} // namespace

frmManageUsers::frmManageUsers()
    : UserListPage(UserListDesign{.formName = "frmManageUsers",
                                  .frameCaption = QStringLiteral("Users"),
                                  .containerName = "picUsersContainer",
                                  .limit = 20,
                                  .read = Get_Users,
                                  .remove = Remove_User,
                                  .rename = Rename_User}) {
    cmdImport = new ui::CommandButton(QStringLiteral("cmdImport"), QStringLiteral("Import Items"), holder);
    cmdExport = new ui::CommandButton(QStringLiteral("cmdExport"), QStringLiteral("Export Items"), holder);
    sideButtons->addWidget(cmdImport);
    sideButtons->addWidget(cmdExport);
    connect(cmdImport, &ui::CommandButton::Click, this, &frmManageUsers::cmdImport_Click);
    connect(cmdExport, &ui::CommandButton::Click, this, &frmManageUsers::cmdExport_Click);
    connect(lvwUsers, &ui::ListView::BeforeLabelEdit, this, &frmManageUsers::lvwUsers_BeforeLabelEdit);
}

void frmManageUsers::Form_Load() {
    Set_Caption(QStringLiteral("Manage Terminal Server Users"));
    Init_Column();
    Fill_Users_List();
    Set_Controls_Enabled();
    // The style looks its pictures up afresh at each request: they are taken from it once.
    static const QIcon importPicture = QApplication::style()->standardIcon(QStyle::SP_DialogOpenButton);
    static const QIcon exportPicture = QApplication::style()->standardIcon(QStyle::SP_DialogSaveButton);
    cmdImport->Set_Picture(importPicture);
    cmdExport->Set_Picture(exportPicture);
}

void frmManageUsers::Form_QueryUnload(int& Cancel, int UnloadMode) {
    (void)UnloadMode;
    // The window stays while an import, which lets it repaint, is still writing into its list.
    if (m_batch)
        Cancel = 1;
}

void frmManageUsers::Form_Unload(int& Cancel) {
    (void)Cancel;
    Guarded([] { session().Fill_Users_In_ComboBox(); });
}

void frmManageUsers::Set_Controls_Enabled() {
    ui::Enable_Unless_Remote({cmdRemove, cmdEdit});
}

void frmManageUsers::Fill_Users_List() {
    Fill_List();
}

int frmManageUsers::Add_New_User(const QString& strName) {
    const bool listed = m_listed ? m_listed->Contains(strName) : ui::Find_Whole_Word(*lvwUsers, strName) != 0;
    if (listed)
        return -2;
    if (!Is_Valid_User_Name(strName))
        return -1;
    long id = 0;
    const bool added =
        m_batch ? Add_User(m_batch->Handle(), m_batch->result, strName, id) : Add_User(strName, id);
    if (!added)
        return 0;
    Add_Row(strName, QString::number(id));
    if (m_listed)
        m_listed->Add(strName);
    return 1;
}

void frmManageUsers::cmdAdd_Click() {
    Guarded([&] {
        // The name is taken as typed: blanks around it are part of it.
        switch (Add_New_User(txtUsers->Text())) {
        case -2:
            MsgBox(QLatin1String(kUserNameExists), MsgStyle::Exclamation);
            break;
        case -1:
            MsgBox(QLatin1String(kInvalidUserName), MsgStyle::Exclamation);
            break;
        case 1:
            txtUsers->Set_Text(QString());
            break;
        default:
            break;
        }
    });
    Focus_Text(true);
}

void frmManageUsers::lvwUsers_BeforeLabelEdit(int& Cancel) {
    const int row = lvwUsers->Selected_Item();
    if (row != 0 && Is_Reserved(lvwUsers->Tag(row)))
        Cancel = 1;
}

void frmManageUsers::cmdExport_Click() {
    if (lvwUsers->Count() == 0) {
        MsgBox(QStringLiteral("There is no item to export!"), MsgStyle::Exclamation);
        return;
    }
    Guarded([&] {
        cmdlgMain.DialogTitle = QStringLiteral("Export users in the list to text file");
        cmdlgMain.FileName = QStringLiteral("Users_List");
        cmdlgMain.Filter = kFileFilter;
        cmdlgMain.ShowSave();
        // A Cancel is not told apart: the pre-filled name is written then.
        if (cmdlgMain.CancelError)
            return;
        QStringList names;
        names.reserve(lvwUsers->Count());
        for (int i = 1; i <= lvwUsers->Count(); ++i)
            names.append(lvwUsers->Text(i));
        Write_List_File(cmdlgMain.FileName, names);
    });
}

void frmManageUsers::cmdImport_Click() {
    Guarded([&] {
        cmdlgMain.DialogTitle = QStringLiteral("Import user names from a text file");
        cmdlgMain.Filter = kFileFilter;
        cmdlgMain.ShowOpen();
        if (cmdlgMain.FileName.isEmpty() || cmdlgMain.CancelError)
            return;
        Import_File();
    });
}

void frmManageUsers::Import_File() {
    // The names go in on one connection, in one transaction, rather than one commit a name; a name the
    // store refuses commits those before it and the import goes on in a new transaction. The list is read
    // again from the store when anything failed, so that it shows what was kept. A store that cannot be
    // opened is reported once and ends the import.
    StoreBatch batch([this] { Reload_List(); });
    ui::WholeWordIndex listed;
    bool failed = false;
    bool opened = false;
    frameManageUsers->setEnabled(false);
    cmdClose->setEnabled(false);
    ui::BusyCursor busy;
    try {
        opened = batch.Open() != 0;
        ListFileInput file(cmdlgMain.FileName);
        ListFieldReader& reader = file.Reader();
        if (opened) {
            listed.Add_All(*lvwUsers);
            // The import's connection and search are the page's only while the loop runs.
            struct Importing {
                frmManageUsers* page;
                ~Importing() {
                    page->m_batch = nullptr;
                    page->m_listed = nullptr;
                }
            } importing{this};
            m_batch = &batch;
            m_listed = &listed;
            while (!reader.Eof()) {
                busy.Let_Paint(kNamesBetweenEvents);
                // Imported names are upper case, and a refused one passes without a word; a name with a NUL
                // in it is no name.
                const ListField field = reader.Next_Field();
                if (field.nul)
                    continue;
                if (Add_New_User(Trim_Blanks(field.text).toUpper()) == 0) {
                    failed = true;
                    if (batch.Open() == 0)
                        break;
                }
            }
        }
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
    // A failed commit reloads the list through the batch; a refused name asks for the same here.
    if (batch.Close() && failed)
        Reload_List();
    cmdClose->setEnabled(true);
    frameManageUsers->setEnabled(true);
    Set_Controls_Enabled();
}

} // namespace hv
