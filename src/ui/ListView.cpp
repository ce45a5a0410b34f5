#include "ui/ListView.h"

#include "platform/Err.h"
#include "platform/Platform.h"
#include "ui/Controls.h"
#include "ui/ListViewModel.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QListView>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>
#include <utility>

namespace hv::ui {

// The desktop's in-place editor. Its keys belong to the edit, not to the form's key preview, and the list
// needs to know the editor to close it when code ends the edit.
class LabelEditDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (editor)
            editor->setProperty("hvNoKeyRouting", true);
        m_editor = editor;
        return editor;
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        m_committing = true;
        QStyledItemDelegate::setModelData(editor, model, index);
        m_committing = false;
    }

    mutable QPointer<QWidget> m_editor;
    mutable bool m_committing = false;
};

ListView::ListView(const QString& name, View view, QWidget* parent)
    : QWidget(parent), m_model(std::make_unique<ListViewModel>(this)) {
    setObjectName(name);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (view == Report) {
        auto* tree = new QTreeView(this);
        tree->setRootIsDecorated(false);
        tree->setItemsExpandable(false);
        tree->setUniformRowHeights(true);
        tree->setIconSize(QSize(16, 16));
        tree->header()->setStretchLastSection(false);
        tree->header()->setSectionsMovable(false);
        tree->header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        m_view = tree;
    } else {
        auto* icons = new QListView(this);
        icons->setViewMode(QListView::IconMode);
        icons->setMovement(QListView::Static);
        icons->setResizeMode(QListView::Adjust);
        icons->setWrapping(true);
        icons->setWordWrap(true);
        icons->setIconSize(QSize(32, 32));
        icons->setSpacing(6);
        m_model->iconMode = true;
        m_view = icons;
    }
    m_view->setObjectName(QStringLiteral("qt_listview_view"));
    m_view->setModel(m_model.get());
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_delegate = new LabelEditDelegate(m_view);
    m_view->setItemDelegate(m_delegate);
    m_view->setMouseTracking(true);
    m_view->viewport()->setMouseTracking(true);
    m_view->viewport()->installEventFilter(this);
    setFocusProxy(m_view);
    layout->addWidget(m_view);

    QFont bold = m_view->font();
    bold.setBold(true);
    m_model->boldFont = bold;

    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ListView::On_Selection_Changed);
    connect(m_view, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& i) { Q_EMIT ItemClick(i.row() + 1); });
    connect(m_delegate, &QAbstractItemDelegate::closeEditor, this, [this](QWidget*) {
        // The editor went away without handing back a text (Esc): the edit ends as cancelled.
        if (Label_Editing())
            Cancel_Label_Edit();
    });
    if (auto* tree = qobject_cast<QTreeView*>(m_view)) {
        connect(tree->header(), &QHeaderView::sectionResized, this, [this](int section, int, int px) {
            // A user's drag of a column border; the width then is what the screen shows.
            auto& cols = m_model->Columns();
            if (!m_settingWidth && section < int(cols.size()) &&
                Twips_To_Pixels(cols[size_t(section)].twips) != px)
                cols[size_t(section)].twips = px * kTwipsPerPixel;
        });
    }
}

ListView::~ListView() {
    // The view goes before the model it shows. The filter comes off first: the viewport's own
    // destruction sends events, and they must not reach a view that is half gone.
    QAbstractItemView* view = std::exchange(m_view, nullptr);
    view->viewport()->removeEventFilter(this);
    delete view;
}

void ListView::Set_Size_Twips(int widthTwips, int heightTwips) {
    if (widthTwips < 0 || heightTwips < 0)
        Err().Raise(errnum::InvalidPropertyValue);
    m_widthTwips = widthTwips;
    m_heightTwips = heightTwips;
    setFixedSize(sizeHint());
}

