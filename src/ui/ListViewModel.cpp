#include "ui/ListViewModel.h"

#include "ui/BusyCursor.h"
#include "ui/Controls.h"
#include "ui/ListView.h"

#include <chrono>
#include <thread>

namespace hv::ui {

namespace {
// Up to this many rows a layout costs nothing worth saving: every batch goes out at once.
constexpr int kEagerRows = 20000;
// How long the rows must have stopped coming before the last batch goes out.
constexpr int kLastBatchMs = 100;
} // namespace

ListViewModel::ListViewModel(ListView* owner) : m_owner(owner) {
    m_lastBatch.setSingleShot(true);
    m_lastBatch.setInterval(kLastBatchMs);
    connect(&m_lastBatch, &QTimer::timeout, this, [this] { Flush(); });
}

const ListRowExtra* ListViewModel::Extra_If(int r) const {
    return m_extraOf.empty() ? nullptr : m_extras[m_extraOf[size_t(r)]].get();
}

ListRowExtra& ListViewModel::Extra(int r) {
    if (m_extraOf.empty())
        m_extraOf.assign(m_texts.size(), 0);
    quint32& slot = m_extraOf[size_t(r)];
    if (slot == 0) {
        if (m_freeExtras.empty()) {
            slot = quint32(m_extras.size());
            m_extras.push_back(std::make_unique<ListRowExtra>());
        } else {
            slot = m_freeExtras.back();
            m_freeExtras.pop_back();
            m_extras[slot] = std::make_unique<ListRowExtra>();
        }
    }
    return *m_extras[slot];
}

void ListViewModel::Set_Icon(int r, quint32 iconNumber) {
    quint32& bits = m_bits[size_t(r)];
    bits = (bits & ((1u << ListRow::kIconShift) - 1)) | (iconNumber << ListRow::kIconShift);
}

void ListViewModel::Post_Flush() {
    if (m_flushPosted)
        return;
    m_flushPosted = true;
    QMetaObject::invokeMethod(
        this, [this] { Posted_Flush(); }, Qt::QueuedConnection);
}

void ListViewModel::Posted_Flush() {
    m_flushPosted = false;
    const int waiting = Size() - m_shown;
    if (waiting <= 0)
        return;
    if (m_shown < kEagerRows || waiting >= m_shown / 2) {
        Flush();
        return;
    }
    m_lastBatch.start();
}

void ListViewModel::Append(const QString& text, quint32 iconNumber) {
    // A row is added to all of its columns or to none: memory running out half way through an import
    // must leave a list that can still be shown.
    m_bits.push_back(iconNumber << ListRow::kIconShift);
    try {
        if (!m_extraOf.empty())
            m_extraOf.push_back(0);
        m_texts.append(text);
    } catch (...) {
        m_bits.pop_back();
        if (m_extraOf.size() > m_bits.size())
            m_extraOf.pop_back();
        throw;
    }
    Post_Flush();
}

void ListViewModel::Append_All(const QStringList& texts, quint32 iconNumber) {
    if (m_texts.isEmpty())
        m_texts = texts; // shared with the caller's list until one of them changes
    else
        m_texts.append(texts);
    m_bits.resize(size_t(m_texts.size()), iconNumber << ListRow::kIconShift);
    if (!m_extraOf.empty())
        m_extraOf.resize(size_t(m_texts.size()), 0);
    Flush();
}

void ListViewModel::Flush() {
    m_lastBatch.stop();
    const int size = Size();
    if (size <= m_shown)
        return;
    beginInsertRows(QModelIndex(), m_shown, size - 1);
    m_shown = size;
    endInsertRows();
}

namespace {

// Rows taken out of a long list, freed on a thread of their own: a million rows' texts take a noticeable
// part of a second to free, which the user need not wait for.
struct RemovedRows {
    QStringList texts;
    std::vector<std::unique_ptr<ListRowExtra>> extras;
};
constexpr int kFreeAsideFrom = 10000;

} // namespace

void ListViewModel::Remove_Rows(int r, int count) {
    Flush();
    beginRemoveRows(QModelIndex(), r, r + count - 1);
    auto removed = std::make_unique<RemovedRows>();
    const bool aside = count >= kFreeAsideFrom;
    for (int i = r; i < r + count; ++i) {
        if (m_bits[size_t(i)] & ListRow::kSelected)
            --m_selectedCount;
        if (!m_extraOf.empty()) {
            if (const quint32 slot = m_extraOf[size_t(i)]) {
                if (aside)
                    removed->extras.push_back(std::move(m_extras[slot]));
                m_extras[slot].reset();
                m_freeExtras.push_back(slot);
            }
        }
    }
    if (aside && r + count == Size()) {
        QStringList kept = m_texts.first(r);
        removed->texts = std::move(m_texts);
        m_texts = std::move(kept);
    } else {
        m_texts.remove(r, count);
    }
    m_bits.erase(m_bits.begin() + r, m_bits.begin() + r + count);
    if (!m_extraOf.empty())
        m_extraOf.erase(m_extraOf.begin() + r, m_extraOf.begin() + r + count);
    m_shown = Size();
    endRemoveRows();
    if (aside)
        std::thread([rows = std::move(removed)]() mutable {
            // Freeing competes for memory with whatever long work removed the rows (a delete in the store
            // runs next): it waits until that work is over.
            while (BusyCursor::Active())
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
            rows.reset();
        }).detach();
}

void ListViewModel::Remove_All() {
    Flush();
    // Rows are removed rather than the model reset: a reset would also reset the header's column widths.
    if (m_texts.isEmpty())
        return;
    beginRemoveRows(QModelIndex(), 0, Size() - 1);
    m_texts = QStringList();
    m_bits = {};
    m_extraOf = {};
    m_extras.resize(1);
    m_freeExtras = {};
    m_shown = 0;
    m_selectedCount = 0;
    endRemoveRows();
}

void ListViewModel::Set_Bit(int r, quint32 bit, bool on) {
    quint32& bits = m_bits[size_t(r)];
    if (bool(bits & bit) == on)
        return;
    bits ^= bit;
    if (bit == ListRow::kSelected)
        m_selectedCount += on ? 1 : -1;
}

quint32 ListViewModel::Icon_Number(const QString& key) {
    if (key.isEmpty())
        return 0;
    auto it = m_iconNumbers.constFind(key);
    if (it != m_iconNumbers.constEnd())
        return *it;
    const auto number = quint32(m_iconKeys.size());
    m_iconKeys.append(key);
    m_iconNumbers.insert(key, number);
    return number;
}

void ListViewModel::Add_Column(const QString& caption, int twips) {
    // The model always has one column so that an icon view without columns shows its items.
    if (m_columns.empty()) {
        m_columns.push_back({caption, twips});
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, 0);
        return;
    }
    const int col = int(m_columns.size());
    beginInsertColumns(QModelIndex(), col, col);
    m_columns.push_back({caption, twips});
    endInsertColumns();
}

