#pragma once
// Finding what a scenario names: forms by name, controls as "form.control" or "form.control(i)", rows by
// their text or "#n", and the properties that `expect C.PROP` reads.
#include "drive/Script.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace hv::ui {
class Form;
}

namespace hv::drive {

// Thrown by a command that does not hold or cannot run; the reason is one line.
struct Failure {
    QString reason;
};

// The loaded form of that name (objectName), or null.
ui::Form* Find_Form(const QString& name);
ui::Form* Need_Form(const QString& name); // fails when it is not loaded

struct Target {
    ui::Form* form = nullptr;
    QObject* object = nullptr; // the form itself when the reference names a form
    QString ref;
};

// "form.control" (a control) or, with allowForm, also "form" alone.
Target Need_Control(const QString& ref, bool allowForm = false);

// Rows, as a command shows them: a list view's every cell joined with '|', a combo box's entries, a tree's
// nodes from top to bottom.
QStringList Rows_Of(const Target& t);
// The 1-based position of a row named by its exact text (or its shown row) or "#n".
int Row_Of(const Target& t, const Word& row);

QString Kind_Of(const QObject* o);

struct PropValue {
    QString text;
    bool boolean = false; // compared without regard to case
};
PropValue Read_Property(const Target& t, const QString& prop);

// A registry key path of the scenario, without a leading "HKEY_LOCAL_MACHINE\" or "HKLM\".
QString Machine_Key(const QString& keyPath);

// True for a control a user could work with now: enabled together with everything that holds it.
bool User_Can_Reach(const QObject* o);

} // namespace hv::drive
