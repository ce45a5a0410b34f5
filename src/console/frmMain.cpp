#include "console/frmMain.h"

#include "console/modProgram.h"
#include "console/modProviders.h"
#include "core/Version.h"
#include "core/WebSite.h"
#include "core/clsLog.h"
#include "platform/Platform.h"
#include "store/modCommonFuns.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"
#include "ui/WebLink.h"

#include <QAbstractItemView>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListView>
#include <QMenuBar>
#include <QVBoxLayout>

namespace hv {

namespace {

constexpr int kEnter = 13;

// Sizes of the layout, in pixels.
constexpr int kSideBarWidth = 260;
constexpr int kFeatureIcon = 48;
constexpr QSize kFeatureCell(116, 100);

// The look that does not change at run time: cards in the side bar, the headers of the feature groups,
// flat icon views. The colours the console sets at load come on top of it.
const char* const kBaseStyle = R"(
#picMain { border: none; background-color: #F7F8FA; }
#picSideBar { border: none; border-left: 1px solid #d9dde3; }
#fraHVMode, #fraSelectUser, #fraDescription { border: 1px solid #e1e5ea; border-radius: 6px; margin: 0px; padding: 0px; }
#fraHVMode::title, #fraSelectUser::title, #fraDescription::title { subcontrol-origin: padding; color: transparent; width: 0px; height: 0px; padding: 0px; }
#lblHeaderInternet, #lblHeaderAppnAndDevice, #lblHeaderGenSettings { font-size: 11pt; font-weight: bold; color: #1f2d3d; }
#lblHVMode, #lblInternetMode { font-size: 10.5pt; font-weight: bold; }
#lblUsers { font-weight: bold; color: #4a5563; }
#lblDescHeader { font-size: 11pt; font-weight: bold; color: #1d5fbf; }
#lblDescription { color: #2b3440; }
QListView { border: none; background: transparent; }
#sbrMain QLabel { border: none; border-right: 1px solid #D3D7DD; padding: 2px 10px; color: #3A4350; }
#sbrMain { border-top: 1px solid #D3D7DD; }
)";

QFrame* Card(const char* name, QWidget* parent) {
    auto* frame = new QFrame(parent);
    frame->setObjectName(QLatin1String(name));
    frame->setFrameShape(QFrame::NoFrame);
    return frame;
}

// A frame of the side bar: a group box that carries its caption, drawn as a card. The caption is not
// painted, as the labels inside already say what the card holds.
QGroupBox* Side_Frame(const char* name, const QString& caption, QWidget* parent) {
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(QLatin1String(name));
    frame->setFlat(true);
    return frame;
}

} // namespace

frmMain::frmMain() : ui::Form(QStringLiteral("frmMain")) {
    Init_Console_Images();
    Set_Caption(QStringLiteral("HalvenorTS"));
    setWindowIcon(Console_Image(QStringLiteral("Logo")));
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    setSizeGripEnabled(true);

    // One picture set in three sizes, by the same keys.
    ilsLarge = new ui::ImageList(QStringLiteral("ilsLarge"), this);
    ilsSmall = new ui::ImageList(QStringLiteral("ilsSmall"), this);
    ilsExtraLarge = new ui::ImageList(QStringLiteral("ilsExtraLarge"), this);
    for (const char* key :
         {"WebsiteFilter", "FileFilter", "PortFilter", "EmailFilter", "InternetScheduler", "InternetSettings",
          "AppBlocker", "WindowBlocker", "AppScheduler", "AppSettings", "GenOptions", "ManageUsers",
          "CopySettings", "AllUserMode", "SingleUserMode", "User", "Hand"}) {
        const QIcon icon = Console_Image(QLatin1String(key));
        for (ui::ImageList* images : {ilsLarge, ilsSmall, ilsExtraLarge})
            images->Add(QLatin1String(key), icon);
    }

    Build_Menu();

    picMain = Card("picMain", this);
    Build_Feature_Lists(picMain);
    Build_Side_Bar();

    sbrMain = new ui::StatusBar(QStringLiteral("sbrMain"), this);
    sbrMain->Add_Panel(QStringLiteral("Version"), QString());
    sbrMain->Add_Panel(QStringLiteral("WorkingMode"), QStringLiteral("Working Mode:"));
    ui::Label* home = sbrMain->Add_Panel(QStringLiteral("HomeSite"), QLatin1String(kWebHost), true);
    home->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (int i = 1; i <= sbrMain->Panel_Count(); ++i)
        sbrMain->Panel(i)->setContentsMargins(6, 1, 6, 1);

    tmrMain = new ui::Timer(QStringLiteral("tmrMain"), 2000, true, this);

    auto* body = new QHBoxLayout;
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(0);
    body->addWidget(picMain, 1);
    body->addWidget(picSideBar);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setMenuBar(mnuBar);
    layout->addLayout(body, 1);
    layout->addWidget(sbrMain);

    m_baseStyle = QLatin1String(kBaseStyle);
    setStyleSheet(m_baseStyle);
    // Wide enough for the six entries of the first group on one row.
    setMinimumSize(1000, 620);
    resize(1100, 680);

    connect(cboUsers, &ui::ComboBox::Click, this, &frmMain::cboUsers_Click);
    connect(lblHVMode, &ui::Label::Click, this, &frmMain::lblHVMode_Click);
    connect(picHVMode, &ui::Label::Click, this, &frmMain::picHVMode_Click);
    connect(lblInternetMode, &ui::Label::Click, this, &frmMain::lblInternetMode_Click);
    connect(lblDescHeader, &ui::Label::Click, this, &frmMain::lblDescHeader_Click);
    connect(sbrMain, &ui::StatusBar::PanelClick, this, &frmMain::sbrMain_PanelClick);
    connect(tmrMain, &ui::Timer::Timer_Event, this, &frmMain::tmrMain_Timer);
}

