#include "drive/Lookup.h"

#include "testing/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ListView.h"
#include "ui/TimePicker.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <functional>

namespace hv::drive {

namespace {

QString Bool_Text(bool b) {
    return b ? QStringLiteral("true") : QStringLiteral("false");
}

void Tree_Walk(QTreeWidgetItem* item, const std::function<void(QTreeWidgetItem*)>& visit) {
    visit(item);
    for (int i = 0; i < item->childCount(); ++i)
        Tree_Walk(item->child(i), visit);
}

std::vector<QTreeWidgetItem*> Tree_Nodes(const ui::TreeView* tree) {
    std::vector<QTreeWidgetItem*> nodes;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        Tree_Walk(tree->topLevelItem(i), [&](QTreeWidgetItem* n) { nodes.push_back(n); });
    return nodes;
}

QObject* Find_Child(ui::Form* form, const QString& name) {
    const QList<QObject*> all = form->findChildren<QObject*>(name);
    for (QObject* o : all)
        if (o->isWidgetType() || qobject_cast<QAction*>(o) || qobject_cast<ui::Timer*>(o))
            return o;
    if (!all.isEmpty())
        return all.front();
    // Names are not told apart by case in the pages' own language.
    for (QObject* o : form->findChildren<QObject*>())
        if (o->objectName().compare(name, Qt::CaseInsensitive) == 0)
            return o;
    return nullptr;
}

Failure No_Property(const Target& t, const QString& prop) {
    return Failure{QStringLiteral("%1 (%2) has no property %3").arg(t.ref, Kind_Of(t.object), prop)};
}

} // namespace

ui::Form* Find_Form(const QString& name) {
    const auto all = ui::Forms::All();
    for (ui::Form* f : all)
        if (f->objectName() == name)
            return f;
    for (ui::Form* f : all)
        if (f->objectName().compare(name, Qt::CaseInsensitive) == 0)
            return f;
    return nullptr;
}

ui::Form* Need_Form(const QString& name) {
    ui::Form* f = Find_Form(name);
    if (!f)
        throw Failure{QStringLiteral("form %1 is not loaded").arg(name)};
    return f;
}

Target Need_Control(const QString& ref, bool allowForm) {
    const qsizetype dot = ref.indexOf(u'.');
    if (dot < 0) {
        if (!allowForm)
            throw Failure{QStringLiteral("\"%1\" does not name a control (write form.control)").arg(ref)};
        ui::Form* f = Need_Form(ref);
        return Target{f, f, ref};
    }
    ui::Form* f = Need_Form(ref.left(dot));
    const QString name = ref.mid(dot + 1);
    QObject* o = Find_Child(f, name);
    if (!o)
        throw Failure{QStringLiteral("form %1 has no control %2").arg(f->objectName(), name)};
    return Target{f, o, ref};
}

QString Kind_Of(const QObject* o) {
    if (!o)
        return QStringLiteral("nothing");
    return QString::fromLatin1(o->metaObject()->className());
}

QStringList Rows_Of(const Target& t) {
    QStringList rows;
    if (auto* lv = qobject_cast<ui::ListView*>(t.object)) {
        const int n = lv->Count();
        rows.reserve(n);
        for (int i = 1; i <= n; ++i)
            rows << lv->Row_Text(i);
    } else if (auto* cbo = qobject_cast<QComboBox*>(t.object)) {
        for (int i = 0; i < cbo->count(); ++i)
            rows << cbo->itemText(i);
    } else if (auto* tree = qobject_cast<ui::TreeView*>(t.object)) {
        for (QTreeWidgetItem* n : Tree_Nodes(tree))
            rows << n->text(0);
    } else {
        throw Failure{QStringLiteral("%1 (%2) has no rows").arg(t.ref, Kind_Of(t.object))};
    }
    return rows;
}

int Row_Of(const Target& t, const Word& row) {
    const QStringList rows = Rows_Of(t);
    if (!row.quoted && row.text.startsWith(u'#')) {
        bool ok = false;
        const int n = row.text.mid(1).toInt(&ok);
        if (!ok || n < 1)
            throw Failure{QStringLiteral("\"%1\" is not a row position (#1, #2, ...)").arg(row.text)};
        if (n > rows.size())
            throw Failure{
                QStringLiteral("%1 has %2 rows, there is no row #%3").arg(t.ref).arg(rows.size()).arg(n)};
        return n;
    }
    // A list view's row is named by its text, or by the whole row as it is shown.
    if (auto* lv = qobject_cast<ui::ListView*>(t.object)) {
        for (int i = 1; i <= lv->Count(); ++i)
            if (lv->Text(i) == row.text)
                return i;
    }
    const int at = int(rows.indexOf(row.text));
    if (at < 0)
        throw Failure{QStringLiteral("%1 has no row %2").arg(t.ref, Quoted_Text(row.text))};
    return at + 1;
}

bool User_Can_Reach(const QObject* o) {
    if (auto* w = qobject_cast<const QWidget*>(o))
        return w->isEnabled();
    if (auto* a = qobject_cast<const QAction*>(o)) {
        if (!a->isEnabled())
            return false;
        // An item of a disabled menu cannot be reached either.
        for (QObject* holder : a->associatedObjects())
            if (auto* menu = qobject_cast<QMenu*>(holder))
                if (!menu->isEnabled() || (menu->menuAction() && !menu->menuAction()->isEnabled()))
                    return false;
        return true;
    }
    if (auto* tm = qobject_cast<const ui::Timer*>(o))
        return tm->Enabled();
    return true;
}

PropValue Read_Property(const Target& t, const QString& propWord) {
    const QString prop = propWord.toLower();
    QObject* o = t.object;

    if (prop == QLatin1String("tag"))
        return {ui::Tag(o)};

    if (auto* form = qobject_cast<ui::Form*>(o); form && o == t.form) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {form->Caption()};
        if (prop == QLatin1String("visible"))
            return {Bool_Text(form->isVisible()), true};
        if (prop == QLatin1String("enabled"))
            return {Bool_Text(form->isEnabled()), true};
        throw No_Property(t, propWord);
    }

