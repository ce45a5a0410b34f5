// The actions: what a user (or an outside entry point) does to the running console.
#include "drive/Player.h"

#include "console/modProgram.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ListView.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

namespace hv::drive {

namespace {

template <class T> T* Need_Kind(const Target& t, const char* what) {
    auto* p = qobject_cast<T*>(t.object);
    if (!p)
        throw Failure{
            QStringLiteral("%1 is a %2, not %3").arg(t.ref, Kind_Of(t.object), QLatin1String(what))};
    return p;
}

QWidget* Need_Widget(const Target& t) {
    return Need_Kind<QWidget>(t, "a control that takes keys");
}

int Need_Int(const Word& w, const char* what) {
    bool ok = false;
    const int v = w.text.toInt(&ok);
    if (!ok)
        throw Failure{QStringLiteral("\"%1\" is not a number (%2)").arg(w.text, QLatin1String(what))};
    return v;
}

} // namespace

bool Player::Reachable(const Target& t) {
    if (User_Can_Reach(t.object))
        return true;
    if (m_verbose)
        Say(QStringLiteral("    (nothing happens: %1 is disabled)").arg(t.ref));
    return false;
}

void Player::Key_Press(QWidget* w, int key) {
    QPointer<QWidget> alive(w);
    const int left = ui::Route_Key(w, key);
    if (alive && left != 0)
        ui::Default_Key_Action(w, left);
}

void Player::Cmd_Start(const Command& c) {
    Need_Args(c, 0, 1, "start [ARG]");
    const QString commandLine = c.words.size() > 1 ? c.words[1].text : QString();
    if (ui::Forms::Count() > 0) {
        // The program is still running: this is a second process, which finds the first one's lock.
        const bool before = m_platform->instanceRunning;
        m_platform->instanceRunning = true;
        Run_Main(commandLine);
        m_platform->instanceRunning = before;
        return;
    }
    // A new process in the same world: nothing of the last one's memory is left.
    Reset_Process_State();
    Run_Main(commandLine);
}

void Player::Cmd_Show(const Command& c) {
    Need_Args(c, 1, 1, "show FORM");
    const QString name = c.words[1].text;
    if (!ui::Forms::Known(name))
        throw Failure{QStringLiteral("there is no form %1 in the catalogue").arg(name)};
    ui::Form* f = ui::Forms::Create(name);
    if (!f)
        throw Failure{QStringLiteral("form %1 could not be made").arg(name)};
    f->Show_Modal();
}

void Player::Cmd_Click(const Command& c) {
    Need_Args(c, 1, 1, "click FORM.CONTROL");
    const Target t = Need_Control(c.words[1].text);
    if (!Reachable(t))
        return;
    QObject* o = t.object;
    if (auto* w = qobject_cast<QWidget*>(o))
        ui::Click_Focus(w);
    if (auto* chk = qobject_cast<ui::CheckBox*>(o)) {
        chk->Set_Value(chk->Value() == 1 ? 0 : 1); // a user's click ticks or unticks; a grey box gets ticked
    } else if (auto* opt = qobject_cast<ui::OptionButton*>(o)) {
        opt->Set_Value(true);
    } else if (auto* lbl = qobject_cast<ui::Label*>(o)) {
        lbl->Click_As_User();
    } else if (auto* btn = qobject_cast<QAbstractButton*>(o)) {
        btn->click();
    } else if (auto* act = qobject_cast<QAction*>(o)) {
        act->trigger();
    } else {
        throw Failure{QStringLiteral("%1 is a %2, which cannot be clicked").arg(t.ref, Kind_Of(o))};
    }
}

void Player::Cmd_Menu(const Command& c) {
    Need_Args(c, 1, 1, "menu FORM.MENUITEM");
    const Target t = Need_Control(c.words[1].text);
    if (qobject_cast<QMenu*>(t.object))
        return; // a menu of the bar only opens
    auto* act = Need_Kind<QAction>(t, "a menu item");
    if (!Reachable(t))
        return;
    act->trigger();
}

void Player::Cmd_Set(const Command& c) {
    Need_Args(c, 2, 2, "set FORM.CONTROL \"TEXT\"");
    const Target t = Need_Control(c.words[1].text);
    const QString text = c.words[2].text;
    if (auto* tb = qobject_cast<ui::TextBox*>(t.object))
        tb->Set_Text(text);
    else if (auto* cbo = qobject_cast<ui::ComboBox*>(t.object))
        cbo->Set_Text(text);
    else if (auto* le = qobject_cast<QLineEdit*>(t.object))
        le->setText(text);
    else
        throw Failure{QStringLiteral("%1 is a %2, which has no text to set").arg(t.ref, Kind_Of(t.object))};
}

void Player::Cmd_Type(const Command& c) {
    Need_Args(c, 2, 2, "type FORM.CONTROL \"TEXT\"");
    const Target t = Need_Control(c.words[1].text);
    QPointer<QWidget> w(Need_Widget(t));
    if (!Reachable(t))
        return;
    for (QChar ch : c.words[2].text) {
        if (!w)
            break; // the key before closed the form
        Key_Press(w, ch.unicode());
    }
}

void Player::Cmd_Key(const Command& c) {
    Need_Args(c, 2, 2, "key FORM.CONTROL Enter|Esc|Backspace|Tab|\"C\"");
    const Target t = Need_Control(c.words[1].text);
    QWidget* w = Need_Widget(t);
    const Word& k = c.words[2];
    int code = 0;
    if (k.Is("enter") || k.Is("return"))
        code = 13;
    else if (k.Is("esc") || k.Is("escape"))
        code = 27;
    else if (k.Is("backspace"))
        code = 8;
    else if (k.Is("tab"))
        code = 9;
    else if (k.text.size() == 1)
        code = k.text[0].unicode();
    else
        throw Failure{
            QStringLiteral("\"%1\" is not a key: Enter, Esc, Backspace, Tab or one character in quotes")
                .arg(k.text)};
    if (!Reachable(t))
        return;
    Key_Press(w, code);
}

void Player::Cmd_Choose(const Command& c) {
    Need_Args(c, 2, 2, "choose FORM.CONTROL \"ENTRY\"|#n");
    const Target t = Need_Control(c.words[1].text);
    auto* cbo = Need_Kind<QComboBox>(t, "a combo box");
    const int row = Row_Of(t, c.words[2]);
    if (!Reachable(t))
        return;
    ui::Click_Focus(cbo);
    if (auto* k = qobject_cast<ui::ComboBox*>(cbo))
        k->User_Choose(row - 1);
    else
        cbo->setCurrentIndex(row - 1);
}

void Player::Cmd_Select(const Command& c) {
    if (c.words.size() < 3)
        throw Failure{
            QStringLiteral("wrong number of words; write: select FORM.LIST ROW... | select FORM.LIST none")};
    const Target t = Need_Control(c.words[1].text);
    auto* lv = Need_Kind<ui::ListView>(t, "a list view");
    std::vector<int> rows;
    if (!(c.words.size() == 3 && c.words[2].Is("none")))
        for (size_t i = 2; i < c.words.size(); ++i)
            rows.push_back(Row_Of(t, c.words[i]));
    if (!Reachable(t))
        return;
    ui::Click_Focus(lv);
    lv->User_Select(rows);
}

void Player::Cmd_ItemClick(const Command& c) {
    Need_Args(c, 2, 2, "itemclick FORM.LIST ROW");
    const Target t = Need_Control(c.words[1].text);
    auto* lv = Need_Kind<ui::ListView>(t, "a list view");
    const int row = Row_Of(t, c.words[2]);
    if (!Reachable(t))
        return;
    ui::Click_Focus(lv);
    lv->User_Item_Click(row);
}

void Player::Cmd_DblClick(const Command& c) {
    Need_Args(c, 2, 2, "dblclick FORM.LIST ROW");
    const Target t = Need_Control(c.words[1].text);
    auto* lv = Need_Kind<ui::ListView>(t, "a list view");
    const int row = Row_Of(t, c.words[2]);
    if (!Reachable(t))
        return;
    ui::Click_Focus(lv);
    lv->User_Dbl_Click(row);
}

void Player::Cmd_Check(const Command& c) {
    Need_Args(c, 2, 2, "check FORM.LIST ROW");
    const Target t = Need_Control(c.words[1].text);
    auto* lv = Need_Kind<ui::ListView>(t, "a list view");
    const int row = Row_Of(t, c.words[2]);
    if (!Reachable(t))
        return;
    ui::Click_Focus(lv);
    lv->User_Check(row, true);
}

void Player::Cmd_Uncheck(const Command& c) {
    Need_Args(c, 2, 2, "uncheck FORM.LIST ROW");
    const Target t = Need_Control(c.words[1].text);
    auto* lv = Need_Kind<ui::ListView>(t, "a list view");
    const int row = Row_Of(t, c.words[2]);
    if (!Reachable(t))
        return;
    ui::Click_Focus(lv);
    lv->User_Check(row, false);
}

void Player::Cmd_LabelEdit(const Command& c) {
    Need_Args(c, 2, 2, "labeledit FORM.LIST \"TEXT\" | labeledit FORM.LIST cancel");
    const Target t = Need_Control(c.words[1].text);
    auto* lv = Need_Kind<ui::ListView>(t, "a list view");
    if (!lv->Label_Editing())
        throw Failure{QStringLiteral("no label edit is running on %1").arg(t.ref)};
    if (c.words[2].Is("cancel"))
        lv->Cancel_Label_Edit();
    else
        lv->End_Label_Edit(c.words[2].text);
}

void Player::Cmd_Node(const Command& c) {
    Need_Args(c, 2, 2, "node FORM.TREE \"KEY\"");
    const Target t = Need_Control(c.words[1].text);
    auto* tree = Need_Kind<ui::TreeView>(t, "a tree view");
    const QString key = c.words[2].text;
    if (!tree->Node(key))
        throw Failure{QStringLiteral("%1 has no node with the key \"%2\"").arg(t.ref, key)};
    if (Reachable(t))
        tree->Click_Node(key);
}

void Player::Cmd_SetTime(const Command& c) {
    Need_Args(c, 2, 2, "settime FORM.PICKER HH:MM");
    const Target t = Need_Control(c.words[1].text);
    auto* dp = Need_Kind<QDateTimeEdit>(t, "a time picker");
    QTime time = QTime::fromString(c.words[2].text, QStringLiteral("HH:mm"));
    if (!time.isValid())
        time = QTime::fromString(c.words[2].text, QStringLiteral("H:mm"));
    if (!time.isValid())
        throw Failure{QStringLiteral("\"%1\" is not a time as HH:MM").arg(c.words[2].text)};
    if (!Reachable(t))
        return;
    ui::Click_Focus(dp);
    dp->setTime(time);
}

void Player::Cmd_SetDate(const Command& c) {
    Need_Args(c, 2, 2, "setdate FORM.PICKER YYYY-MM-DD");
    const Target t = Need_Control(c.words[1].text);
    auto* dp = Need_Kind<QDateTimeEdit>(t, "a date picker");
    const QDate date = QDate::fromString(c.words[2].text, QStringLiteral("yyyy-MM-dd"));
    if (!date.isValid())
        throw Failure{QStringLiteral("\"%1\" is not a date as YYYY-MM-DD").arg(c.words[2].text)};
    if (!Reachable(t))
        return;
    ui::Click_Focus(dp);
    dp->setDate(date);
}

void Player::Cmd_Focus(const Command& c) {
    Need_Args(c, 1, 1, "focus FORM.CONTROL");
    const Target t = Need_Control(c.words[1].text);
    QWidget* w = Need_Widget(t);
    if (Reachable(t))
        ui::Set_Focus(w);
}

void Player::Cmd_Close(const Command& c) {
    Need_Args(c, 1, 1, "close FORM");
    Need_Form(c.words[1].text)->Unload(ui::vbFormControlMenu);
}

void Player::Cmd_Tick(const Command& c) {
    Need_Args(c, 1, 1, "tick FORM.TIMER");
    const Target t = Need_Control(c.words[1].text);
    auto* timer = Need_Kind<ui::Timer>(t, "a timer");
    if (!timer->Enabled()) {
        if (m_verbose)
            Say(QStringLiteral("    (nothing happens: %1 is not enabled)").arg(t.ref));
        return;
    }
    timer->Fire();
}

void Player::Cmd_Resize(const Command& c) {
    Need_Args(c, 3, 3, "resize FORM WIDTH HEIGHT");
    ui::Form* f = Need_Form(c.words[1].text);
    const int w = Need_Int(c.words[2], "width in twips");
    const int h = Need_Int(c.words[3], "height in twips");
    if (w < 0 || h < 0)
        throw Failure{QStringLiteral("a form cannot have a negative size")};
    f->resize(ui::Twips_To_Pixels(w), ui::Twips_To_Pixels(h));
}

void Player::Cmd_Answer(const Command& c) {
    Need_Args(c, 1, 1, "answer Yes|No|OK|Cancel");
    const Word& a = c.words[1];
    MsgAnswer answer;
    if (a.Is("yes"))
        answer = MsgAnswer::Yes;
    else if (a.Is("no"))
        answer = MsgAnswer::No;
    else if (a.Is("ok"))
        answer = MsgAnswer::OK;
    else if (a.Is("cancel"))
        answer = MsgAnswer::Cancel;
    else
        throw Failure{QStringLiteral("\"%1\" is not an answer: Yes, No, OK or Cancel").arg(a.text)};
    m_platform->answers.push_back(answer);
}

void Player::Cmd_Dialog(const Command& c) {
    if (c.words.size() < 2)
        throw Failure{QStringLiteral(
            "wrong number of words; write: dialog \"PATH\" | dialog \"DIR\" \"FILE\"... | dialog cancel")};
    FileDialogAnswer a;
    if (c.words.size() == 2 && c.words[1].Is("cancel")) {
        a.cancelled = true;
    } else if (c.words.size() == 2) {
        // A dialog hands back full paths; a relative one is taken from the scenario's working directory.
        a.cancelled = false;
        a.files << Work_Path(c.words[1].text);
    } else {
        a.cancelled = false;
        a.directory = Work_Path(c.words[1].text);
        for (size_t i = 2; i < c.words.size(); ++i)
            a.files << c.words[i].text;
    }
    m_platform->dialogAnswers.push_back(a);
}

void Player::Cmd_Skip(const Command& c) {
    Need_Args(c, 1, 1, "skip msgboxes");
    if (!c.words[1].Is("msgboxes"))
        throw Failure{QStringLiteral("write: skip msgboxes")};
    m_boxesSeen = m_platform->boxes.size();
}

} // namespace hv::drive
