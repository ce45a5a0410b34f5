#include "filters/model/RuleLists.h"

#include "store/Bits.h"
#include "store/modCommonFuns.h"

namespace hv {

namespace rulelists {

namespace {

// The website page's two lists differ only in their table and in the list's name in their words.
RuleListSpec Url_List(const char* table, const char* column, const QString& list) {
    return RuleListSpec{
        .table = table,
        .column = column,
        .featureBit = FEATURE_URL_FILTER,
        .addText = AddText::TrimLower,
        .check = Is_Valid_Url,
        .limit = 17,
        .cumulativeAllowance = false,
        .maxLength = 50,
        .importCut = 50,
        .importLower = true,
        .importCheck = Is_Valid_Url,
        .iconKey = list + QStringLiteral(" URL"),
        .columnCaption = list,
        .widthTwips = 5100,
        .heightTwips = 4815,
        .words = RuleListWords{
            .addInvalid = QStringLiteral("Please enter a valid URL!."),
            .editInvalid = QStringLiteral("Please enter a valid URL!."),
            .addExists = QStringLiteral("URL already exist!."),
            .editExists = QStringLiteral("URL already exist!."),
            .deleteQuestion = QStringLiteral("Are you sure you want to delete the selected URL(s)?"),
            .exportTitle = QStringLiteral("Export %1 URLs as text file").arg(list),
            .defaultSuffix = QStringLiteral("_%1_URLs_List").arg(QString(list).replace(u' ', u'_')),
            .importTitle = QStringLiteral("Import %1 URLs from a text file").arg(list),
            .copySettingsName = QStringLiteral("WebSite Filter")}};
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
        .table = "FILE_TBL",
        .column = "FILE_EXTN",
        .featureBit = FEATURE_FILE_FILTER,
        .addText = AddText::AsTyped,
        .check = Is_Valid_File_Extension,
        .limit = 20,
        .cumulativeAllowance = false,
        .maxLength = 10,
        .importCut = 10,
        .importLower = false,
        .importCheck = Is_Valid_File_Extension,
        .iconKey = QStringLiteral("Blocked File Extension"),
        .columnCaption = QStringLiteral("File Extension"),
        .widthTwips = 5175,
        .heightTwips = 5415,
        .words =
            RuleListWords{.addInvalid = QStringLiteral("Please enter a valid File Extension!."),
                          .editInvalid = QStringLiteral("Please enter a valid File Extention!."),
                          .addExists = QStringLiteral("File Extension already exist!."),
                          .editExists = QStringLiteral("File Extension already exist!."),
                          .deleteQuestion = QStringLiteral(
                              "Are you sure you want to delete the selected File Extension(s)?"),
                          .exportTitle = QStringLiteral("Export Blocked File Extension as text file"),
                          .defaultSuffix = QStringLiteral("_Blocked_File_List"),
                          .importTitle = QStringLiteral("Import Blocked File Extension from a text file"),
                          .copySettingsName = QStringLiteral("File Filter")}};
    return s;
}

const RuleListSpec& Pop3() {
    static const RuleListSpec s{
        .table = "POP3_TBL",
        .column = "POP3_EMAIL",
        .featureBit = FEATURE_POP3_FILTER,
        .addText = AddText::AsTyped,
        .check = Is_Valid_Email_Address,
        .limit = 20,
        .cumulativeAllowance = false,
        .maxLength = 50,
        .importCut = 30,
        .importLower = false,
        .importCheck = Is_Valid_Window_Title,
        .iconKey = QStringLiteral("POP3"),
        .columnCaption = QStringLiteral("Email Addresses"),
        .widthTwips = 5175,
        .heightTwips = 5055,
        .words =
            RuleListWords{.addInvalid = QStringLiteral("Please enter a valid POP3 EmailAddress!."),
                          .editInvalid = QStringLiteral("Please enter a valid POP3 Email Address!."),
                          .addExists = QStringLiteral("EmailAddress already exist!."),
                          .editExists = QStringLiteral("Email Address already exist!."),
                          .deleteQuestion = QStringLiteral(
                              "Are you sure you want to delete the selected Email Address(s)?"),
                          .exportTitle = QStringLiteral("Export Blocked POP3 Email Address as text file"),
                          .defaultSuffix = QStringLiteral("_Blocked_POP3_Email_Address_List"),
                          .importTitle = QStringLiteral("Import Blocked POP3 Email Address from a text file"),
                          .copySettingsName = QStringLiteral("POP3 Filter")}};
    return s;
}

const RuleListSpec& Smtp() {
    // The SMTP list answers a duplicate Add in the window blocker's words; administrators know it so.
    static const RuleListSpec s{
        .table = "SMTP_TBL",
        .column = "SMTP_EMAIL",
        .featureBit = FEATURE_SMTP_FILTER,
        .addText = AddText::AsTyped,
        .check = Is_Valid_Email_Address,
        .limit = 20,
        .cumulativeAllowance = false,
        .maxLength = 50,
        .importCut = 30,
        .importLower = false,
        .importCheck = Is_Valid_Window_Title,
        .iconKey = QStringLiteral("SMTP"),
        .columnCaption = QStringLiteral("Email Addresses"),
        .widthTwips = 5175,
        .heightTwips = 5055,
        .words =
            RuleListWords{.addInvalid = QStringLiteral("Please enter a valid SMTP EmailAddress!."),
                          .editInvalid = QStringLiteral("Please enter a valid SMTP Email Address!."),
                          .addExists = QStringLiteral("Window Title already exist!."),
                          .editExists = QStringLiteral("EmailAddress already exist!."),
                          .deleteQuestion = QStringLiteral(
                              "Are you sure you want to delete the selected Email Address(s)?"),
                          .exportTitle = QStringLiteral("Export Blocked SMTP Email Address as text file"),
                          .defaultSuffix = QStringLiteral("_Blocked_SMTP_Email_Address_List"),
                          .importTitle = QStringLiteral("Import Blocked SMTP Email Address from a text file"),
                          .copySettingsName = QStringLiteral("SMTP Filter")}};
    return s;
}

const RuleListSpec& Exe() {
    static const RuleListSpec s{
        .table = "EXE_TBL",
        .column = "EXE_NAME",
        .featureBit = FEATURE_EXE_BLOCKER,
        .addText = AddText::Trim,
        .check = Is_Valid_Window_Title,
        .limit = 20,
        .cumulativeAllowance = false,
        .maxLength = 50,
        .importCut = 50,
        .importLower = false,
        .importCheck = Is_Valid_Window_Title,
        .iconKey = QStringLiteral("Blocked EXE"),
        .columnCaption = QStringLiteral("EXE Names"),
        .widthTwips = 5175,
        .heightTwips = 5295,
        .words = RuleListWords{.addInvalid = QStringLiteral("Please enter a valid EXE Name!."),
                               .editInvalid = QStringLiteral("Please enter a valid EXE Name!."),
                               .addExists = QStringLiteral("EXE Name already exist!."),
                               .editExists = QStringLiteral("EXE Name already exist!."),
                               .deleteQuestion =
                                   QStringLiteral("Are you sure you want to delete the selected EXE(s)?"),
                               .exportTitle = QStringLiteral("Export Blocked EXE Names as text file"),
                               .defaultSuffix = QStringLiteral("_Blocked_EXE_List"),
                               .importTitle = QStringLiteral("Import Blocked EXE Names from a text file"),
                               .copySettingsName = QStringLiteral("EXE Blocker")}};
    return s;
}

const RuleListSpec& Window() {
    static const RuleListSpec s{
        .table = "WINDOW_TBL",
        .column = "WINDOW_TITLE",
        .featureBit = FEATURE_WINDOW_BLOCKER,
        .addText = AddText::Trim,
        .check = Is_Valid_Window_Title,
        .limit = 20,
        .cumulativeAllowance = true,
        .maxLength = 30,
        .importCut = 30,
        .importLower = false,
        .importCheck = Is_Valid_Window_Title,
        .iconKey = QStringLiteral("Blocked Window Title"),
        .columnCaption = QStringLiteral("Window Title"),
        .widthTwips = 5250,
        .heightTwips = 5295,
        .words = RuleListWords{
            .addInvalid = QStringLiteral("Please enter a valid Window Title!."),
            .editInvalid = QStringLiteral("Please enter a valid Window Title!."),
            .addExists = QStringLiteral("Window Title already exist!."),
            .editExists = QStringLiteral("Window Title already exist!."),
            .deleteQuestion = QStringLiteral("Are you sure you want to delete the selected Window Title(s)?"),
            .exportTitle = QStringLiteral("Export Blocked Window Titles as text file"),
            .defaultSuffix = QStringLiteral("_Blocked_Window_List"),
            .importTitle = QStringLiteral("Import Blocked Window Titles from a text file"),
            .copySettingsName = QStringLiteral("Window Blocker")}};
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

QString Cut_Characters(const QString& text, qsizetype count) {
    qsizetype units = 0;
    for (qsizetype chars = 0; chars < count && units < text.size(); ++chars)
        units += (text.at(units).isHighSurrogate() && units + 1 < text.size() &&
                  text.at(units + 1).isLowSurrogate())
                     ? 2
                     : 1;
    return units < text.size() ? text.left(units) : text;
}

namespace {
QString Lower_And_Cut(const QString& trimmed, const RuleListSpec& spec) {
    return Cut_Characters(spec.importLower ? trimmed.toLower() : trimmed, spec.importCut);
}
} // namespace

QString Prepare_Import_Field(const QString& field, const RuleListSpec& spec) {
    return Lower_And_Cut(Trim_Blanks(field), spec);
}

std::optional<QString> Import_Rule(const ListField& field, const RuleListSpec& spec) {
    if (field.nul)
        return std::nullopt;
    // A field that went on beyond what the reader kept has more than blanks after it: its end is no end.
    const QString text = Lower_And_Cut(field.more ? field.text : Trim_Blanks(field.text), spec);
    if (!spec.importCheck(text))
        return std::nullopt;
    return text;
}

} // namespace hv
