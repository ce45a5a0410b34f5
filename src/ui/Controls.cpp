#include "ui/Controls.h"

#include "platform/Err.h"
#include "platform/Platform.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>

namespace hv::ui {

QString Array_Name(const QString& name, int index) {
    return name + QLatin1Char('(') + QString::number(index) + QLatin1Char(')');
}

// ---- ImageList

ImageList::ImageList(const QString& name, QObject* parent) : QObject(parent) {
    setObjectName(name);
}

void ImageList::Add(const QString& key, const QIcon& icon) {
    m_icons.insert(key, icon);
}

QIcon ImageList::Icon(const QString& key) const {
    return m_icons.value(key);
}

// ---- CommandButton

CommandButton::CommandButton(const QString& name, const QString& caption, QWidget* parent)
    : QPushButton(caption, parent) {
    setObjectName(name);
    // Enter is the pages' own business (they act on it in KeyPress); no button takes it by default.
    setAutoDefault(false);
    setDefault(false);
    connect(this, &QPushButton::clicked, this, [this] { Q_EMIT Click(); });
}

void CommandButton::Set_Picture(const QIcon& icon) {
    setIcon(icon);
}

// ---- CheckBox

CheckBox::CheckBox(const QString& name, const QString& caption, QWidget* parent)
    : QCheckBox(caption, parent) {
    setObjectName(name);
    // One source of Click for the user's clicks and for code alike: the change of the state.
    connect(this, &QCheckBox::stateChanged, this, [this](int) { Q_EMIT Click(); });
}

int CheckBox::Value() const {
    switch (checkState()) {
    case Qt::Checked:
        return 1;
    case Qt::PartiallyChecked:
        return 2;
    default:
        return 0;
    }
}

void CheckBox::Set_Value(int v) {
    if (v < 0 || v > 2)
        Err().Raise(errnum::InvalidPropertyValue);
    if (v == Value())
        return;
    setCheckState(v == 1 ? Qt::Checked : v == 2 ? Qt::PartiallyChecked : Qt::Unchecked);
}

void CheckBox::nextCheckState() {
    // A user's click toggles between unchecked and checked; a grayed box becomes checked.
    setCheckState(checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

// ---- OptionButton

OptionButton::OptionButton(const QString& name, const QString& caption, QWidget* parent)
    : QRadioButton(caption, parent) {
    setObjectName(name);
    connect(this, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            Q_EMIT Click();
    });
}

void OptionButton::Set_Value(bool v) {
    if (v == isChecked())
        return;
    if (v) {
        setChecked(true);
        return;
    }
    // A checked button of an exclusive group refuses to uncheck itself; code may still clear it.
    const bool exclusive = autoExclusive();
    setAutoExclusive(false);
    setChecked(false);
    setAutoExclusive(exclusive);
}

// ---- ComboBox

ComboBox::ComboBox(const QString& name, Style style, QWidget* parent) : QComboBox(parent) {
    setObjectName(name);
    setEditable(style == DropDownCombo);
    setInsertPolicy(QComboBox::NoInsert);
    connect(this, &QComboBox::activated, this, [this](int) { Q_EMIT Click(); });
    if (style == DropDownCombo)
        connect(this, &QComboBox::editTextChanged, this, [this](const QString&) { Q_EMIT Change(); });
}

int ComboBox::ListIndex() const {
    // Typing in an editable combo leaves the list without a selected entry, as on the desktop.
    if (isEditable() && currentIndex() >= 0 && currentText() != itemText(currentIndex()))
        return -1;
    return currentIndex();
}

void ComboBox::Set_ListIndex(int i) {
    if (i < -1 || i >= count())
        Err().Raise(errnum::InvalidPropertyValue);
    if (i == ListIndex())
        return;
    // Also where the entry was selected under a typed text: the entry's text comes back.
    setCurrentIndex(i);
    Q_EMIT Click();
}

void ComboBox::Add_Item(const QString& text, int index) {
    if (index > count())
        Err().Raise(errnum::InvalidProcedureCall);
    // A list that had no selection keeps none: adding entries does not pick the first one.
    const int before = currentIndex();
    const QSignalBlocker block(this);
    insertItem(index < 0 ? count() : index, text);
    if (before < 0 && currentIndex() >= 0) {
        setCurrentIndex(-1);
        if (isEditable())
            setEditText(QString());
    }
}

void ComboBox::Remove_Item(int index) {
    if (index < 0 || index >= count())
        Err().Raise(errnum::InvalidProcedureCall);
    // Removing the selected entry leaves the list without a selection.
    const bool wasCurrent = index == currentIndex();
    const QSignalBlocker block(this);
    removeItem(index);
    if (wasCurrent)
        setCurrentIndex(-1);
}

void ComboBox::User_Choose(int i) {
    if (i < 0 || i >= count())
        Err().Raise(errnum::InvalidPropertyValue);
    setCurrentIndex(i);
    Q_EMIT Click();
}

void ComboBox::Clear_Items() {
    const QSignalBlocker block(this);
    clear();
}

long ComboBox::Item_Data(int i) const {
    if (i < 0 || i >= count())
        Err().Raise(381, QStringLiteral("Invalid property array index"));
    return long(itemData(i).toLongLong());
}

void ComboBox::Set_Item_Data(int i, long v) {
    if (i < 0 || i >= count())
        Err().Raise(381, QStringLiteral("Invalid property array index"));
    setItemData(i, qlonglong(v));
}

void ComboBox::Set_Text(const QString& t) {
    if (isEditable()) {
        setEditText(t);
        return;
    }
    // A drop-down list can only show one of its entries.
    const int i = findText(t, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (i < 0)
        Err().Raise(383, QStringLiteral("'Text' property is read-only"));
    Set_ListIndex(i);
}

// ---- TextBox

TextBox::TextBox(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(name);
    connect(this, &QLineEdit::textChanged, this, [this](const QString&) { Q_EMIT Change(); });
}

void TextBox::Set_Text(const QString& t) {
    setText(t);
}

void TextBox::Set_Max_Length(int n) {
    if (n < 0)
        Err().Raise(errnum::InvalidPropertyValue);
    m_maxLength = n;
}

void TextBox::Set_Password_Char(QChar c) {
    m_passwordChar = c;
    setEchoMode(c.isNull() ? QLineEdit::Normal : QLineEdit::Password);
}

void TextBox::keyPressEvent(QKeyEvent* e) {
    if (m_multiLine && (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter)) {
        insert(QStringLiteral("\r\n"));
        return;
    }
    // The maximum length holds what the user types; text set by code may be longer.
    const QString typed = e->text();
    if (m_maxLength > 0 && !typed.isEmpty() && typed.at(0).isPrint() &&
        text().size() - selectedText().size() + typed.size() > m_maxLength)
        return;
    QLineEdit::keyPressEvent(e);
}

// ---- Label

Label::Label(const QString& name, const QString& caption, QWidget* parent) : QLabel(caption, parent) {
    setObjectName(name);
}

void Label::Set_Picture(const QIcon& icon, int sizePx) {
    setPixmap(icon.pixmap(sizePx, sizePx));
}

void Label::Click_As_User() {
    Q_EMIT Click();
}

void Label::mouseReleaseEvent(QMouseEvent* e) {
    QLabel::mouseReleaseEvent(e);
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()))
        Q_EMIT Click();
}

void Label::mouseDoubleClickEvent(QMouseEvent* e) {
    QLabel::mouseDoubleClickEvent(e);
    if (e->button() == Qt::LeftButton)
        Q_EMIT DblClick();
}

// ---- StatusBar

StatusBar::StatusBar(const QString& name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 1, 2, 1);
    layout->setSpacing(2);
}

