#include "filters/model/RuleLists.h"

#include "store/Bits.h"
#include "store/modCommonFuns.h"

namespace hv {

namespace rulelists {

namespace {

// The website page's two lists differ only in their table and in the list's name in their words.
RuleListSpec Url_List(const char* table, const char* column, const QString& list) {
    return RuleListSpec{
        table,
        column,
        FEATURE_URL_FILTER,
        AddText::TrimLower,
        Is_Valid_Url,
        17,
        false,
        50,
        50,
        true,
        Is_Valid_Url,
        list + QStringLiteral(" URL"),
        list,
        5100,
        4815,
        RuleListWords{
            QStringLiteral("Please enter a valid URL!."), QStringLiteral("Please enter a valid URL!."),
            QStringLiteral("URL already exist!."), QStringLiteral("URL already exist!."),
            QStringLiteral("Are you sure you want to delete the selected URL(s)?"),
            QStringLiteral("Export %1 URLs as text file").arg(list),
            QStringLiteral("_%1_URLs_List").arg(QString(list).replace(u' ', u'_')),
            QStringLiteral("Import %1 URLs from a text file").arg(list), QStringLiteral("WebSite Filter")}};
}

} // namespace

const RuleListSpec& Black() {
    static const RuleListSpec s = Url_List("BL_TBL", "BL_URL", QStringLiteral("Black List"));
    return s;
}

const RuleListSpec& White() {
    static const RuleListSpec s = Url_List("WL_TBL", "WL_URL", QStringLiteral("White List"));
    return s;
}

const RuleListSpec& File() {
    static const RuleListSpec s{
        "FILE_TBL",
        "FILE_EXTN",
        FEATURE_FILE_FILTER,
        AddText::AsTyped,
        Is_Valid_File_Extension,
        20,
        false,
        10,
        10,
        false,
        Is_Valid_File_Extension,
        QStringLiteral("Blocked File Extension"),
        QStringLiteral("File Extension"),
        5175,
        5415,
        RuleListWords{QStringLiteral("Please enter a valid File Extension!."),
                      QStringLiteral("Please enter a valid File Extention!."),
                      QStringLiteral("File Extension already exist!."),
                      QStringLiteral("File Extension already exist!."),
                      QStringLiteral("Are you sure you want to delete the selected File Extension(s)?"),
                      QStringLiteral("Export Blocked File Extension as text file"),
                      QStringLiteral("_Blocked_File_List"),
                      QStringLiteral("Import Blocked File Extension from a text file"),
                      QStringLiteral("File Filter")}};
    return s;
}

const RuleListSpec& Pop3() {
    static const RuleListSpec s{
        "POP3_TBL",
        "POP3_EMAIL",
        FEATURE_POP3_FILTER,
        AddText::AsTyped,
        Is_Valid_Email_Address,
        20,
        false,
        50,
        30,
        false,
        Is_Valid_Window_Title,
        QStringLiteral("POP3"),
        QStringLiteral("Email Addresses"),
        5175,
        5055,
        RuleListWords{QStringLiteral("Please enter a valid POP3 EmailAddress!."),
                      QStringLiteral("Please enter a valid POP3 Email Address!."),
                      QStringLiteral("EmailAddress already exist!."),
                      QStringLiteral("Email Address already exist!."),
                      QStringLiteral("Are you sure you want to delete the selected Email Address(s)?"),
                      QStringLiteral("Export Blocked POP3 Email Address as text file"),
                      QStringLiteral("_Blocked_POP3_Email_Address_List"),
                      QStringLiteral("Import Blocked POP3 Email Address from a text file"),
                      QStringLiteral("POP3 Filter")}};
    return s;
}

const RuleListSpec& Smtp() {
    // The SMTP list answers a duplicate Add in the window blocker's words; administrators know it so.
    static const RuleListSpec s{
        "SMTP_TBL",
        "SMTP_EMAIL",
        FEATURE_SMTP_FILTER,
        AddText::AsTyped,
        Is_Valid_Email_Address,
        20,
        false,
        50,
        30,
        false,
        Is_Valid_Window_Title,
        QStringLiteral("SMTP"),
        QStringLiteral("Email Addresses"),
        5175,
        5055,
        RuleListWords{QStringLiteral("Please enter a valid SMTP EmailAddress!."),
                      QStringLiteral("Please enter a valid SMTP Email Address!."),
                      QStringLiteral("Window Title already exist!."),
                      QStringLiteral("EmailAddress already exist!."),
                      QStringLiteral("Are you sure you want to delete the selected Email Address(s)?"),
                      QStringLiteral("Export Blocked SMTP Email Address as text file"),
                      QStringLiteral("_Blocked_SMTP_Email_Address_List"),
                      QStringLiteral("Import Blocked SMTP Email Address from a text file"),
                      QStringLiteral("SMTP Filter")}};
    return s;
}

const RuleListSpec& Exe() {
    static const RuleListSpec s{
        "EXE_TBL",
        "EXE_NAME",
        FEATURE_EXE_BLOCKER,
        AddText::Trim,
        Is_Valid_Window_Title,
        20,
        false,
        50,
        50,
        false,
        Is_Valid_Window_Title,
        QStringLiteral("Blocked EXE"),
        QStringLiteral("EXE Names"),
        5175,
        5295,
        RuleListWords{
            QStringLiteral("Please enter a valid EXE Name!."),
            QStringLiteral("Please enter a valid EXE Name!."), QStringLiteral("EXE Name already exist!."),
            QStringLiteral("EXE Name already exist!."),
            QStringLiteral("Are you sure you want to delete the selected EXE(s)?"),
            QStringLiteral("Export Blocked EXE Names as text file"), QStringLiteral("_Blocked_EXE_List"),
            QStringLiteral("Import Blocked EXE Names from a text file"), QStringLiteral("EXE Blocker")}};
    return s;
}

const RuleListSpec& Window() {
    static const RuleListSpec s{
        "WINDOW_TBL",
        "WINDOW_TITLE",
        FEATURE_WINDOW_BLOCKER,
        AddText::Trim,
        Is_Valid_Window_Title,
        20,
        true,
        30,
        30,
        false,
        Is_Valid_Window_Title,
        QStringLiteral("Blocked Window Title"),
        QStringLiteral("Window Title"),
        5250,
        5295,
        RuleListWords{QStringLiteral("Please enter a valid Window Title!."),
                      QStringLiteral("Please enter a valid Window Title!."),
                      QStringLiteral("Window Title already exist!."),
                      QStringLiteral("Window Title already exist!."),
                      QStringLiteral("Are you sure you want to delete the selected Window Title(s)?"),
                      QStringLiteral("Export Blocked Window Titles as text file"),
                      QStringLiteral("_Blocked_Window_List"),
                      QStringLiteral("Import Blocked Window Titles from a text file"),
                      QStringLiteral("Window Blocker")}};
    return s;
}

} // namespace rulelists

QString Prepare_Add_Text(const QString& typed, AddText how) {
    switch (how) {
    case AddText::AsTyped:
        return typed;
    case AddText::Trim:
        return Trim_Blanks(typed);
    case AddText::TrimLower:
        return Trim_Blanks(typed).toLower();
    }
    return typed;
}

QString Prepare_Import_Field(const QString& field, const RuleListSpec& spec) {
    QString text = Trim_Blanks(field);
    if (spec.importLower)
        text = text.toLower();
    if (text.size() > spec.importCut)
        text.truncate(spec.importCut);
    return text;
}

} // namespace hv