void frmMain::Build_Feature_Lists(QWidget* holder) {
    lblHeaderInternet = new ui::Label(QStringLiteral("lblHeaderInternet"),
                                      QStringLiteral("Internet Filtering && Blocking"), holder);
    lblHeaderAppnAndDevice = new ui::Label(QStringLiteral("lblHeaderAppnAndDevice"),
                                           QStringLiteral("Application Blocking"), holder);
    lblHeaderGenSettings =
        new ui::Label(QStringLiteral("lblHeaderGenSettings"), QStringLiteral("General Settings"), holder);
    const std::array<ui::Label*, 3> headers{lblHeaderInternet, lblHeaderAppnAndDevice, lblHeaderGenSettings};

    auto* layout = new QVBoxLayout(holder);
    layout->setContentsMargins(22, 16, 22, 12);
    layout->setSpacing(6);
    for (int i = 0; i < 3; ++i) {
        auto* list =
            new ui::ListView(ui::Array_Name(QStringLiteral("lvwMain"), i), ui::ListView::Icons, holder);
        lvwMain[size_t(i)] = list;
        list->Set_Large_Icons(ilsExtraLarge);
        list->Set_Small_Icons(ilsSmall);
        if (auto* view = qobject_cast<QListView*>(list->View_Widget())) {
            view->setIconSize(QSize(kFeatureIcon, kFeatureIcon));
            view->setGridSize(kFeatureCell);
            view->setSpacing(0);
            view->setWordWrap(true);
            view->setResizeMode(QListView::Adjust);
            view->setMovement(QListView::Static);
            view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        }
        list->setMinimumHeight(kFeatureCell.height() + 8);
        // The header names its list; with a buddy the label also shows "&&" as one ampersand.
        headers[size_t(i)]->setBuddy(list);

        auto* line = new QFrame(holder);
        line->setObjectName(ui::Array_Name(QStringLiteral("lineSeparator"), i));
        line->setFrameShape(QFrame::NoFrame);
        line->setFixedHeight(2);
        lineSeparator[size_t(i)] = line;

        if (i > 0)
            layout->addSpacing(10);
        layout->addWidget(headers[size_t(i)]);
        layout->addWidget(line);
        layout->addWidget(list, 1);

        connect(list, &ui::ListView::ItemClick, this, [this, i](int item) { lvwMain_ItemClick(i, item); });
        connect(list, &ui::ListView::DblClick, this, [this, i] { lvwMain_DblClick(i); });
        connect(list, &ui::ListView::MouseMove, this,
                [this, i](const QPoint& p) { lvwMain_MouseMove(i, p); });
        ui::Set_KeyPress(list, [this, i](int& KeyAscii) { lvwMain_KeyPress(i, KeyAscii); });
    }
}

