#include "admin/frmCopySettings.h"

#include "admin/model/CopySettings.h"
#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Platform.h"
#include "store/modDBFunctions.h"
#include "ui/BusyCursor.h"
#include "ui/Images.h"
#include "ui/PageSwitches.h"
#include "ui/Session.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QScopeGuard>
#include <QVBoxLayout>

namespace hv {

namespace {

constexpr int kListWidthTwips = 3600;
constexpr int kListHeightTwips = 3360;
// The destination list shows twelve rows; from the thirteenth its column gives room for the scroll bar.
constexpr int kScrollBarRows = 13;

ui::ListView* Make_Check_List(const QString& name, const QString& column, QWidget* parent) {
    ui::ListView* list = ui::Make_One_Column_List(name, column, kListWidthTwips, kListHeightTwips, parent);
    list->Set_Checkboxes(true);
    return list;
}

} // namespace

frmCopySettings::frmCopySettings() : ui::Form(QStringLiteral("frmCopySettings")) {
    KeyPreview = true;
    ilsCopySettings = new ui::ImageList(QStringLiteral("ilsCopySettings"), this);
    ilsCopySettings->Add(QStringLiteral("User"), Console_Image(QStringLiteral("User")));

    lblSelectUser = new ui::Label(QStringLiteral("lblSelectUser"), QStringLiteral("Select User:"), this);
    cboUsers = new ui::ComboBox(QStringLiteral("cboUsers"), ui::ComboBox::DropDownList, this);
    fraCopySettings = new QGroupBox(QStringLiteral("Copy Settings"), this);
    fraCopySettings->setObjectName(QStringLiteral("fraCopySettings"));
    lvwFeatures = Make_Check_List(QStringLiteral("lvwFeatures"),
                                  QStringLiteral("Features that you want to copy"), fraCopySettings);
    chkSelectAllFeatures = new ui::CheckBox(QStringLiteral("chkSelectAllFeatures"),
                                            QStringLiteral("Select All"), fraCopySettings);
    lvwDestinationUsers = Make_Check_List(QStringLiteral("lvwDestinationUsers"),
                                          QStringLiteral("Destinations"), fraCopySettings);
    lvwDestinationUsers->Set_Small_Icons(ilsCopySettings);
    chkSelectAllDestinations = new ui::CheckBox(QStringLiteral("chkSelectAllDestinations"),
                                                QStringLiteral("Select All"), fraCopySettings);
    cmdCopySettings =
        new ui::CommandButton(QStringLiteral("cmdCopySettings"), QStringLiteral("Copy Settings"), this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    auto* source = new QHBoxLayout;
    source->addWidget(lblSelectUser);
    source->addWidget(cboUsers, 1);
    layout->addLayout(source);
    auto* lists = new QGridLayout(fraCopySettings);
    lists->addWidget(lvwFeatures, 0, 0);
    lists->addWidget(chkSelectAllFeatures, 1, 0);
    lists->addWidget(lvwDestinationUsers, 0, 1);
    lists->addWidget(chkSelectAllDestinations, 1, 1);
    layout->addWidget(fraCopySettings);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdCopySettings);
    buttons->addWidget(cmdClose);
    layout->addLayout(buttons);

    connect(cboUsers, &ui::ComboBox::Click, this, &frmCopySettings::cboUsers_Click);
    connect(chkSelectAllFeatures, &ui::CheckBox::Click, this, &frmCopySettings::chkSelectAllFeatures_Click);
    connect(chkSelectAllDestinations, &ui::CheckBox::Click, this,
            &frmCopySettings::chkSelectAllDestinations_Click);
    for (ui::ListView* list : {lvwFeatures, lvwDestinationUsers}) {
        connect(list, &ui::ListView::ItemCheck, this, [this, list](int index) {
            // On the desktop a click on the box itself also reaches ItemClick, which must not undo the tick.
            m_tickedByBox = list;
            m_tickedRow = index;
            QMetaObject::invokeMethod(
                this, [this] { m_tickedByBox = nullptr; }, Qt::QueuedConnection);
            Guarded([this] { Update_Copy_Button(); });
        });
        connect(list, &ui::ListView::ItemClick, this,
                [this, list](int index) { List_ItemClick(list, index); });
    }
    connect(cmdCopySettings, &ui::CommandButton::Click, this, &frmCopySettings::cmdCopySettings_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, &frmCopySettings::cmdClose_Click);
}

void frmCopySettings::Show_This_Form(const QString& strFeature, QWidget* owner) {
    Guarded([&] {
        Load();
        Fill_Features_In_Listview();
        // Ticked from code: the button keeps its state until the user ticks something.
        if (const int index = lvwFeatures->Find_Key(strFeature))
            lvwFeatures->Set_Checked(index, true);
    });
    Show_Modal(owner);
}

void frmCopySettings::Form_Load() {
    Guarded([this] {
        // Shown without a feature to tick (from outside the console's menus), the page still offers all.
        Fill_Features_In_Listview();
        Set_Form_Caption();
        Fill_Users_In_ComboBox();
        Set_Controls_Enabled();
        int index = 0;
        Find_User_Index(Current_User_Text(), index);
        cboUsers->Set_ListIndex(index);
        cmdCopySettings->setEnabled(false);
    });
}

void frmCopySettings::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

void frmCopySettings::cmdClose_Click() {
    Unload();
}

// The caption names the main console's user, also when another source is chosen here.
void frmCopySettings::Set_Form_Caption() {
    Set_Caption(QStringLiteral("Copy Settings - ") + Current_User_Text());
}

void frmCopySettings::Set_Controls_Enabled() {
    ui::Enable_Unless_Remote({cmdCopySettings, fraCopySettings});
}

void frmCopySettings::Fill_Users_In_ComboBox() {
    cboUsers->Clear_Items();
    ResultTable users;
    long rows = 0;
    if (!Get_Users(rows, users))
        return;
    for (long i = 1; i <= rows; ++i)
        cboUsers->Add_Item(users.Text(int(i), 0));
}

void frmCopySettings::Fill_Features_In_Listview() {
    lvwFeatures->Clear();
    for (const CopyFeature& feature : Copy_Features())
        if (feature.offered)
            lvwFeatures->Add(feature.text, QString(), feature.text);
}

void frmCopySettings::Fill_Destinations() {
    lvwDestinationUsers->Clear();
    ResultTable users;
    long rows = 0;
    if (Get_Users(rows, users)) {
        // The source is never offered, so a user cannot be copied onto itself.
        for (long i = 1; i <= rows; ++i) {
            const QString name = users.Text(int(i), 0);
            if (name != cboUsers->Text())
                lvwDestinationUsers->Add(name, QStringLiteral("User"));
        }
    }
    // Each rebuild gives up the room again, so the column narrows every time.
    if (lvwDestinationUsers->Count() >= kScrollBarRows)
        ColumnAllowance::Give_Room(lvwDestinationUsers);
}

// The last entry after the first with this text; 0 (the first entry) when there is none.
void frmCopySettings::Find_User_Index(const QString& strName, int& intIndex) const {
    for (int i = 1; i < cboUsers->List_Count(); ++i)
        if (cboUsers->List(i) == strName)
            intIndex = i;
}

void frmCopySettings::Count_Checked_Items(const ui::ListView& list, int& intCount) {
    intCount = 0;
    for (int i = 1; i <= list.Count(); ++i)
        if (list.Checked(i))
            ++intCount;
}

// The "Select All" boxes keep their state.
void frmCopySettings::Clear_Selections() {
    for (ui::ListView* list : {lvwFeatures, lvwDestinationUsers})
        for (int i = 1; i <= list->Count(); ++i)
            list->Set_Checked(i, false);
}

void frmCopySettings::Update_Copy_Button() {
    int features = 0;
    int destinations = 0;
    Count_Checked_Items(*lvwFeatures, features);
    Count_Checked_Items(*lvwDestinationUsers, destinations);
    cmdCopySettings->setEnabled(features > 0 && destinations > 0);
}

void frmCopySettings::cboUsers_Click() {
    Guarded([this] {
        Set_Form_Caption();
        Fill_Destinations();
        cmdCopySettings->setEnabled(false);
        // The features stay ticked; the new list of destinations starts with none.
        chkSelectAllDestinations->Set_Value(0);
    });
}

namespace {
void Check_All(ui::ListView* list, const ui::CheckBox* box) {
    for (int i = 1; i <= list->Count(); ++i)
        list->Set_Checked(i, box->Value() != 0);
}
} // namespace

void frmCopySettings::chkSelectAllFeatures_Click() {
    Guarded([this] {
        Check_All(lvwFeatures, chkSelectAllFeatures);
        Update_Copy_Button();
    });
}

void frmCopySettings::chkSelectAllDestinations_Click() {
    Guarded([this] {
        Check_All(lvwDestinationUsers, chkSelectAllDestinations);
        Update_Copy_Button();
    });
}

// A click anywhere on a row toggles its tick.
void frmCopySettings::List_ItemClick(ui::ListView* list, int index) {
    Guarded([&] {
        const bool onTheBox = m_tickedByBox == list && m_tickedRow == index;
        m_tickedByBox = nullptr;
        if (!onTheBox && list->Selected(index))
            list->Set_Checked(index, !list->Checked(index));
        Update_Copy_Button();
    });
}

void frmCopySettings::cmdCopySettings_Click() {
    Guarded([this] {
        QStringList features;
        for (int i = 1; i <= lvwFeatures->Count(); ++i)
            if (lvwFeatures->Checked(i))
                features << lvwFeatures->Key(i);
        QStringList destinations;
        for (int i = 1; i <= lvwDestinationUsers->Count(); ++i)
            if (lvwDestinationUsers->Checked(i))
                destinations << lvwDestinationUsers->Text(i);
        const CopyContext ctx{.computerId = Current_Subject().computerId,
                              .breathe = [] { platform().Do_Events(); }};

        bool result = false;
        {
            // The window stays painted while large lists are written, and takes no clicks meanwhile.
            ui::BusyCursor busy;
            setEnabled(false);
            const auto enableAgain = qScopeGuard([this] { setEnabled(true); });
            result = Copy_Settings(ctx, cboUsers->Text(), features, destinations);
        }
        if (result) {
            MsgBox(QStringLiteral("Successfully copied the features"), MsgStyle::Information);
            cmdCopySettings->setEnabled(false);
            Clear_Selections();
        } else {
            MsgBox(QStringLiteral("Features are not successfully copied"), MsgStyle::Information);
        }
    });
}

} // namespace hv
