// The launcher half of the main console: the menu, the feature entries and what each of them opens.
#include "console/frmMain.h"
#include "console/modProviders.h"
#include "console/modUpdate.h"
#include "core/WebSite.h"
#include "core/clsLog.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "ui/Forms.h"

#include <QAction>
#include <QFile>
#include <QMenu>
#include <QMenuBar>

namespace hv {

namespace {

using Handler = void (frmMain::*)();

// One feature entry: where it stands (list and Tag), its key (also its image key), its caption, the page
// it opens and the text the description panel shows for it. Entries without a key are known to the
// description and the dispatch only: their pages are reached through the menu.
struct Feature {
    int list;
    int tag;
    const char* key;
    const char* caption;
    Handler handler;
    const char* description;
};

// In the order the lists are built.
const Feature kFeatures[] = {
    {0, 1, "WebsiteFilter", "WebSite Filter", &frmMain::mnuWebsiteFilter_Click,
     "Let's you add whitelist entries when the internet is turned off. Similarly, when the internet is "
     "turned on, the blacklist entries will work."},
    {0, 2, "FileFilter", "File Filter", &frmMain::mnuFileFilter_Click,
     "Enables blocking of any file extenstions. For example to block dowloading of movies, images, programs, "
     "archives, provide their file extensions like .avi, .mpg, .jpg, .bmp, .gif, .png, .exe, .zip, .tar etc "
     "to the file filter."},
    {0, 4, "PortFilter", "Port Filter", &frmMain::mnuPortFilter_Click,
     "Use Port Blocking and Filtering feature to restrict a user from accessing ports."},
    {0, 3, "EmailFilter", "Email Filter", &frmMain::mnuEmailFilter_Click,
     "Email Filter is used to restrict a user from sending and recieving emails to and from a particular "
     "domain through any email client software like Outlook Express. SMTP filter blocks the outgoing, while "
     "POP3 blocks incoming emails."},
    {0, 5, "InternetScheduler", "Internet Scheduler", &frmMain::mnuInternetScheduler_Click,
     "Use Internet Scheduler to give permission to a user to access internet for certain time period of a "
     "day or a month or for every day. Internet will be permitted during the specified period. Blacklist "
     "policies will be enforced at the same time."},
    {0, 6, "InternetSettings", "Internet Settings", &frmMain::mnuInternetSettings_Click,
     "Use Internet Settings to show customized warning messages when User(s) attempts to open blocked URLs. "
     "You can redirect the URL to other sites that you want to display when User(s) attempts to open Blocked "
     "URLs."},
    {1, 1, "AppBlocker", "Application Blocker", &frmMain::mnuEXEBlocker_Click,
     "Use EXE Blocker to restrict the User(s) from opening any particular programs /applications specified "
     "in the Blocked EXE Names List."},
    {1, 2, "WindowBlocker", "Window Blocker", &frmMain::mnuWindowBlocker_Click,
     "Use Window Blocker to restrict the User(s) from accessing any particular window based on the title of "
     "the window."},
    {1, 3, "AppScheduler", "Application Scheduler", &frmMain::mnuApplicationScheduler_Click,
     "Use Application Scheduler to give permission to User(s) to access listed Application/ Window which are "
     "blocked."},
    {1, 4, "AppSettings", "Application Settings", &frmMain::mnuApplicationSettings_Click,
     "Use Application Settings to popup customized message when a user attempts to open restricted "
     "applications."},
    {2, 1, "GenOptions", "General Options", &frmMain::mnuGeneralOptions_Click,
     "Use General Options to change the HalvenorTS operating mode (Single User OR All User) and program "
     "password."},
    {2, 3, "ManageUsers", "Manage Terminal Server Users", &frmMain::mnuManageUsers_Click,
     "Use Manage Terminal Server User option to add, edit or delete a list of terminal server users. After "
     "adding users, select a user from the 'Select User' combo and then change a setting."},
    {2, 4, "CopySettings", "Copy Settings", &frmMain::mnuCopySettings_Click,
     "Use Copy Settings to copy already applied setting of a User to another User."},
    // Device Lock and Reporting have no entry in the lists, but their tags keep their texts and pages.
    {1, 5, nullptr, nullptr, &frmMain::mnuDeviceLock_Click,
     "Use Devcie Lock Feature to restrict or grant access to USB, Floppy, CD/DVD Storage Devices for "
     "User(s)."},
    {2, 2, nullptr, nullptr, &frmMain::mnuReporting_Click,
     "Use Reporting Option to view and print a detailed report of urls,applications and devices are used "
     "withinn a certain period"},
};

const Feature* Find_Feature(int list, int tag) {
    for (const Feature& f : kFeatures)
        if (f.list == list && f.tag == tag)
            return &f;
    return nullptr;
}

} // namespace

// ---- the menu

QAction* frmMain::Add_Item(QMenu* menu, const char* name, const char* caption, Handler handler) {
    QAction* item = menu->addAction(QLatin1String(caption));
    item->setObjectName(QLatin1String(name));
    connect(item, &QAction::triggered, this, [this, handler] { (this->*handler)(); });
    return item;
}

void frmMain::Add_Separator(QMenu* menu, const char* name) {
    // A separator is an item whose caption is a single dash; the menu draws it as a rule.
    QAction* rule = menu->addSeparator();
    rule->setObjectName(QLatin1String(name));
    rule->setText(QStringLiteral("-"));
}

void frmMain::Build_Menu() {
    mnuBar = new QMenuBar(this);
    mnuBar->setObjectName(QStringLiteral("mnuBar"));
    auto top = [this](const char* name, const char* caption) {
        QMenu* menu = mnuBar->addMenu(QLatin1String(caption));
        menu->setObjectName(QLatin1String(name));
        return menu;
    };

    mnuFile = top("mnuFile", "File");
    Add_Item(mnuFile, "mnuRegisterFilters", "Register All Filters", &frmMain::mnuRegisterFilters_Click);
    Add_Item(mnuFile, "mnuUnRegisterFilters", "UnRegister All Filters", &frmMain::mnuUnRegisterFilters_Click);
    Add_Separator(mnuFile, "mnuSeparator1");
    Add_Item(mnuFile, "mnuUnInstall", "UnInstall Halvenor", &frmMain::mnuUnInstall_Click);
    Add_Separator(mnuFile, "mnuSeparator2");
    Add_Item(mnuFile, "mnuExit", "Exit", &frmMain::mnuExit_Click);

    mnuInternet = top("mnuInternet", "Internet");
    Add_Item(mnuInternet, "mnuWebsiteFilter", "Website Filter", &frmMain::mnuWebsiteFilter_Click);
    Add_Item(mnuInternet, "mnuFileFilter", "File Filter", &frmMain::mnuFileFilter_Click);
    Add_Item(mnuInternet, "mnuEmailFilter", "Email Filter", &frmMain::mnuEmailFilter_Click);
    Add_Item(mnuInternet, "mnuPortFilter", "Port Filter", &frmMain::mnuPortFilter_Click);
    Add_Item(mnuInternet, "mnuInternetScheduler", "Internet Scheduler", &frmMain::mnuInternetScheduler_Click);
    Add_Separator(mnuInternet, "mnuSeparator3");
    Add_Item(mnuInternet, "mnuInternetSettings", "Internet Settings", &frmMain::mnuInternetSettings_Click);

    mnuApplication = top("mnuApplication", "Application");
    Add_Item(mnuApplication, "mnuEXEBlocker", "EXE Blocker", &frmMain::mnuEXEBlocker_Click);
    Add_Item(mnuApplication, "mnuWindowBlocker", "Window Blocker", &frmMain::mnuWindowBlocker_Click);
    Add_Item(mnuApplication, "mnuApplicationScheduler", "Application Scheduler",
             &frmMain::mnuApplicationScheduler_Click);
    Add_Separator(mnuApplication, "mnuSeparator4");
    Add_Item(mnuApplication, "mnuApplicationSettings", "Application Settings",
             &frmMain::mnuApplicationSettings_Click);

    mnuDevice = top("mnuDevice", "Device");
    Add_Item(mnuDevice, "mnuDeviceLock", "Device Lock", &frmMain::mnuDeviceLock_Click);

    mnuReport = top("mnuReport", "Report");
    Add_Item(mnuReport, "mnuReporting", "Reporting", &frmMain::mnuReporting_Click);

    mnuTools = top("mnuTools", "Tools");
    Add_Item(mnuTools, "mnuGeneralOptions", "General Options", &frmMain::mnuGeneralOptions_Click);
    Add_Item(mnuTools, "mnuManageUsers", "Manage Users", &frmMain::mnuManageUsers_Click);
    Add_Item(mnuTools, "mnuCopySettings", "Copy Settings", &frmMain::mnuCopySettings_Click);
    Add_Item(mnuTools, "mnuExceptionList", "Exception List", &frmMain::mnuExceptionList_Click);

    mnuHelp = top("mnuHelp", "Help");
    Add_Item(mnuHelp, "mnuFAQs", "FAQs", &frmMain::mnuFAQs_Click);
    Add_Item(mnuHelp, "mnuOnline", "Online", &frmMain::mnuOnline_Click);
    Add_Item(mnuHelp, "mnuSupport", "Support", &frmMain::mnuSupport_Click);
    Add_Item(mnuHelp, "mnuProducts", "Products", &frmMain::mnuProducts_Click);
    Add_Item(mnuHelp, "mnuCheckUpdates", "Check Updates", &frmMain::mnuCheckUpdates_Click);
    Add_Item(mnuHelp, "mnuAbout", "About", &frmMain::mnuAbout_Click);
}

// ---- the feature lists

void frmMain::Fill_Feature_Lists() {
    for (const Feature& f : kFeatures) {
        if (!f.key)
            continue;
        ui::ListView* list = lvwMain[size_t(f.list)];
        const int item = list->Add(QLatin1String(f.caption), QLatin1String(f.key), QLatin1String(f.key));
        list->Set_Tag(item, QString::number(f.tag));
    }
}

QString frmMain::Feature_Description(int list, int tag) {
    const Feature* f = Find_Feature(list, tag);
    return f ? QLatin1String(f->description) : QString();
}

void frmMain::Run_Feature(int list, int tag) {
    if (const Feature* f = Find_Feature(list, tag))
        (this->*(f->handler))();
}

// ---- File

void frmMain::mnuRegisterFilters_Click() {
    if (MsgBox(QStringLiteral("This will re-register the filters.\r\n\r\nAre you sure you want to continue?"),
               MsgStyle::Question, MsgButtons::YesNo) == MsgAnswer::Yes)
        Install_Providers();
}

void frmMain::mnuUnRegisterFilters_Click() {
    if (MsgBox(QStringLiteral("This will un-register the internet filter. Your filtering will not work "
                              "properly after this!\r\n\r\nAre you sure you want to continue?"),
               MsgStyle::Critical, MsgButtons::YesNo) == MsgAnswer::Yes)
        Uninstall_Providers();
}

void frmMain::mnuUnInstall_Click() {
    if (MsgBox(QStringLiteral("Are you sure you want to Uninstall the HalvenorTS?"), MsgStyle::Information,
               MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    Open_Document(platform().App_Path() + QStringLiteral("/unins000.exe"));
    Unload();
}

void frmMain::mnuExit_Click() {
    Unload();
}

// ---- the pages

void frmMain::mnuWebsiteFilter_Click() {
    Show_Page(QStringLiteral("frmWebsiteFilter"));
}
void frmMain::mnuFileFilter_Click() {
    Show_Page(QStringLiteral("frmFileFilter"));
}
void frmMain::mnuEmailFilter_Click() {
    Show_Page(QStringLiteral("frmEmailFilter"));
}
void frmMain::mnuPortFilter_Click() {
    Show_Page(QStringLiteral("frmPortFilter"));
}
void frmMain::mnuInternetScheduler_Click() {
    Show_Page(QStringLiteral("frmInternetScheduler"));
}
void frmMain::mnuInternetSettings_Click() {
    Show_Page(QStringLiteral("frmInternetSettings"));
}
void frmMain::mnuEXEBlocker_Click() {
    Show_Page(QStringLiteral("frmEXEBlocker"));
}
void frmMain::mnuWindowBlocker_Click() {
    Show_Page(QStringLiteral("frmWindowBlocker"));
}
void frmMain::mnuApplicationScheduler_Click() {
    Show_Page(QStringLiteral("frmApplicationScheduler"));
}
void frmMain::mnuApplicationSettings_Click() {
    Show_Page(QStringLiteral("frmApplicationSettings"));
}
void frmMain::mnuDeviceLock_Click() {
    Show_Page(QStringLiteral("frmDeviceSettings"));
}
void frmMain::mnuReporting_Click() {
    Show_Page(QStringLiteral("frmReporting"));
}
void frmMain::mnuGeneralOptions_Click() {
    Show_Page(QStringLiteral("frmGeneralOptions"));
}
void frmMain::mnuManageUsers_Click() {
    Show_Page(QStringLiteral("frmManageUsers"));
}
void frmMain::mnuAbout_Click() {
    Show_Page(QStringLiteral("frmAbout"));
}

void frmMain::mnuCopySettings_Click() {
    // Opened from here, the copy page has no feature of its own to tick.
    Show_Page(QStringLiteral("frmCopySettings"), QStringLiteral("Main Form"));
}
void frmMain::mnuExceptionList_Click() {
    Show_Page(QStringLiteral("frmExceptionList"));
}

// ---- Help

void frmMain::mnuFAQs_Click() {
    platform().Shell_Open(Web_Url(QLatin1String(kProductPath) + QLatin1String(kFaqPath)));
}
void frmMain::mnuOnline_Click() {
    platform().Shell_Open(Web_Url(QLatin1String(kProductPath)));
}
void frmMain::mnuSupport_Click() {
    platform().Shell_Open(Mail_To(kSupportMail));
}
void frmMain::mnuProducts_Click() {
    platform().Shell_Open(Web_Url(QLatin1String(kProductsPath)));
}

void frmMain::mnuCheckUpdates_Click() {
    // No answer from the server is reported as the run-time error it is.
    Guarded([] { Check_Updates(); });
}

} // namespace hv