    if (auto* a = qobject_cast<QAction*>(o)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {a->text()};
        if (prop == QLatin1String("enabled"))
            return {Bool_Text(a->isEnabled()), true};
        if (prop == QLatin1String("visible"))
            return {Bool_Text(a->isVisible()), true};
        if (prop == QLatin1String("value"))
            return {Bool_Text(a->isChecked()), true};
        if (prop == QLatin1String("tooltip"))
            return {a->property("toolTip").toString()};
        throw No_Property(t, propWord);
    }

    if (auto* tm = qobject_cast<ui::Timer*>(o)) {
        if (prop == QLatin1String("enabled"))
            return {Bool_Text(tm->Enabled()), true};
        throw No_Property(t, propWord);
    }

    // A menu of the menu bar stands for its entry there.
    if (auto* menu = qobject_cast<QMenu*>(o)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {menu->title()};
        if (prop == QLatin1String("enabled"))
            return {Bool_Text(menu->menuAction()->isEnabled() && !menu->testAttribute(Qt::WA_ForceDisabled)),
                    true};
        if (prop == QLatin1String("visible"))
            return {Bool_Text(menu->menuAction()->isVisible()), true};
        if (prop == QLatin1String("count"))
            return {QString::number(menu->actions().size())};
    }

    auto* w = qobject_cast<QWidget*>(o);
    if (!w)
        throw No_Property(t, propWord);

    // A control's own flags, as the pages set them: a control inside a disabled frame still says enabled;
    // a control on a form that is not shown yet is visible when nothing on its way up was hidden.
    if (prop == QLatin1String("enabled"))
        return {Bool_Text(!w->testAttribute(Qt::WA_ForceDisabled)), true};
    if (prop == QLatin1String("visible"))
        return {Bool_Text(w->isVisibleTo(t.form)), true};
    if (prop == QLatin1String("tooltip"))
        return {w->toolTip()};

