#pragma once
// For unit tests that drive pages: a scripted desktop, the console's session and the main console loaded
// unseen, as a page finds them when the console's menu opens it. Whatever is still loaded goes with the
// world. Only test programs include this.
#include "console/ConsoleSession.h"
#include "console/frmMain.h"
#include "setup/StoreSetup.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Forms.h"

#include <QPointer>
#include <vector>

namespace hv::testing {

class ConsoleWorld final {
public:
    ConsoleWorld() { Set_Session(&m_console); }
    ~ConsoleWorld() {
        for (auto it = m_forms.rbegin(); it != m_forms.rend(); ++it)
            if (*it)
                (*it)->Unload();
        Set_Session(nullptr);
    }
    ConsoleWorld(const ConsoleWorld&) = delete;
    ConsoleWorld& operator=(const ConsoleWorld&) = delete;

    // Lays down a new store where the console looks for it.
    bool Lay_Store(QString* error) { return Create_Store(store, true, error); }
    frmMain& Main() {
        if (!m_main) {
            m_main = &ui::Forms::Get<frmMain>();
            m_main->Load();
            m_forms.emplace_back(m_main.data());
        }
        return *m_main;
    }
    // The page shown as the console's menu shows it, over the main console.
    template <class Page> Page& Open() {
        Main();
        Page& page = ui::Forms::Get<Page>();
        page.Show_Modal();
        m_forms.emplace_back(&page);
        return page;
    }

    ScriptedPlatform desktop;
    const QString store = desktop.Windows_Directory() + QStringLiteral("/hvpolicy.iil");

private:
    PlatformScope m_scope{desktop};
    ConsoleSession m_console;
    QPointer<frmMain> m_main;
    std::vector<QPointer<ui::Form>> m_forms;
};

} // namespace hv::testing
