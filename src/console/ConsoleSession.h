#pragma once
// The session the console gives its pages: everything is read from the main console at each use. A page
// shown on its own (an entry point outside the menus) still finds a main console, loaded but not shown.
#include "ui/Session.h"

namespace hv {

class ConsoleSession final : public Session {
public:
    Subject Current_Subject() override;
    QString Current_User_Text() override;
    void Show_Page(const QString& formName, const QString& word) override;
    void Get_Internet_Mode() override;
    void Get_Working_Mode() override;
    void Fill_Users_In_ComboBox() override;
};

} // namespace hv