Label* StatusBar::Add_Panel(const QString& key, const QString& text, bool stretch) {
    const int index1 = int(m_panels.size()) + 1;
    auto* panel = new Label(Array_Name(objectName(), index1), text, this);
    panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    static_cast<QHBoxLayout*>(layout())->addWidget(panel, stretch ? 1 : 0);
    m_panels.emplace_back(key, panel);
    connect(panel, &Label::Click, this, [this, index1] { Q_EMIT PanelClick(index1); });
    return panel;
}

Label* StatusBar::Panel(int index1) const {
    if (index1 < 1 || index1 > int(m_panels.size()))
        Err().Raise(errnum::IndexOutOfBounds);
    return m_panels[size_t(index1 - 1)].second;
}

Label* StatusBar::Panel(const QString& key) const {
    for (const auto& [k, panel] : m_panels)
        if (k == key)
            return panel;
    Err().Raise(errnum::IndexOutOfBounds);
}

// ---- Timer

Timer::Timer(const QString& name, int intervalMs, bool enabled, QObject* parent)
    : QObject(parent), m_enabled(enabled), m_interval(intervalMs) {
    setObjectName(name);
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { Q_EMIT Timer_Event(); });
    Set_Enabled(enabled);
}

void Timer::Set_Enabled(bool on) {
    m_enabled = on;
    // Only the desktop lets time run by itself; the scenario driver fires timers on demand.
    if (on && m_interval > 0 && platform().Interactive())
        m_timer.start();
    else
        m_timer.stop();
}

