#include "ui/Form.h"

#include "platform/Err.h"
#include "platform/Platform.h"
#include "ui/Controls.h"
#include "ui/Forms.h"

#include <QApplication>
#include <QChildEvent>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace hv::ui {

namespace {

// The per-control events that any widget can carry, kept in a small child object so they live and die
// with the widget.
class ControlHooks final : public QObject {
public:
    explicit ControlHooks(QWidget* owner) : QObject(owner) {}
    std::function<void(int&)> keyPress;
    std::function<void()> gotFocus;
    std::function<void()> lostFocus;
};

ControlHooks* Hooks(const QWidget* w) {
    // Not a Q_OBJECT class, so findChild<ControlHooks*> would take any child for one.
    if (w)
        for (QObject* c : w->children())
            if (auto* h = dynamic_cast<ControlHooks*>(c))
                return h;
    return nullptr;
}

ControlHooks& Hooks_Of(QWidget* w) {
    if (auto* h = Hooks(w))
        return *h;
    return *new ControlHooks(w);
}

// Qt names some of its own inner widgets ("qt_scrollarea_viewport"); those are parts, not controls.
bool Has_Control_Name(const QWidget* w) {
    const QString n = w->objectName();
    return !n.isEmpty() && !n.startsWith(QLatin1String("qt_"));
}

// The control a widget is part of: itself, or the nearest parent below the form that carries events or
// a control's name (a list view's inner view belongs to the list view).
QWidget* Control_Of(QWidget* w, const Form* form) {
    for (QWidget* p = w; p && p != form; p = p->parentWidget())
        if (Hooks(p) || Has_Control_Name(p))
            return p;
    return w;
}

// The handler of a key: on the widget or its nearest parent below the form that has one.
ControlHooks* Key_Hooks(QWidget* w, const Form* form) {
    for (QWidget* p = w; p && p != form; p = p->parentWidget())
        if (auto* h = Hooks(p); h && h->keyPress)
            return h;
    return nullptr;
}

// The ASCII code VB would give a key press, or -1 for keys that make no KeyPress (arrows, F-keys...).
int Key_Ascii(const QKeyEvent* e) {
    switch (e->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Backtab:
        return -1;
    default:
        break;
    }
    const QString t = e->text();
    return t.isEmpty() ? -1 : int(t.at(0).unicode());
}

int Qt_Key_For(int keyAscii) {
    switch (keyAscii) {
    case 13:
        return Qt::Key_Return;
    case 27:
        return Qt::Key_Escape;
    case 8:
        return Qt::Key_Backspace;
    case 9:
        return Qt::Key_Tab;
    default:
        return int(QChar(char16_t(keyAscii)).toUpper().unicode());
    }
}

// A key event the form delivers itself after routing; its own filters let it pass.
const QEvent* g_delivering = nullptr;

QWidget* Next_Focus_Candidate(QWidget* from) {
    QWidget* top = from->window();
    for (QWidget* w = from->nextInFocusChain(); w && w != from; w = w->nextInFocusChain()) {
        if (w->window() == top && (w->focusPolicy() & Qt::TabFocus) && w->isEnabled() &&
            w->isVisibleTo(top) && !w->focusProxy())
            return w;
    }
    return nullptr;
}

} // namespace

Form* Form_Of(const QWidget* w) {
    for (const QWidget* p = w; p; p = p->parentWidget())
        if (auto* f = qobject_cast<const Form*>(p))
            return const_cast<Form*>(f);
    return nullptr;
}

Form::Form(const QString& formName, QWidget* parent) : QDialog(parent) {
    setObjectName(formName);
    Forms::Adopt(this);
    installEventFilter(this);
}

Form::~Form() {
    Forms::Forget(this);
}

void Form::Watch_Tree(QWidget* w) {
    if (w != this)
        w->installEventFilter(this);
    for (QObject* c : w->children())
        if (c->isWidgetType())
            Watch_Tree(static_cast<QWidget*>(c));
}

void Form::Load() {
    if (m_loaded)
        return;
    m_loaded = true;
    Watch_Tree(this);
    Form_Load();
}

void Form::Show_Modal(QWidget* owner) {
    Load();
    if (m_unloading || m_inExec)
        return;
    if (owner && owner->isVisible())
        move(owner->geometry().center() - rect().center());
    if (!platform().Interactive()) {
        setModal(true);
        show();
        return;
    }
    setWindowModality(Qt::ApplicationModal);
    m_inExec = true;
    QPointer<Form> self(this);
    exec();
    if (self)
        self->m_inExec = false;
}

void Form::Show_Modeless() {
    Load();
    if (!m_unloading)
        show();
}

bool Form::Unload(int unloadMode) {
    if (m_unloading)
        return true;
    if (m_loaded) {
        int cancel = 0;
        Form_QueryUnload(cancel, unloadMode);
        if (cancel)
            return false;
        Form_Unload(cancel);
        if (cancel)
            return false;
    }
    m_unloading = true;
    Forms::Forget(this);
    if (m_inExec)
        done(0);
    // close() rather than hide(), so that the application's last-window-closed handling sees it.
    // Inside the close box's own close event Qt ignores a nested close(); the event is accepted there.
    if (!m_inCloseEvent)
        close();
    deleteLater();
    return true;
}

void Form::closeEvent(QCloseEvent* e) {
    if (m_unloading) {
        e->accept();
        return;
    }
    // The close box goes through the form's own unload; the form then removes itself.
    m_inCloseEvent = true;
    const bool unloaded = Unload(vbFormControlMenu);
    m_inCloseEvent = false;
    if (unloaded)
        e->accept();
    else
        e->ignore();
}

