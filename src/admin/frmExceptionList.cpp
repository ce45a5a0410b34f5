#include "admin/frmExceptionList.h"
#include "admin/model/AdminWords.h"

#include "core/WebSite.h"
#include "core/clsLog.h"
#include "platform/Platform.h"
#include "store/modCommonFuns.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

namespace hv {

frmExceptionList::frmExceptionList()
    : UserListPage(UserListDesign{.formName = "frmExceptionList",
                                  .frameCaption = QStringLiteral("User Exception List"),
                                  .containerName = nullptr,
                                  .limit = 16,
                                  .read = Get_Exception_Users,
                                  .remove = Remove_Exception_User,
                                  .rename = Rename_Exception_User}) {
    lblHomeSite = new ui::Label(QStringLiteral("lblHomeSite"), QLatin1String(kWebHost), this);
    lblHomeSite->setCursor(Qt::PointingHandCursor);
    lblHomeSite->setStyleSheet(QStringLiteral("color: palette(link); text-decoration: underline;"));
    bottomLine->insertWidget(0, lblHomeSite);
    connect(lblHomeSite, &ui::Label::Click, this, &frmExceptionList::lblHomeSite_Click);
}

void frmExceptionList::Form_Load() {
    Set_Form_Caption();
    Fill_Exception_List();
}

void frmExceptionList::Set_Form_Caption() {
    Guarded([&] { Set_Caption(QStringLiteral("Exception List - ") + Current_User_Text()); });
    Init_Column();
}

void frmExceptionList::Fill_Exception_List() {
    Fill_List();
}

void frmExceptionList::cmdAdd_Click() {
    Guarded([&] { Add_Exception_Name(); });
}

void frmExceptionList::Add_Exception_Name() {
    const QString name = Trim_Blanks(txtUsers->Text());
    if (!Is_Valid_User_Name(name)) {
        MsgBox(QLatin1String(kInvalidUserName), MsgStyle::Exclamation);
        Focus_Text(true);
        return;
    }
    // The store looks for the name whatever its case, so "ANN" meets "ann" there.
    if (!Is_New_Exception_User(name)) {
        MsgBox(QLatin1String(kUserNameExists), MsgStyle::Exclamation);
        Focus_Text(true);
        return;
    }
    long id = 0;
    if (Add_Exception_User(name, id))
        Add_Row(name, QString::number(id));
    Focus_Text(false);
    txtUsers->Set_Text(QString());
}

void frmExceptionList::lblHomeSite_Click() {
    Guarded([] { platform().Shell_Open(Home_Site_Url()); });
}

} // namespace hv
