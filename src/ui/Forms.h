#pragma once
// The single global instance of each form, created on first use and forgotten when it unloads.
#include "ui/Form.h"

#include <QString>
#include <functional>
#include <vector>

namespace hv::ui {

class Forms final {
public:
    using Factory = std::function<Form*()>;

    // The form's instance, created (not loaded) if there is none.
    template <class T> static T& Get() {
        for (Form* f : All())
            if (auto* t = dynamic_cast<T*>(f))
                return *t;
        auto* f = new T();
        Adopt(f);
        return *f;
    }
    // The instance if it exists, else null. Names are the forms' names ("frmMain").
    static Form* Find(const QString& name);
    // Creates by name from the catalogue (Register), for entry points outside the console's menus.
    static Form* Create(const QString& name);
    static void Register(const QString& name, Factory factory);
    static bool Known(const QString& name);

    // Forms that exist now, in creation order.
    static std::vector<Form*> All();
    static int Count();

    // Runs the forms' message loop for as long as any form exists: the loop ends when the last form is
    // forgotten (at once when there is none). A form that goes while another is being made in its place
    // (the login form giving way to the main console) does not end it.
    static int Run_While_Any_Form();

    // Called by Form itself.
    static void Adopt(Form* f);
    static void Forget(Form* f);
};

} // namespace hv::ui
