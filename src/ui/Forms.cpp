#include "ui/Forms.h"

#include <QCoreApplication>
#include <QMap>
#include <algorithm>

namespace hv::ui {

namespace {

std::vector<Form*>& Live() {
    static std::vector<Form*> forms;
    return forms;
}

QMap<QString, Forms::Factory>& Catalogue() {
    static QMap<QString, Forms::Factory> factories;
    return factories;
}

} // namespace

Form* Forms::Find(const QString& name) {
    for (Form* f : Live())
        if (f->objectName() == name)
            return f;
    return nullptr;
}

// There is one instance of each form: asking for one that exists gives that one.
Form* Forms::Create(const QString& name) {
    if (Form* f = Find(name))
        return f;
    auto it = Catalogue().constFind(name);
    if (it == Catalogue().constEnd() || !*it)
        return nullptr;
    Form* f = (*it)();
    if (f)
        Adopt(f);
    return f;
}

void Forms::Register(const QString& name, Factory factory) {
    Catalogue().insert(name, std::move(factory));
}

bool Forms::Known(const QString& name) {
    return Catalogue().contains(name);
}

std::vector<Form*> Forms::All() {
    return Live();
}

int Forms::Count() {
    return int(Live().size());
}

void Forms::Adopt(Form* f) {
    auto& live = Live();
    if (f && std::find(live.begin(), live.end(), f) == live.end())
        live.push_back(f);
}

void Forms::Forget(Form* f) {
    auto& live = Live();
    live.erase(std::remove(live.begin(), live.end(), f), live.end());
    // The check waits for the event loop, so that a form made right after this one went keeps it going.
    if (live.empty() && QCoreApplication::instance())
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [] {
                if (Live().empty())
                    QCoreApplication::quit();
            },
            Qt::QueuedConnection);
}

int Forms::Run_While_Any_Form() {
    if (Live().empty())
        return 0;
    return QCoreApplication::exec();
}

} // namespace hv::ui
