#pragma once
// The rows behind a ListView. Kept compact because a list may hold a million of them: rows are stored by
// column, the texts in one list (which a fill can share with its caller), one word of flags and icon
// number a row, and the rarely used rest (sub-items, tag, key, bold sub-items) only for rows that have
// any of it, reached through a second word a row that exists only once some row needs it.
//
// Rows added one by one are appended to the storage at once but announced to the views in batches, on a
// turn of the event loop or before anything that needs the views to know them. Views thus see
// rowCount() == Shown(), and all rows below it are exactly as stored. A view lays out all the rows it
// knows whenever rows are announced, so while rows keep coming a batch waits until it is half as large
// as what the views already show: a long run of Add with the event loop turning in between (an import
// that lets the interface breathe) costs the views a few layouts in all, each turn of the loop costs in
// proportion to the rows added since the last, and the last batch goes out once the rows stop coming.
#include <QAbstractTableModel>
#include <QFont>
#include <QHash>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <vector>

namespace hv::ui {

class ImageList;
class ListView;

struct ListRowExtra {
    QStringList subItems; // sub-item s at s-1
    QString tag;
    QString key;
    quint64 subBold = 0; // bit s: sub-item s is bold
};

// The flags word of a row: flags below kIconShift, the icon number above.
struct ListRow {
    static constexpr quint32 kSelected = 1;
    static constexpr quint32 kChecked = 2;
    static constexpr quint32 kBold = 4;
    static constexpr int kIconShift = 8;
};

class ListViewModel final : public QAbstractTableModel {
public:
    explicit ListViewModel(ListView* owner);

    struct Column {
        QString caption;
        int twips = 0;
    };

    // Storage, numbered from 0.
    int Size() const { return int(m_texts.size()); }
    const QString& Text(int r) const { return m_texts.at(r); }
    void Set_Text(int r, const QString& text) { m_texts[r] = text; }
    quint32 Bits(int r) const { return m_bits[size_t(r)]; }
    void Set_Icon(int r, quint32 iconNumber);
    const ListRowExtra* Extra_If(int r) const;
    ListRowExtra& Extra(int r); // made when the row has none yet
    void Append(const QString& text, quint32 iconNumber);
    void Append_All(const QStringList& texts, quint32 iconNumber);
    void Reserve(int rows) {
        m_texts.reserve(rows);
        m_bits.reserve(size_t(rows));
    }
    void Remove_Row(int r) { Remove_Rows(r, 1); }
    void Remove_Rows(int r, int count);
    void Remove_All();
    // Tells the views of rows appended since the last time.
    void Flush();
    int Shown() const { return m_shown; }

    // Flags with the count of selected rows kept in step.
    void Set_Bit(int r, quint32 bit, bool on);
    int Selected_Count() const { return m_selectedCount; }

    quint32 Icon_Number(const QString& key);
    QString Icon_Key(quint32 number) const { return m_iconKeys.value(int(number)); }

    std::vector<Column>& Columns() { return m_columns; }
    const std::vector<Column>& Columns() const { return m_columns; }
    void Add_Column(const QString& caption, int twips);

    // A cell changed: the views repaint it if they know the row.
    void Changed(int r, int col);
    void All_Changed();

    QPointer<ImageList> smallIcons, largeIcons;
    bool iconMode = false;
    bool checkboxes = false;
    QFont boldFont;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    ListView* m_owner;
    QStringList m_texts;
    std::vector<quint32> m_bits;
    std::vector<quint32> m_extraOf; // empty while no row has extras; else a slot of m_extras, 0 for none
    std::vector<std::unique_ptr<ListRowExtra>> m_extras = std::vector<std::unique_ptr<ListRowExtra>>(1);
    std::vector<quint32> m_freeExtras;
    std::vector<Column> m_columns;
    QStringList m_iconKeys{QString()};
    QHash<QString, quint32> m_iconNumbers;
    int m_shown = 0;
    int m_selectedCount = 0;
    bool m_flushPosted = false;
    QTimer m_lastBatch;

    void Post_Flush();
    void Posted_Flush();
};

} // namespace hv::ui