    if (auto* tb = qobject_cast<ui::TextBox*>(w)) {
        if (prop == QLatin1String("text") || prop == QLatin1String("value"))
            return {tb->Text()};
        if (prop == QLatin1String("maxlength"))
            return {QString::number(tb->Max_Length())};
    } else if (auto* cbo = qobject_cast<ui::ComboBox*>(w)) {
        if (prop == QLatin1String("text"))
            return {cbo->Text()};
        if (prop == QLatin1String("listindex"))
            return {QString::number(cbo->ListIndex())};
        if (prop == QLatin1String("count"))
            return {QString::number(cbo->List_Count())};
    } else if (auto* chk = qobject_cast<ui::CheckBox*>(w)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {chk->text()};
        if (prop == QLatin1String("value"))
            return {QString::number(chk->Value())};
    } else if (auto* opt = qobject_cast<ui::OptionButton*>(w)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {opt->text()};
        if (prop == QLatin1String("value"))
            return {Bool_Text(opt->Value()), true};
    } else if (auto* lv = qobject_cast<ui::ListView*>(w)) {
        if (prop == QLatin1String("count"))
            return {QString::number(lv->Count())};
        if (prop == QLatin1String("text")) {
            const int sel = lv->Selected_Item();
            return {sel > 0 ? lv->Text(sel) : QString()};
        }
        if (prop == QLatin1String("listindex"))
            return {QString::number(lv->Selected_Item() - 1)};
    } else if (auto* tree = qobject_cast<ui::TreeView*>(w)) {
        if (prop == QLatin1String("count"))
            return {QString::number(Tree_Nodes(tree).size())};
        if (prop == QLatin1String("text"))
            return {tree->currentItem() ? tree->currentItem()->text(0) : QString()};
    } else if (auto* dp = qobject_cast<ui::DatePicker*>(w)) {
        if (prop == QLatin1String("value") || prop == QLatin1String("text"))
            return {dp->Picker_Kind() == ui::DatePicker::Time
                        ? dp->time().toString(QStringLiteral("HH:mm"))
                        : dp->date().toString(QStringLiteral("yyyy-MM-dd"))};
    } else if (auto* tp = qobject_cast<ui::TimePicker*>(w)) {
        if (prop == QLatin1String("value") || prop == QLatin1String("text"))
            return {tp->Value_Text()};
    } else if (auto* sb = qobject_cast<ui::StatusBar*>(w)) {
        if (prop == QLatin1String("count"))
            return {QString::number(sb->Panel_Count())};
    } else if (auto* gb = qobject_cast<QGroupBox*>(w)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {gb->title()};
        if (prop == QLatin1String("value") && gb->isCheckable())
            return {Bool_Text(gb->isChecked()), true};
    } else if (auto* lbl = qobject_cast<QLabel*>(w)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {lbl->text()};
    } else if (auto* btn = qobject_cast<QAbstractButton*>(w)) {
        if (prop == QLatin1String("caption") || prop == QLatin1String("text"))
            return {btn->text()};
        if (prop == QLatin1String("value"))
            return {Bool_Text(btn->isChecked()), true};
    } else if (auto* le = qobject_cast<QLineEdit*>(w)) {
        if (prop == QLatin1String("text") || prop == QLatin1String("value"))
            return {le->text()};
        if (prop == QLatin1String("maxlength"))
            return {QString::number(le->maxLength())};
    } else if (auto* qc = qobject_cast<QComboBox*>(w)) {
        if (prop == QLatin1String("text"))
            return {qc->currentText()};
        if (prop == QLatin1String("listindex"))
            return {QString::number(qc->currentIndex())};
        if (prop == QLatin1String("count"))
            return {QString::number(qc->count())};
    }
    throw No_Property(t, propWord);
}

} // namespace hv::drive