// The design size is the list's inside: its frame lies outside it, so that columns the pages measure
// against the design width fit the viewport, and a column that leaves room for the vertical scroll bar
// needs no horizontal one.
QSize ListView::sizeHint() const {
    if (m_widthTwips > 0 || m_heightTwips > 0) {
        const int frame = m_view ? 2 * m_view->frameWidth() : 0;
        return {Twips_To_Pixels(m_widthTwips) + frame, Twips_To_Pixels(m_heightTwips) + frame};
    }
    return QWidget::sizeHint();
}

int ListView::Add_Column(const QString& caption, int widthTwips) {
    if (widthTwips < 0)
        Err().Raise(errnum::InvalidPropertyValue);
    m_settingWidth = true;
    m_model->Add_Column(caption, widthTwips);
    m_settingWidth = false;
    const int col = Column_Count();
    Apply_Column_Width(col);
    return col;
}

int ListView::Column_Count() const {
    return int(m_model->Columns().size());
}

QString ListView::Column_Caption(int col) const {
    if (col < 1 || col > Column_Count())
        Err().Raise(errnum::IndexOutOfBounds);
    return m_model->Columns()[size_t(col - 1)].caption;
}

int ListView::Column_Width(int col) const {
    if (col < 1 || col > Column_Count())
        Err().Raise(errnum::IndexOutOfBounds);
    return m_model->Columns()[size_t(col - 1)].twips;
}

void ListView::Set_Column_Width(int col, int widthTwips) {
    if (col < 1 || col > Column_Count())
        Err().Raise(errnum::IndexOutOfBounds);
    if (widthTwips < 0)
        Err().Raise(errnum::InvalidPropertyValue);
    m_model->Columns()[size_t(col - 1)].twips = widthTwips;
    Apply_Column_Width(col);
}

void ListView::Apply_Column_Width(int col) {
    auto* tree = qobject_cast<QTreeView*>(m_view);
    if (!tree)
        return;
    m_settingWidth = true;
    tree->header()->resizeSection(col - 1, Twips_To_Pixels(Column_Width(col)));
    m_settingWidth = false;
}

void ListView::Set_Small_Icons(ImageList* images) {
    m_model->smallIcons = images;
    m_model->All_Changed();
}

void ListView::Set_Large_Icons(ImageList* images) {
    m_model->largeIcons = images;
    m_model->All_Changed();
}

void ListView::Set_Checkboxes(bool on) {
    m_model->checkboxes = on;
    m_model->All_Changed();
}

bool ListView::Checkboxes() const {
    return m_model->checkboxes;
}