void frmMain::Build_Side_Bar() {
    picSideBar = Card("picSideBar", this);
    picSideBar->setFixedWidth(kSideBarWidth);

    fraHVMode = Side_Frame("fraHVMode", QString(), picSideBar);
    picHVMode = new ui::Label(QStringLiteral("picHVMode"), QString(), fraHVMode);
    picHVMode->setFixedSize(40, 40);
    picHVMode->setAlignment(Qt::AlignCenter);
    lblHVMode = new ui::Label(QStringLiteral("lblHVMode"), QStringLiteral("User Mode"), fraHVMode);
    lblHVMode->setWordWrap(true);
    auto* modeLayout = new QHBoxLayout(fraHVMode);
    modeLayout->setContentsMargins(12, 10, 12, 10);
    modeLayout->setSpacing(10);
    modeLayout->addWidget(picHVMode);
    modeLayout->addWidget(lblHVMode, 1);

    fraSelectUser = Side_Frame("fraSelectUser", QStringLiteral("Select User"), picSideBar);
    lblUsers = new ui::Label(QStringLiteral("lblUsers"), QStringLiteral("Select User"), fraSelectUser);
    cboUsers = new ui::ComboBox(QStringLiteral("cboUsers"), ui::ComboBox::DropDownList, fraSelectUser);
    lblUsers->setBuddy(cboUsers);
    picInternetMode = new ui::Label(QStringLiteral("picInternetMode"), QString(), fraSelectUser);
    picInternetMode->setFixedSize(32, 32);
    picInternetMode->setAlignment(Qt::AlignCenter);
    lblInternetMode =
        new ui::Label(QStringLiteral("lblInternetMode"), QStringLiteral("Internet Mode"), fraSelectUser);
    lblInternetMode->setWordWrap(true);
    auto* internetRow = new QHBoxLayout;
    internetRow->setSpacing(10);
    internetRow->addWidget(picInternetMode);
    internetRow->addWidget(lblInternetMode, 1);
    auto* userLayout = new QVBoxLayout(fraSelectUser);
    userLayout->setContentsMargins(12, 10, 12, 10);
    userLayout->setSpacing(6);
    userLayout->addWidget(lblUsers);
    userLayout->addWidget(cboUsers);
    userLayout->addSpacing(4);
    userLayout->addLayout(internetRow);

    fraDescription = Side_Frame("fraDescription", QString(), picSideBar);
    lblDescHeader =
        new ui::Label(QStringLiteral("lblDescHeader"), QStringLiteral("HalvenorTS"), fraDescription);
    lblDescHeader->setToolTip(QStringLiteral("HalvenorTS Home Page"));
    lblDescription = new ui::Label(QStringLiteral("lblDescription"), QString(), fraDescription);
    lblDescription->setWordWrap(true);
    lblDescription->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* descLayout = new QVBoxLayout(fraDescription);
    descLayout->setContentsMargins(12, 10, 12, 12);
    descLayout->setSpacing(8);
    descLayout->addWidget(lblDescHeader);
    descLayout->addWidget(lblDescription, 1);

    auto* side = new QVBoxLayout(picSideBar);
    side->setContentsMargins(14, 16, 14, 14);
    side->setSpacing(12);
    side->addWidget(fraHVMode);
    side->addWidget(fraSelectUser);
    side->addWidget(fraDescription, 1);
}

// ---- load and unload

void frmMain::Form_Load() {
    Guarded([&] {
        Get_Program_Mode(m_lngHVMode);

        cboUsers->setToolTip(QStringLiteral("Select a user and change settings"));
        picHVMode->setToolTip(QStringLiteral("Switch to All Users or Single User Mode"));
        lblInternetMode->setToolTip(QStringLiteral("Turn Internet On/Off/Scheduler"));

        picInternetMode->Set_Picture(ilsLarge->Icon(QStringLiteral("User")), 32);

        const QCursor hand = Hand_Cursor();
        for (QWidget* w :
             std::initializer_list<QWidget*>{picHVMode, lblInternetMode, lblHVMode, lblDescHeader})
            w->setCursor(hand);

        Fill_Feature_Lists();
        Fill_Users_In_ComboBox();
        Get_Working_Mode();
        Get_Internet_Mode();
        Set_Colours();

        sbrMain->Panel(1)->Set_Caption(Version_Caption());
    });
}

