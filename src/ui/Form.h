#pragma once
// The page base: every page is a Form (a QDialog) whose objectName is the form's name.
//
// Life of a form, as the pages expect it:
//  - Created on first use (Forms::Get<T>()), controls built in the constructor, nothing loaded yet.
//  - Load(): Form_Load runs once, before the form becomes visible.
//  - Show_Modal(): Load, then shown modal over its owner. On the desktop this blocks in the form's own loop
//    until it is unloaded; under the scenario driver it shows the form and returns at once.
//  - Unload(): Form_QueryUnload (may cancel), Form_Unload (may cancel), then the form is hidden and
//    destroyed; the next Forms::Get<T>() makes a fresh instance. The close box and Esc-less QDialog
//    behaviour are routed here: a QDialog's own reject() does nothing.
//
// Key preview: with KeyPreview set, Form_KeyPress sees every key of every control on the form first and
// can swallow it (KeyAscii = 0) or change it; then the control's own KeyPress handler (Set_KeyPress) runs.
#include <QDialog>
#include <QPointer>
#include <QString>
#include <functional>

class QKeyEvent;

namespace hv::ui {

enum UnloadMode { vbFormControlMenu = 0, vbFormCode = 1, vbAppWindows = 2, vbAppTaskManager = 3 };

class Form : public QDialog {
    Q_OBJECT
public:
    explicit Form(const QString& formName, QWidget* parent = nullptr);
    ~Form() override;

    void Load(); // runs Form_Load once
    bool Loaded() const { return m_loaded; }
    void Show_Modal(QWidget* owner = nullptr);
    void Show_Modeless();
    // Shown by whoever opens the page by name, with a word of theirs (the copy settings page takes the
    // feature to tick); a page that needs no word is simply shown modally.
    virtual void Open(const QString& word, QWidget* owner) {
        (void)word;
        Show_Modal(owner);
    }
    // Returns false when QueryUnload or Unload cancelled.
    bool Unload(int unloadMode = vbFormCode);

    QString Caption() const { return windowTitle(); }
    void Set_Caption(const QString& c) { setWindowTitle(c); }

    bool KeyPreview = false;

protected:
    virtual void Form_Load() {}
    virtual void Form_KeyPress(int& KeyAscii) { (void)KeyAscii; }
    virtual void Form_QueryUnload(int& Cancel, int UnloadMode) {
        (void)Cancel;
        (void)UnloadMode;
    }
    virtual void Form_Unload(int& Cancel) { (void)Cancel; }

    void closeEvent(QCloseEvent* e) override;
    void reject() override {}
    bool eventFilter(QObject* watched, QEvent* event) override;
    void childEvent(QChildEvent* e) override;

private:
    friend int Route_Key(QWidget* target, int KeyAscii);
    friend void Set_Focus(QWidget* control);
    // Puts the form's event filter on a widget and everything below it.
    void Watch_Tree(QWidget* w);
    bool Filter_Key(QWidget* w, QKeyEvent* e);
    // The focus went to `control` (a control of this form): LostFocus of the one before, GotFocus of it.
    void Focus_Moved(QWidget* control);

    bool m_loaded = false;
    bool m_unloading = false;
    bool m_inCloseEvent = false;
    bool m_inExec = false;
    // The control that has the focus as far as the pages are concerned; kept by the form itself because
    // a window that is not active (headless, or behind another) gets no focus events from the system.
    QPointer<QWidget> m_focus;
    // Counts the moves, so that Set_Focus can tell whether the system's focus event already made its move.
    int m_focusMoves = 0;
};

// The form a widget belongs to (the nearest Form among itself and its parents), or null.
Form* Form_Of(const QWidget* w);

// Sends one key (an ASCII code: 13 Enter, 27 Esc, 8 Backspace, 9 Tab, or a character) to a control as the
// user's key press: the form's KeyPress first when KeyPreview is on, then the control's handler. Returns
// the key left after them (0 when swallowed). The caller then applies the control's default action.
int Route_Key(QWidget* target, int KeyAscii);

// Applies what the key does by default to a control (insert a character into a text box, Backspace,
// Tab to the next control); used after Route_Key for keys that were not swallowed.
void Default_Key_Action(QWidget* target, int KeyAscii);

// Esc on a page that previews keys: the key is swallowed and the page's own Close runs.
inline void Close_On_Esc(int& KeyAscii, const std::function<void()>& close) {
    if (KeyAscii == 27) {
        KeyAscii = 0;
        close();
    }
}

// A control's KeyPress event; any widget can carry one.
void Set_KeyPress(QWidget* control, std::function<void(int& KeyAscii)> handler);
// GotFocus / LostFocus events of a control.
void Set_GotFocus(QWidget* control, std::function<void()> handler);
void Set_LostFocus(QWidget* control, std::function<void()> handler);
// Moves the focus to a control as a user would (its LostFocus and the new one's GotFocus run).
void Set_Focus(QWidget* control);
// What a user's mouse press does to the focus before the control acts: a control that takes the focus on
// a click (a button, an option, a list, a picker; not a label) gets it, so the LostFocus of the one before
// and its own GotFocus run ahead of its Click, ItemCheck or Change.
void Click_Focus(QWidget* control);

// The Tag of a control, menu item or any object (an empty text when never set).
QString Tag(const QObject* o);
void Set_Tag(QObject* o, const QString& tag);
// A Tag read as the whole number it holds, blanks around ignored; a blank or non-numeric Tag raises "Type
// mismatch" (13).
long Tag_Number(const QString& tag);
long Tag_Number(const QObject* o);

} // namespace hv::ui