void ListView::Set_Multi_Select(bool on) {
    m_view->setSelectionMode(on ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
}

void ListView::Set_Hide_Selection(bool on) {
    setProperty("hvHideSelection", on);
}

int ListView::Count() const {
    return m_model->Size();
}

void ListView::Check_Index(int index) const {
    if (index < 1 || index > Count())
        Err().Raise(errnum::IndexOutOfBounds);
}

int ListView::Add(const QString& text, const QString& iconKey, const QString& key) {
    if (!key.isEmpty() && Find_Key(key))
        Err().Raise(35602, QStringLiteral("Key is not unique in collection"));
    m_model->Append(text, m_model->Icon_Number(iconKey));
    const int index = Count();
    if (!key.isEmpty())
        m_model->Extra(index - 1).key = key;
    return index;
}

void ListView::Remove(int index) {
    Check_Index(index);
    if (m_editIndex == index) {
        m_editIndex = 0;
        Close_Editor();
    } else if (m_editIndex > index) {
        --m_editIndex;
    }
    m_model->Remove_Row(index - 1);
}

int ListView::Add_Row(const QString& text, QStringList subItems) {
    m_model->Append(text, 0);
    const int index = Count();
    if (!subItems.isEmpty())
        m_model->Extra(index - 1).subItems = std::move(subItems);
    return index;
}

void ListView::Remove_Range(int index, int count) {
    if (count <= 0)
        return;
    Check_Index(index);
    Check_Index(index + count - 1);
    if (m_editIndex >= index + count) {
        m_editIndex -= count;
    } else if (m_editIndex >= index) {
        m_editIndex = 0;
        Close_Editor();
    }
    m_model->Remove_Rows(index - 1, count);
}

void ListView::Clear() {
    if (m_editIndex) {
        m_editIndex = 0;
        Close_Editor();
    }
    m_model->Remove_All();
}

void ListView::Add_Many(const QStringList& texts, const QString& iconKey) {
    m_model->Append_All(texts, m_model->Icon_Number(iconKey));
}

QString ListView::Text(int index) const {
    Check_Index(index);
    return m_model->Text(index - 1);
}

void ListView::Set_Text(int index, const QString& text) {
    Check_Index(index);
    m_model->Set_Text(index - 1, text);
    m_model->Changed(index - 1, 0);
}

const QString& ListView::Text_In_Place(int index) const {
    Check_Index(index);
    return m_model->Text(index - 1);
}

const QStringList* ListView::Sub_Items_In_Place(int index) const {
    Check_Index(index);
    const ListRowExtra* extra = m_model->Extra_If(index - 1);
    return extra ? &extra->subItems : nullptr;
}

QString ListView::Sub_Item(int index, int sub) const {
    Check_Index(index);
    if (sub < 1)
        Err().Raise(errnum::InvalidPropertyValue);
    const ListRowExtra* extra = m_model->Extra_If(index - 1);
    return extra ? extra->subItems.value(sub - 1) : QString();
}

void ListView::Set_Sub_Item(int index, int sub, const QString& text) {
    Check_Index(index);
    if (sub < 1)
        Err().Raise(errnum::InvalidPropertyValue);
    QStringList& subs = m_model->Extra(index - 1).subItems;
    while (subs.size() < sub)
        subs.append(QString());
    subs[sub - 1] = text;
    m_model->Changed(index - 1, sub);
}

QString ListView::Icon_Key(int index) const {
    Check_Index(index);
    return m_model->Icon_Key(m_model->Bits(index - 1) >> ListRow::kIconShift);
}

void ListView::Set_Icon_Key(int index, const QString& key) {
    Check_Index(index);
    m_model->Set_Icon(index - 1, m_model->Icon_Number(key));
    m_model->Changed(index - 1, 0);
}

QString ListView::Tag(int index) const {
    Check_Index(index);
    const ListRowExtra* extra = m_model->Extra_If(index - 1);
    return extra ? extra->tag : QString();
}

void ListView::Set_Tag(int index, const QString& tag) {
    Check_Index(index);
    m_model->Extra(index - 1).tag = tag;
}

QString ListView::Key(int index) const {
    Check_Index(index);
    const ListRowExtra* extra = m_model->Extra_If(index - 1);
    return extra ? extra->key : QString();
}

int ListView::Find_Key(const QString& key) const {
    if (key.isEmpty())
        return 0;
    for (int r = 0; r < m_model->Size(); ++r)
        if (const ListRowExtra* extra = m_model->Extra_If(r); extra && extra->key == key)
            return r + 1;
    return 0;
}

bool ListView::Bold(int index) const {
    Check_Index(index);
    return m_model->Bits(index - 1) & ListRow::kBold;
}

void ListView::Set_Bold(int index, bool bold) {
    Check_Index(index);
    m_model->Set_Bit(index - 1, ListRow::kBold, bold);
    m_model->Changed(index - 1, 0);
}

bool ListView::Sub_Item_Bold(int index, int sub) const {
    Check_Index(index);
    if (sub < 1 || sub > 63)
        Err().Raise(errnum::InvalidPropertyValue);
    const ListRowExtra* extra = m_model->Extra_If(index - 1);
    return extra && ((extra->subBold >> sub) & 1u);
}

void ListView::Set_Sub_Item_Bold(int index, int sub, bool bold) {
    Check_Index(index);
    if (sub < 1 || sub > 63)
        Err().Raise(errnum::InvalidPropertyValue);
    quint64& mask = m_model->Extra(index - 1).subBold;
    mask = bold ? (mask | (quint64(1) << sub)) : (mask & ~(quint64(1) << sub));
    m_model->Changed(index - 1, sub);
}

bool ListView::Selected(int index) const {
    Check_Index(index);
    return m_model->Bits(index - 1) & ListRow::kSelected;
}

void ListView::Set_Selected(int index, bool selected) {
    Check_Index(index);
    m_model->Flush();
    const QModelIndex i = m_model->index(index - 1, 0);
    QItemSelectionModel::SelectionFlags how = QItemSelectionModel::Rows;
    if (!selected)
        how |= QItemSelectionModel::Deselect;
    else if (m_view->selectionMode() == QAbstractItemView::SingleSelection)
        how |= QItemSelectionModel::ClearAndSelect;
    else
        how |= QItemSelectionModel::Select;
    m_view->selectionModel()->select(i, how);
}

bool ListView::Checked(int index) const {
    Check_Index(index);
    return m_model->Bits(index - 1) & ListRow::kChecked;
}

void ListView::Set_Checked(int index, bool checked) {
    Check_Index(index);
    m_model->Set_Bit(index - 1, ListRow::kChecked, checked);
    m_model->Changed(index - 1, 0);
}

int ListView::Selected_Item() const {
    if (m_model->Selected_Count() == 0)
        return 0;
    m_model->Flush();
    const QModelIndex current = m_view->selectionModel()->currentIndex();
    if (current.isValid() && (m_model->Bits(current.row()) & ListRow::kSelected))
        return current.row() + 1;
    for (int r = 0; r < m_model->Size(); ++r)
        if (m_model->Bits(r) & ListRow::kSelected)
            return r + 1;
    return 0;
}

void ListView::Set_Selected_Item(int index) {
    m_model->Flush();
    if (index == 0) {
        m_view->selectionModel()->clear();
        return;
    }
    Check_Index(index);
    m_view->selectionModel()->setCurrentIndex(
        m_model->index(index - 1, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QString ListView::Row_Text(int index) const {
    Check_Index(index);
    QString out = Text(index);
    for (int c = 2; c <= Column_Count(); ++c)
        out += QLatin1Char('|') + Sub_Item(index, c - 1);
    return out;
}

void ListView::On_Selection_Changed(const QItemSelection& selected, const QItemSelection& deselected) {
    for (const QItemSelectionRange& range : deselected)
        for (int r = range.top(); r <= range.bottom(); ++r)
            m_model->Set_Bit(r, ListRow::kSelected, false);
    for (const QItemSelectionRange& range : selected)
        for (int r = range.top(); r <= range.bottom(); ++r)
            m_model->Set_Bit(r, ListRow::kSelected, true);
}

// ---- label edit

void ListView::Start_Label_Edit() {
    const int index = Selected_Item();
    if (index == 0)
        return;
    if (Label_Editing())
        Cancel_Label_Edit();
    int cancel = 0;
    Q_EMIT BeforeLabelEdit(cancel);
    if (cancel || index > Count())
        return;
    m_editIndex = index;
    if (platform().Interactive()) {
        m_model->Flush();
        m_view->edit(m_model->index(index - 1, 0));
    }
}

void ListView::End_Label_Edit(const QString& newText) {
    if (!Label_Editing())
        return;
    const int index = m_editIndex;
    m_editIndex = 0;
    Close_Editor();
    int cancel = 0;
    QString newString = newText;
    Q_EMIT AfterLabelEdit(cancel, newString);
    if (!cancel && index <= Count())
        Set_Text(index, newString);
}

void ListView::Cancel_Label_Edit() {
    if (!Label_Editing())
        return;
    m_editIndex = 0;
    Close_Editor();
}

void ListView::Close_Editor() {
    // While the editor hands back its text, Qt closes it itself.
    if (m_delegate->m_editor && !m_delegate->m_committing)
        Q_EMIT m_delegate->closeEditor(m_delegate->m_editor, QAbstractItemDelegate::NoHint);
}

// ---- what a mouse does

void ListView::User_Select(const std::vector<int>& rows) {
    for (int r : rows)
        Check_Index(r);
    m_model->Flush();
    QItemSelectionModel* sel = m_view->selectionModel();
    if (rows.empty()) {
        sel->clearSelection();
        return;
    }
    const bool multi = m_view->selectionMode() != QAbstractItemView::SingleSelection;
    QItemSelection selection;
    const auto first = multi ? rows.begin() : rows.end() - 1;
    for (auto it = first; it != rows.end(); ++it) {
        const QModelIndex i = m_model->index(*it - 1, 0);
        selection.select(i, i);
    }
    sel->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    sel->setCurrentIndex(m_model->index(rows.back() - 1, 0), QItemSelectionModel::NoUpdate);
}

void ListView::User_Item_Click(int index) {
    Check_Index(index);
    Set_Selected_Item(index);
    Q_EMIT ItemClick(index);
}

void ListView::User_Dbl_Click(int index) {
    User_Item_Click(index);
    Q_EMIT DblClick();
}

void ListView::User_Check(int index, bool checked) {
    Check_Index(index);
    if (Checked(index) == checked)
        return;
    m_model->Set_Bit(index - 1, ListRow::kChecked, checked);
    m_model->Changed(index - 1, 0);
    Q_EMIT ItemCheck(index);
}

int ListView::Hit_Test(const QPoint& viewportPos) const {
    m_model->Flush();
    const QModelIndex i = m_view->indexAt(viewportPos);
    return i.isValid() ? i.row() + 1 : 0;
}

QAbstractItemView* ListView::View_Widget() const {
    m_model->Flush();
    return m_view;
}

bool ListView::eventFilter(QObject* watched, QEvent* event) {
    if (m_view && watched == m_view->viewport()) {
        if (event->type() == QEvent::MouseMove) {
            Q_EMIT MouseMove(static_cast<QMouseEvent*>(event)->position().toPoint());
        } else if (event->type() == QEvent::MouseButtonDblClick) {
            // Raised after the view has taken the click, so that a handler that opens a page finds the
            // selection made and does not run inside the view's own mouse handling.
            QMetaObject::invokeMethod(
                this, [this] { Q_EMIT DblClick(); }, Qt::QueuedConnection);
        }
    }
    return QWidget::eventFilter(watched, event);
}

// ---- the pages' list helpers

ListView* Make_One_Column_List(const QString& name, const QString& caption, int widthTwips, int heightTwips,
                               QWidget* parent) {
    auto* list = new ListView(name, ListView::Report, parent);
    list->Set_Size_Twips(widthTwips, heightTwips);
    list->Add_Column(caption, widthTwips - 20);
    list->Set_Hide_Selection(false);
    return list;
}

bool Is_Text_In_ListView(const QString& text, const ListView& list) {
    const QString wanted = text.toLower();
    for (int i = 1; i <= list.Count(); ++i)
        if (list.Text(i).toLower() == wanted)
            return true;
    return false;
}

bool Is_Port_In_ListView(long port, const ListView& list) {
    const QString wanted = QString::number(port);
    bool found = false;
    for (int i = 1; i <= list.Count(); ++i)
        if (list.Sub_Item(i, 2) == wanted)
            found = true;
    return found;
}

int Find_In_Combo(const ComboBox& combo, const QString& text) {
    for (int i = 0; i < combo.List_Count(); ++i)
        if (combo.List(i) == text)
            return i;
    return 0;
}

} // namespace hv::ui
