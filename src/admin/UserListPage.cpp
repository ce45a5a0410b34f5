#include "admin/UserListPage.h"
#include "admin/model/AdminWords.h"

#include "core/clsLog.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/modCommonFuns.h"
#include "ui/Images.h"
#include "ui/PageSwitches.h"

namespace hv {

namespace {
// Design sizes in twips.
constexpr int kListWidth = 4815;
constexpr int kListHeight = 4215;
const QString kUserIcon = QStringLiteral("User");
} // namespace

UserListPage::UserListPage(const UserListDesign& design)
    : ui::Form(QLatin1String(design.formName)), m_design(design) {
    KeyPreview = true;
    ilsSmall = new ui::ImageList(QStringLiteral("ilsSmall"), this);
    ilsSmall->Add(kUserIcon, Console_Image(kUserIcon));

    auto* page = new QVBoxLayout(this);
    frameManageUsers = new QGroupBox(design.frameCaption, this);
    frameManageUsers->setObjectName(QStringLiteral("frameManageUsers"));
    page->addWidget(frameManageUsers);
    holder = frameManageUsers;
    if (design.containerName) {
        auto* frameLayout = new QVBoxLayout(frameManageUsers);
        auto* container = new QFrame(frameManageUsers);
        container->setObjectName(QLatin1String(design.containerName));
        container->setFrameShape(QFrame::NoFrame);
        frameLayout->addWidget(container);
        holder = container;
    }

    auto* column = new QVBoxLayout(holder);
    lblUser = new ui::Label(QStringLiteral("lblUser"), QStringLiteral("User Name:"), holder);
    column->addWidget(lblUser);
    auto* entry = new QHBoxLayout;
    txtUsers = new ui::TextBox(QStringLiteral("txtUsers"), holder);
    cmdAdd = new ui::CommandButton(QStringLiteral("cmdAdd"), QStringLiteral("Add"), holder);
    entry->addWidget(txtUsers, 1);
    entry->addWidget(cmdAdd);
    column->addLayout(entry);

    auto* body = new QHBoxLayout;
    lvwUsers = ui::Make_One_Column_List(QStringLiteral("lvwUsers"), QStringLiteral("User Name"), kListWidth,
                                        kListHeight, holder);
    lvwUsers->Set_Small_Icons(ilsSmall);
    lvwUsers->Set_Multi_Select(true);
    body->addWidget(lvwUsers);
    sideButtons = new QVBoxLayout;
    cmdEdit = new ui::CommandButton(QStringLiteral("cmdEdit"), QStringLiteral("Edit"), holder);
    cmdRemove = new ui::CommandButton(QStringLiteral("cmdRemove"), QStringLiteral("Remove"), holder);
    sideButtons->addWidget(cmdEdit);
    sideButtons->addWidget(cmdRemove);
    sideButtons->addStretch(1);
    body->addLayout(sideButtons);
    column->addLayout(body);

    bottomLine = new QHBoxLayout;
    bottomLine->addStretch(1);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);
    bottomLine->addWidget(cmdClose);
    page->addLayout(bottomLine);

    ui::Set_KeyPress(txtUsers, [this](int& KeyAscii) {
        if (KeyAscii == 13) {
            KeyAscii = 0;
            cmdAdd_Click();
        }
    });
    connect(cmdAdd, &ui::CommandButton::Click, this, [this] { cmdAdd_Click(); });
    connect(cmdEdit, &ui::CommandButton::Click, this, &UserListPage::cmdEdit_Click);
    connect(cmdRemove, &ui::CommandButton::Click, this, &UserListPage::cmdRemove_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, &UserListPage::cmdClose_Click);
    connect(lvwUsers, &ui::ListView::AfterLabelEdit, this, &UserListPage::lvwUsers_AfterLabelEdit);
}

void UserListPage::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

void UserListPage::cmdClose_Click() {
    Unload();
}

void UserListPage::Init_Column() {
    ColumnAllowance::Fill_Width(lvwUsers);
}

void UserListPage::Add_Row(const QString& name, const QString& key) {
    const int row = lvwUsers->Add(name, kUserIcon);
    lvwUsers->Set_Tag(row, key);
    if (row == m_design.limit)
        ColumnAllowance::Give_Room(lvwUsers);
}

void UserListPage::Fill_List() {
    Guarded([&] {
        ResultTable table;
        long rows = 0;
        if (!m_design.read(rows, table))
            return;
        // All rows in one go, as many rows as one at a time would give: the column narrows once when the
        // count reaches the limit. The key goes to the Tag as the store wrote it.
        const int first = lvwUsers->Count() + 1;
        QStringList names;
        names.reserve(rows);
        for (int i = 1; i <= int(rows); ++i)
            names.append(table.Text(i, 0));
        lvwUsers->Add_Many(names, kUserIcon);
        for (int i = 1; i <= int(rows); ++i)
            lvwUsers->Set_Tag(first + i - 1, table.Text(i, 1));
        if (first <= m_design.limit && lvwUsers->Count() >= m_design.limit)
            ColumnAllowance::Give_Room(lvwUsers);
    });
}

void UserListPage::Reload_List() {
    lvwUsers->Clear();
    Init_Column();
    Fill_List();
}

void UserListPage::Focus_Text(bool selectAll) {
    ui::Set_Focus(txtUsers);
    if (selectAll)
        txtUsers->selectAll();
}

void UserListPage::cmdEdit_Click() {
    if (lvwUsers->Selected_Item() == 0)
        return;
    ui::Set_Focus(lvwUsers);
    lvwUsers->Start_Label_Edit();
}

bool UserListPage::Is_Reserved(const QString& tag) {
    bool number = false;
    return tag.toLong(&number) == 0 && number;
}

void UserListPage::lvwUsers_AfterLabelEdit(int& Cancel, QString& NewString) {
    Guarded([&] {
        NewString = Trim_Blanks(NewString);
        const int row = lvwUsers->Selected_Item();
        if (!Is_Valid_User_Name(NewString) || row == 0 || NewString == lvwUsers->Text(row)) {
            Cancel = 1;
            return;
        }
        if (ui::Is_Text_In_ListView(NewString, *lvwUsers)) {
            MsgBox(QLatin1String(kRenamedUserExists), MsgStyle::Exclamation);
            Cancel = 1;
            return;
        }
        // The list keeps the new text whatever the store made of it.
        m_design.rename(NewString, lvwUsers->Tag(row).toLong());
    });
}

void UserListPage::cmdRemove_Click() {
    Guarded([&] {
        if (lvwUsers->Count() == 0)
            return;
        if (MsgBox(QStringLiteral("Are you sure you want to delete the selected User(s)?"),
                   MsgStyle::Information, MsgButtons::YesNo) != MsgAnswer::Yes)
            return;
        // From the last row up, so that a removal does not move the rows still to be visited.
        for (int i = lvwUsers->Count(); i >= 1; --i) {
            if (!lvwUsers->Selected(i))
                continue;
            const QString tag = lvwUsers->Tag(i);
            if (Is_Reserved(tag)) {
                MsgBox(Cannot_Delete_User(lvwUsers->Text(i)), MsgStyle::Exclamation);
                continue;
            }
            if (!m_design.remove(0, tag.toLong()))
                continue;
            if (lvwUsers->Count() == m_design.limit)
                ColumnAllowance::Take_Room_Back(lvwUsers);
            lvwUsers->Remove(i);
        }
    });
}

} // namespace hv
