#pragma once
// The controls the pages are made of, with the behaviour the pages rely on:
//  - Click also runs when code changes a check box's Value, an option button's Value or a combo box's
//    ListIndex (only when the value actually changes), so the "DontSaveToDB" protocol works as written;
//  - widths and sizes that pages compute are kept in twips (15 twips a pixel) and read back exactly;
//  - a value a control refuses (a ListIndex out of range, a negative width) raises "Invalid property
//    value" (380) as a run-time failure.
// Every control's objectName is its name; a member of a control array is named "name(i)".
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>

namespace hv::ui {

inline constexpr int kTwipsPerPixel = 15;
inline int Twips_To_Pixels(int twips) {
    return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel;
}

// Names a control: objectName, and for array members "name(i)".
QString Array_Name(const QString& name, int index);

class ImageList final : public QObject {
    Q_OBJECT
public:
    explicit ImageList(const QString& name, QObject* parent);
    void Add(const QString& key, const QIcon& icon);
    QIcon Icon(const QString& key) const; // a null icon for an unknown key
    bool Has(const QString& key) const { return m_icons.contains(key); }

private:
    QMap<QString, QIcon> m_icons;
};

class CommandButton final : public QPushButton {
    Q_OBJECT
public:
    CommandButton(const QString& name, const QString& caption, QWidget* parent);
    void Set_Picture(const QIcon& icon);
Q_SIGNALS:
    void Click();
};

class CheckBox final : public QCheckBox {
    Q_OBJECT
public:
    CheckBox(const QString& name, const QString& caption, QWidget* parent);
    int Value() const;     // 0 unchecked, 1 checked, 2 grayed
    void Set_Value(int v); // runs Click when the value changes
Q_SIGNALS:
    void Click();

protected:
    void nextCheckState() override;
};

class OptionButton final : public QRadioButton {
    Q_OBJECT
public:
    OptionButton(const QString& name, const QString& caption, QWidget* parent);
    bool Value() const { return isChecked(); }
    void Set_Value(bool v); // runs Click when it becomes true
Q_SIGNALS:
    void Click();
};

// A drop-down list (Style 2) or an editable combo box (Style 0, whose typed text fires no Click).
class ComboBox final : public QComboBox {
    Q_OBJECT
public:
    enum Style { DropDownCombo = 0, DropDownList = 2 };
    ComboBox(const QString& name, Style style, QWidget* parent);
    int ListIndex() const;     // -1 also while an editable combo shows a typed text that is not its entry
    void Set_ListIndex(int i); // -1 clears; out of range raises 380; Click when it changes
    void Add_Item(const QString& text, int index = -1);
    void Remove_Item(int index);
    void Clear_Items();
    int List_Count() const { return count(); }
    QString List(int i) const { return itemText(i); }
    long Item_Data(int i) const;
    void Set_Item_Data(int i, long v);
    QString Text() const { return currentText(); }
    void Set_Text(const QString& t); // editable style only
    void User_Choose(int i);         // what a user's pick in the list does: Click, even for the same entry
Q_SIGNALS:
    void Click();
    void Change();
};

// What password boxes show for each typed character: the bullet, character 149 of the ANSI code page.
inline constexpr char16_t kPasswordBullet = 0x2022;

class TextBox final : public QLineEdit {
    Q_OBJECT
public:
    TextBox(const QString& name, QWidget* parent);
    QString Text() const { return text(); }
    void Set_Text(const QString& t); // Change runs
    int Max_Length() const { return m_maxLength; }
    void Set_Max_Length(int n); // 0: no limit
    void Set_Password_Char(QChar c);
    QChar Password_Char() const { return m_passwordChar; }
    // A multi-line box: Enter puts a line end (CR LF) into the text instead of doing nothing.
    void Set_Multi_Line(bool on) { m_multiLine = on; }
    bool Multi_Line() const { return m_multiLine; }
Q_SIGNALS:
    void Change();

protected:
    void keyPressEvent(QKeyEvent* e) override;

private:
    int m_maxLength = 0;
    QChar m_passwordChar;
    bool m_multiLine = false;
};

// A label or picture: shows text or a picture, and reports clicks.
class Label final : public QLabel {
    Q_OBJECT
public:
    Label(const QString& name, const QString& caption, QWidget* parent);
    QString Caption() const { return text(); }
    void Set_Caption(const QString& c) { setText(c); }
    void Set_Picture(const QIcon& icon, int sizePx = 32);
    void Click_As_User(); // what a mouse click does: Click
Q_SIGNALS:
    void Click();
    void DblClick();

protected:
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
};

// A status bar whose panels are labels named "name(1)", "name(2)"...; each panel also has a key.
class StatusBar final : public QWidget {
    Q_OBJECT
public:
    StatusBar(const QString& name, QWidget* parent);
    Label* Add_Panel(const QString& key, const QString& text, bool stretch = false);
    Label* Panel(int index1) const; // 1-based
    Label* Panel(const QString& key) const;
    int Panel_Count() const { return int(m_panels.size()); }
Q_SIGNALS:
    void PanelClick(int index1);

private:
    std::vector<std::pair<QString, Label*>> m_panels;
};

// A timer that fires by itself on the desktop only; the scenario driver fires it with Fire().
class Timer final : public QObject {
    Q_OBJECT
public:
    Timer(const QString& name, int intervalMs, bool enabled, QObject* parent);
    bool Enabled() const { return m_enabled; }
    void Set_Enabled(bool on);
    int Interval() const { return m_interval; }
    void Set_Interval(int ms);
    void Fire(); // runs the Timer event once, whether or not enabled
Q_SIGNALS:
    void Timer_Event();

private:
    QTimer m_timer;
    bool m_enabled;
    int m_interval;
};

// A tree whose nodes have keys.
class TreeView final : public QTreeWidget {
    Q_OBJECT
public:
    TreeView(const QString& name, QWidget* parent);
    QTreeWidgetItem* Add_Node(const QString& parentKey, const QString& key, const QString& text);
    QTreeWidgetItem* Node(const QString& key) const;
    void Clear_Nodes();
    void Click_Node(const QString& key); // selects it and runs NodeClick
Q_SIGNALS:
    void NodeClick(const QString& key);

private:
    QMap<QString, QTreeWidgetItem*> m_nodes;
};

// A date or time picker; Change runs when its value changes.
class DatePicker final : public QDateTimeEdit {
    Q_OBJECT
public:
    enum Kind { Date, Time };
    DatePicker(const QString& name, Kind kind, QWidget* parent);
    Kind Picker_Kind() const { return m_kind; }
Q_SIGNALS:
    void Change();

private:
    Kind m_kind;
};

} // namespace hv::ui