void Timer::Set_Interval(int ms) {
    if (ms < 0)
        Err().Raise(errnum::InvalidPropertyValue);
    m_interval = ms;
    m_timer.setInterval(ms);
    Set_Enabled(m_enabled);
}

void Timer::Fire() {
    Q_EMIT Timer_Event();
}

// ---- TreeView

TreeView::TreeView(const QString& name, QWidget* parent) : QTreeWidget(parent) {
    setObjectName(name);
    setHeaderHidden(true);
    setColumnCount(1);
    connect(this, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item, int) { Q_EMIT NodeClick(item->data(0, Qt::UserRole).toString()); });
}

QTreeWidgetItem* TreeView::Add_Node(const QString& parentKey, const QString& key, const QString& text) {
    if (!key.isEmpty() && m_nodes.contains(key))
        Err().Raise(35602, QStringLiteral("Key is not unique in collection"));
    QTreeWidgetItem* parent = nullptr;
    if (!parentKey.isEmpty()) {
        parent = m_nodes.value(parentKey);
        if (!parent)
            Err().Raise(35601, QStringLiteral("Element not found"));
    }
    auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
    item->setText(0, text);
    item->setData(0, Qt::UserRole, key);
    if (!key.isEmpty())
        m_nodes.insert(key, item);
    if (parent)
        parent->setExpanded(true);
    return item;
}

QTreeWidgetItem* TreeView::Node(const QString& key) const {
    return m_nodes.value(key);
}

void TreeView::Clear_Nodes() {
    m_nodes.clear();
    clear();
}

void TreeView::Click_Node(const QString& key) {
    QTreeWidgetItem* item = m_nodes.value(key);
    if (!item)
        Err().Raise(35601, QStringLiteral("Element not found"));
    setCurrentItem(item);
    Q_EMIT NodeClick(key);
}

// ---- DatePicker

DatePicker::DatePicker(const QString& name, Kind kind, QWidget* parent)
    : QDateTimeEdit(parent), m_kind(kind) {
    setObjectName(name);
    if (kind == Date) {
        setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        setCalendarPopup(true);
    } else {
        setDisplayFormat(QStringLiteral("HH:mm"));
    }
    connect(this, &QDateTimeEdit::dateTimeChanged, this, [this](const QDateTime&) { Q_EMIT Change(); });
}

} // namespace hv::ui