void Form::childEvent(QChildEvent* e) {
    if ((e->type() == QEvent::ChildAdded || e->type() == QEvent::ChildPolished) && e->child()->isWidgetType())
        Watch_Tree(static_cast<QWidget*>(e->child()));
    QDialog::childEvent(e);
}

bool Form::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType())
        return QDialog::eventFilter(watched, event);
    auto* w = static_cast<QWidget*>(watched);
    switch (event->type()) {
    case QEvent::ChildAdded:
        if (w != this) {
            QObject* c = static_cast<QChildEvent*>(event)->child();
            if (c->isWidgetType())
                Watch_Tree(static_cast<QWidget*>(c));
        }
        break;
    case QEvent::KeyPress:
        if (event != g_delivering && Form_Of(w) == this && !w->property("hvNoKeyRouting").toBool())
            return Filter_Key(w, static_cast<QKeyEvent*>(event));
        break;
    case QEvent::FocusIn:
        if (w != this && Form_Of(w) == this)
            Focus_Moved(Control_Of(w, this));
        break;
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

bool Form::Filter_Key(QWidget* w, QKeyEvent* e) {
    const int key = Key_Ascii(e);
    if (key < 0)
        return false;
    QPointer<QWidget> target(w);
    const int left = Route_Key(w, key);
    if (left == 0 || !target)
        return true;
    // The key goes on as the handlers left it. It is delivered here, as a fresh event, so that the
    // filters of the parents it propagates to do not route it a second time.
    QKeyEvent out(QEvent::KeyPress, left == key ? e->key() : Qt_Key_For(left),
                  left == key ? e->modifiers() : Qt::NoModifier,
                  left == key ? e->text() : QString(QChar(char16_t(left))), e->isAutoRepeat());
    const QEvent* outer = g_delivering;
    g_delivering = &out;
    QCoreApplication::sendEvent(target, &out);
    g_delivering = outer;
    return true;
}

void Form::Focus_Moved(QWidget* control) {
    if (control == m_focus)
        return;
    QPointer<QWidget> previous = m_focus;
    m_focus = control;
    ++m_focusMoves;
    if (previous)
        if (auto* h = Hooks(previous); h && h->lostFocus)
            h->lostFocus();
    if (control && control == m_focus)
        if (auto* h = Hooks(control); h && h->gotFocus)
            h->gotFocus();
}

int Route_Key(QWidget* target, int KeyAscii) {
    Form* form = Form_Of(target);
    QPointer<QWidget> guard(target);
    if (form && form->KeyPreview) {
        form->Form_KeyPress(KeyAscii);
        if (KeyAscii == 0 || !guard)
            return KeyAscii;
    }
    if (auto* h = Key_Hooks(target, form)) {
        auto handler = h->keyPress; // the handler may unload the form and with it the hooks
        handler(KeyAscii);
    }
    return KeyAscii;
}

void Default_Key_Action(QWidget* target, int KeyAscii) {
    if (!target || KeyAscii == 0)
        return;
    if (KeyAscii == 9) {
        if (QWidget* next = Next_Focus_Candidate(target))
            Set_Focus(next);
        return;
    }
    QLineEdit* edit = qobject_cast<QLineEdit*>(target);
    if (auto* combo = qobject_cast<QComboBox*>(target))
        edit = combo->lineEdit();
    if (!edit || edit->isReadOnly() || !edit->isEnabled())
        return;
    if (KeyAscii == 8) {
        edit->backspace();
        return;
    }
    if (auto* box = qobject_cast<TextBox*>(edit); box && box->Multi_Line() && KeyAscii == 13) {
        box->insert(QStringLiteral("\r\n"));
        return;
    }
    if (KeyAscii < 32)
        return;
    if (auto* box = qobject_cast<TextBox*>(edit); box && box->Max_Length() > 0) {
        if (box->text().size() - box->selectedText().size() >= box->Max_Length())
            return;
    }
    edit->insert(QString(QChar(char16_t(KeyAscii))));
}

void Set_KeyPress(QWidget* control, std::function<void(int& KeyAscii)> handler) {
    Hooks_Of(control).keyPress = std::move(handler);
}

void Set_GotFocus(QWidget* control, std::function<void()> handler) {
    Hooks_Of(control).gotFocus = std::move(handler);
}

void Set_LostFocus(QWidget* control, std::function<void()> handler) {
    Hooks_Of(control).lostFocus = std::move(handler);
}

void Set_Focus(QWidget* control) {
    if (!control)
        return;
    // The system's focus first: where its focus event arrives (an active window) that event makes the
    // move, and a GotFocus handler that sends the focus on elsewhere keeps the last word. A window that
    // gets no focus events has the move made here.
    Form* form = Form_Of(control);
    const int moves = form ? form->m_focusMoves : 0;
    QPointer<QWidget> target(control);
    control->setFocus(Qt::OtherFocusReason);
    if (form && target && form->m_focusMoves == moves)
        form->Focus_Moved(Control_Of(control, form));
}

void Click_Focus(QWidget* control) {
    if (!control || !control->isEnabled())
        return;
    const QWidget* taker = control->focusProxy() ? control->focusProxy() : control;
    if (taker->focusPolicy() & Qt::ClickFocus)
        Set_Focus(control);
}

QString Tag(const QObject* o) {
    return o ? o->property("hvTag").toString() : QString();
}

void Set_Tag(QObject* o, const QString& tag) {
    if (o)
        o->setProperty("hvTag", tag);
}

long Tag_Number(const QString& tag) {
    bool ok = false;
    const long n = tag.trimmed().toLong(&ok);
    if (!ok)
        Err().Raise(errnum::TypeMismatch);
    return n;
}

long Tag_Number(const QObject* o) {
    return Tag_Number(Tag(o));
}

} // namespace hv::ui
