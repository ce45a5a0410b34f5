#pragma once
// What tells the rule lists apart: their table and column, their switch, how a typed text is prepared,
// their check, sizes and limits, and their words. The pages share one behaviour driven by these.
#include "core/ListFile.h"
#include "core/modGlobal.h"
#include "store/modCommonFuns.h"

#include <QString>
#include <optional>

namespace hv {

// How Add prepares the text box's content. Edit always trims and lowers.
enum class AddText { AsTyped, Trim, TrimLower };

using TextCheck = bool (*)(const QString&);

struct RuleListWords {
    QString addInvalid;     // the check refused a typed text
    QString editInvalid;    // the check refused an edited text
    QString addExists;      // the list already holds the typed text
    QString editExists;     // the list already holds the edited text
    QString deleteQuestion; // asked before Remove
    QString exportTitle;
    QString defaultSuffix; // the export's default name is the user's name followed by this
    QString importTitle;
    QString copySettingsName; // the feature ticked on the copy settings page
};

struct RuleListSpec {
    const char* table;
    const char* column;
    long featureBit;
    AddText addText;
    TextCheck check; // Add and Edit
    // The column gives room for a scroll bar from this many rows on.
    int limit;
    // The window list narrows again with every row beyond the limit and widens with every removal below it.
    bool cumulativeAllowance;
    int maxLength;    // of the rule text box
    int importCut;    // an imported field keeps this many characters after trimming
    bool importLower; // an imported field is put in lower case before it is cut
    TextCheck importCheck;
    QString iconKey;
    QString columnCaption;
    int widthTwips; // the list view's design size
    int heightTwips;
    RuleListWords words;
};

namespace rulelists {
const RuleListSpec& Black();
const RuleListSpec& White();
const RuleListSpec& File();
const RuleListSpec& Pop3();
const RuleListSpec& Smtp();
const RuleListSpec& Exe();
const RuleListSpec& Window();
} // namespace rulelists

// What Add makes of a typed text.
QString Prepare_Add_Text(const QString& typed, AddText how);
// What Import makes of a field's text: trimmed, lowered where the list lowers, cut to the list's count of
// characters.
QString Prepare_Import_Field(const QString& field, const RuleListSpec& spec);
// The rule Import adds for a field read from a file, or nothing for a field it refuses: one that holds a
// NUL character (no reader of the store could see past it) or one the list's import check refuses.
std::optional<QString> Import_Rule(const ListField& field, const RuleListSpec& spec);
// The first `count` characters of a text; a character beyond the basic plane (a surrogate pair) counts as
// one and is never split.
QString Cut_Characters(const QString& text, qsizetype count);

inline const char* const kListFileFilter = "Text Files|*.txt|All Files|*.*";
inline const char* const kNothingToExport = "There is no item to export!.";

} // namespace hv