void ListViewModel::Changed(int r, int col) {
    if (r < m_shown && col < columnCount()) {
        const QModelIndex i = index(r, col);
        Q_EMIT dataChanged(i, i);
    }
}

void ListViewModel::All_Changed() {
    if (m_shown > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_shown - 1, columnCount() - 1));
}

int ListViewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shown;
}

int ListViewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(1, int(m_columns.size()));
}

QVariant ListViewModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_shown)
        return {};
    const int r = index.row();
    const int col = index.column();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (col == 0)
            return m_texts.at(r);
        if (const ListRowExtra* extra = Extra_If(r))
            return extra->subItems.value(col - 1);
        return QString();
    case Qt::DecorationRole: {
        const quint32 icon = m_bits[size_t(r)] >> ListRow::kIconShift;
        ImageList* images = iconMode ? largeIcons.data() : smallIcons.data();
        if (col != 0 || icon == 0 || !images)
            return {};
        return images->Icon(m_iconKeys.value(int(icon)));
    }
    case Qt::FontRole: {
        bool bold = false;
        if (col == 0)
            bold = m_bits[size_t(r)] & ListRow::kBold;
        else if (const ListRowExtra* extra = Extra_If(r); extra && col < 64)
            bold = (extra->subBold >> col) & 1u;
        return bold ? QVariant(boldFont) : QVariant();
    }
    case Qt::CheckStateRole:
        if (col == 0 && checkboxes)
            return (m_bits[size_t(r)] & ListRow::kChecked) ? Qt::Checked : Qt::Unchecked;
        return {};
    default:
        return {};
    }
}

QVariant ListViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < int(m_columns.size()))
        return m_columns[size_t(section)].caption;
    return {};
}

Qt::ItemFlags ListViewModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == 0) {
        if (checkboxes)
            f |= Qt::ItemIsUserCheckable;
        if (index.row() + 1 == m_owner->m_editIndex)
            f |= Qt::ItemIsEditable;
    }
    return f;
}

// What the desktop's editor and check box hand back goes through the list's own user operations.
bool ListViewModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || index.column() != 0 || index.row() >= m_shown)
        return false;
    if (role == Qt::CheckStateRole) {
        m_owner->User_Check(index.row() + 1, value.toInt() == Qt::Checked);
        return true;
    }
    if (role == Qt::EditRole && index.row() + 1 == m_owner->m_editIndex) {
        m_owner->End_Label_Edit(value.toString());
        return true;
    }
    return false;
}

} // namespace hv::ui
