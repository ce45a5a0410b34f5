#pragma once
// What the two lists of user names share, the terminal-server users (frmManageUsers) and the users exempt
// from filtering (frmExceptionList): a frame with the name box, Add, in-place Edit, Remove and Close, one
// list whose rows carry the store's key as their Tag, the column's room for the scroll bar from a row
// count on, Enter to add and Esc to close. Each page adds its own Add and its own buttons.
#include "store/modDB.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"

#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace hv {

struct UserListDesign {
    const char* formName;
    QString frameCaption;
    // Where the frame's controls stand on a picture box of their own inside the frame; null without.
    const char* containerName;
    // The column gives up room for the scroll bar while the list has this many rows or more.
    int limit;
    bool (*read)(long& rows, ResultTable& table); // name in column 0, key in column 1
    bool (*remove)(long ignored, long id);
    bool (*rename)(const QString& name, long id);
};

class UserListPage : public ui::Form {
    Q_OBJECT
public:
    explicit UserListPage(const UserListDesign& design);

    QGroupBox* frameManageUsers = nullptr;
    ui::Label* lblUser = nullptr;
    ui::TextBox* txtUsers = nullptr;
    ui::CommandButton* cmdAdd = nullptr;
    ui::CommandButton* cmdEdit = nullptr;
    ui::CommandButton* cmdRemove = nullptr;
    ui::CommandButton* cmdClose = nullptr;
    ui::ListView* lvwUsers = nullptr;
    ui::ImageList* ilsSmall = nullptr;

    virtual void cmdAdd_Click() = 0;
    void cmdEdit_Click();
    void cmdRemove_Click();
    void cmdClose_Click();
    void lvwUsers_AfterLabelEdit(int& Cancel, QString& NewString);

protected:
    void Form_KeyPress(int& KeyAscii) override;

    // The column: the list's width less 20.
    void Init_Column();
    // The store's rows, in its order; the column narrows when the count reaches the limit.
    void Fill_List();
    // Empties the list and fills it again, after a batch that may have left the store otherwise.
    void Reload_List();
    // A row as the store took it, with the "User" icon and its key as the Tag; at the limit the column
    // narrows.
    void Add_Row(const QString& name, const QString& key);
    void Focus_Text(bool selectAll);

    // Room for a page's own buttons below Edit and Remove, and on the bottom line before Close.
    QWidget* holder = nullptr;
    QVBoxLayout* sideButtons = nullptr;
    QHBoxLayout* bottomLine = nullptr;

    // The reserved row's Tag: the key 0.
    static bool Is_Reserved(const QString& tag);

private:
    UserListDesign m_design;
};

} // namespace hv
