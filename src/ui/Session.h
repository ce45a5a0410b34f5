#pragma once
// What a page asks of the console it runs in: the subject it acts on, the selector's text for its caption,
// the other pages by name, and the three refreshes of what the main console shows. The console installs
// the one session; pages never reach the main console's form itself.
#include <QString>

namespace hv {

// The subject every page acts on, taken at each use: the computer id and the selected user's USER_ID.
struct Subject {
    long computerId = 0;
    long userId = 0;
};

class Session {
public:
    virtual ~Session() = default;

    // A selector tag that is blank or no number raises "Type mismatch" (13).
    virtual Subject Current_Subject() = 0;
    // The selector's text as the pages' captions show it.
    virtual QString Current_User_Text() = 0;
    // Shows a page of the catalogue modally over the console, handing it `word` (the copy settings page:
    // the feature to tick); nothing when there is no such page.
    virtual void Show_Page(const QString& formName, const QString& word) = 0;

    // A page that changed what the main console shows asks it to read again.
    virtual void Get_Internet_Mode() = 0;
    virtual void Get_Working_Mode() = 0;
    virtual void Fill_Users_In_ComboBox() = 0;
};

Session& session();
// Installs the session for the process (or a test); the caller keeps ownership.
void Set_Session(Session* s);

inline Subject Current_Subject() {
    return session().Current_Subject();
}
inline QString Current_User_Text() {
    return session().Current_User_Text();
}
inline void Show_Page(const QString& formName, const QString& word = QString()) {
    session().Show_Page(formName, word);
}

} // namespace hv