void frmMain::Set_Colours() {
    // White side bar and cards, blue rules under the headers, the mode captions in the highlight colour.
    setStyleSheet(m_baseStyle + QStringLiteral(R"(
#picSideBar, #fraHVMode, #fraSelectUser, #fraDescription, #picHVMode, #picInternetMode { background-color: #FFFFFF; }
#lblHVMode, #lblInternetMode { color: palette(highlight); }
)"));
    for (QFrame* line : lineSeparator)
        line->setStyleSheet(QStringLiteral("QFrame { background-color: #2F6FD0; }"));
}

void frmMain::Form_Unload(int& Cancel) {
    (void)Cancel;
    App_Closing();
}

// ---- the public operations

void frmMain::Get_Working_Mode() {
    Guarded([&] {
        Get_Program_Mode(m_lngHVMode);
        long remoteMode = 0;
        long remotePort = 0;
        QString remoteServer;
        Get_Remote_Settings(remoteMode, remoteServer, remotePort);

        if (m_lngHVMode == 0) {
            picHVMode->Set_Picture(ilsLarge->Icon(QStringLiteral("AllUserMode")), 40);
            lblHVMode->Set_Caption(QStringLiteral("All User Mode"));
            sbrMain->Panel(QStringLiteral("WorkingMode"))->Set_Caption(QStringLiteral("Mode: All User Mode"));
        } else if (m_lngHVMode == 1) {
            picHVMode->Set_Picture(ilsLarge->Icon(QStringLiteral("SingleUserMode")), 40);
            lblHVMode->Set_Caption(QStringLiteral("Single User Mode"));
            sbrMain->Panel(QStringLiteral("WorkingMode"))
                ->Set_Caption(QStringLiteral("Mode: Single User Mode"));
        }

        if (m_lngHVMode != 0) {
            cboUsers->setEnabled(true);
        } else {
            cboUsers->setEnabled(false);
            cboUsers->Set_ListIndex(0);
        }
    });
}

void frmMain::Get_Internet_Mode() {
    Guarded([&] {
        const long computerId = m_lngComputerID;
        const long userId = ui::Tag_Number(cboUsers);
        long value = 0;
        if (Get_Internet_On_Off(computerId, userId, value)) {
            if (value == 0)
                lblInternetMode->Set_Caption(QStringLiteral("Internet OFF"));
            else if (value == 1)
                lblInternetMode->Set_Caption(QStringLiteral("Internet ON"));
        }
        long scheduleFor = 0;
        if (Get_Schedule_For(computerId, userId, scheduleFor) && scheduleFor > 1)
            lblInternetMode->Set_Caption(QStringLiteral("Internet Scheduler ON"));
    });
}

void frmMain::Fill_Users_In_ComboBox() {
    Guarded([&] {
        // The name of the current selection is looked up but not used: the refill goes back to the
        // operating-system user, whoever was selected before.
        if (!ui::Tag(cboUsers).isEmpty()) {
            QString name;
            Get_User_Name(m_lngComputerID, ui::Tag_Number(cboUsers), name);
        }

        cboUsers->Clear_Items();
        long rows = 0;
        ResultTable table;
        if (Get_Users(rows, table)) {
            for (int i = 1; i <= rows; ++i) {
                cboUsers->Add_Item(table.Text(i, 0), i - 1);
                cboUsers->Set_Item_Data(i - 1, long(table.Long(i, 1)));
            }
        }

        const int position = ui::Find_In_Combo(*cboUsers, Get_Windows_User_Name());
        cboUsers->Set_ListIndex(m_lngHVMode != 0 ? position : 0);
    });
}

// ---- events

void frmMain::cboUsers_Click() {
    Guarded([&] {
        long id = m_lngUserId;
        if (Get_User_Id(id, cboUsers->Text()))
            m_lngUserId = id;
        ui::Set_Tag(cboUsers, QString::number(m_lngUserId));
        Get_Internet_Mode();
    });
}

void frmMain::lvwMain_ItemClick(int Index, int item) {
    ui::ListView* list = lvwMain[size_t(Index)];
    lblDescription->Set_Caption(Feature_Description(Index, list->Tag(item).toInt()));
}

void frmMain::lvwMain_DblClick(int Index) {
    ui::ListView* list = lvwMain[size_t(Index)];
    const int item = list->Selected_Item();
    if (item > 0)
        Run_Feature(Index, list->Tag(item).toInt());
}

void frmMain::lvwMain_KeyPress(int Index, int& KeyAscii) {
    if (KeyAscii == kEnter)
        lvwMain_DblClick(Index);
}

void frmMain::lvwMain_MouseMove(int Index, const QPoint& pos) {
    ui::ListView* list = lvwMain[size_t(Index)];
    QWidget* surface = list->View_Widget()->viewport();
    if (list->Hit_Test(pos) > 0)
        surface->setCursor(Hand_Cursor());
    else
        surface->unsetCursor();
}

void frmMain::lblHVMode_Click() {
    mnuGeneralOptions_Click();
}
void frmMain::picHVMode_Click() {
    mnuGeneralOptions_Click();
}
void frmMain::lblInternetMode_Click() {
    mnuInternetScheduler_Click();
}
void frmMain::lblDescHeader_Click() {
    ui::Open_Home_Site();
}

void frmMain::sbrMain_PanelClick(int panel) {
    if (panel == sbrMain->Panel_Count())
        ui::Open_Home_Site();
}

void frmMain::tmrMain_Timer() {
    // The one-shot start-up check: two seconds after the start, never again. The timer stops before the
    // check, as its box would otherwise let the timer fire again while it is open.
    tmrMain->Set_Enabled(false);
    Guarded([&] {
        const Filter_Health health = Filter_Health_Report(Check_Filters_Installed());
        if (health.showBox)
            MsgBox(health.text, MsgStyle::Exclamation);
        Log_Event(health.text, 1, true);
    });
}

} // namespace hv
