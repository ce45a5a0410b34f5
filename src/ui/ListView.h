#pragma once
// A list view as the pages use it: report layout (columns) or icon layout, rows with text, sub-items,
// icon key, Tag, key, bold flags, Selected and Checked; multi-select; in-place label edit started by code.
// Items are numbered from 1, as the pages count them. Column widths are kept in twips and read back
// exactly as they were set. Rows live in a model of our own behind the view, so a million rows load
// and scroll smoothly.
#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>

class QAbstractItemView;
class QItemSelection;

namespace hv::ui {

class ImageList;
class ListViewModel;
class LabelEditDelegate;

class ListView final : public QWidget {
    Q_OBJECT
public:
    enum View { Report, Icons };
    ListView(const QString& name, View view, QWidget* parent);
    ~ListView() override;

    // Design size in twips; the widget is sized to it (15 twips a pixel). Width_Twips reads it back.
    void Set_Size_Twips(int widthTwips, int heightTwips);
    int Width_Twips() const { return m_widthTwips; }
    int Height_Twips() const { return m_heightTwips; }

    // Columns (1-based). A negative width raises "Invalid property value" (380).
    int Add_Column(const QString& caption, int widthTwips);
    int Column_Count() const;
    QString Column_Caption(int col) const;
    int Column_Width(int col) const;
    void Set_Column_Width(int col, int widthTwips);

    void Set_Small_Icons(ImageList* images);
    void Set_Large_Icons(ImageList* images);
    void Set_Checkboxes(bool on);
    bool Checkboxes() const;
    void Set_Multi_Select(bool on);
    void Set_Hide_Selection(bool on);

    // Items (1-based). A bad index raises "Index out of bounds" (35600), as the desktop control does.
    int Count() const;
    int Add(const QString& text, const QString& iconKey = QString(), const QString& key = QString());
    void Remove(int index);
    void Clear();
    // Many rows at once (a fill from the store): same as Add for each, without per-row overhead.
    void Add_Many(const QStringList& texts, const QString& iconKey);
    // A row with its sub-items at once (a report's result row): the same as Add and Set_Sub_Item.
    int Add_Row(const QString& text, QStringList subItems);
    // Removes `count` rows from `index` on in one go: the same as Remove(index) `count` times.
    void Remove_Range(int index, int count);
    // Room for this many rows in all, so that a long run of Add does not keep growing the storage.
    void Reserve(int rows);

    QString Text(int index) const;
    void Set_Text(int index, const QString& text);
    QString Sub_Item(int index, int sub) const; // sub 1.. for columns 2..
    // The row's text and sub-items in place, for reading every cell of a long list without copies; the
    // sub-items are null for a row that has none. Valid until the list changes.
    const QString& Text_In_Place(int index) const;
    const QStringList* Sub_Items_In_Place(int index) const;
    void Set_Sub_Item(int index, int sub, const QString& text);
    QString Icon_Key(int index) const;
    void Set_Icon_Key(int index, const QString& key);
    QString Tag(int index) const;
    void Set_Tag(int index, const QString& tag);
    QString Key(int index) const;
    int Find_Key(const QString& key) const; // 0 when none
    bool Bold(int index) const;
    void Set_Bold(int index, bool bold);
    bool Sub_Item_Bold(int index, int sub) const;
    void Set_Sub_Item_Bold(int index, int sub, bool bold);
    bool Selected(int index) const;
    void Set_Selected(int index, bool selected);
    bool Checked(int index) const;
    void Set_Checked(int index, bool checked); // from code: no ItemCheck
    // The item that has the selection mark (the current one); 0 when none.
    int Selected_Item() const;
    void Set_Selected_Item(int index); // selects it alone and makes it current
    // A row shown with every column's cell, empty ones included, joined with '|'.
    QString Row_Text(int index) const;

    // In-place label edit of the selected item. Start: BeforeLabelEdit may cancel. The edit then runs
    // (on the desktop an editor opens on the item) until it ends: End_Label_Edit gives AfterLabelEdit
    // its NewString and Cancel; a cancelled edit (Esc) keeps the old text and raises no event.
    void Start_Label_Edit();
    bool Label_Editing() const { return m_editIndex > 0; }
    void End_Label_Edit(const QString& newText);
    void Cancel_Label_Edit();

    // What a user's mouse does, for the desktop and the scenario driver alike.
    void User_Select(const std::vector<int>& rows); // exactly these rows selected, the last one current
    void User_Item_Click(int index);                // selects it alone, ItemClick
    void User_Dbl_Click(int index);                 // selects it alone, ItemClick, DblClick
    void User_Check(int index, bool checked);       // ticks or unticks, ItemCheck
    int Hit_Test(const QPoint& viewportPos) const;  // 0 when no item is there

    QAbstractItemView* View_Widget() const;
    QSize sizeHint() const override;

Q_SIGNALS:
    void ItemClick(int index);
    void ItemCheck(int index);
    void DblClick();
    void BeforeLabelEdit(int& Cancel);
    void AfterLabelEdit(int& Cancel, QString& NewString);
    void MouseMove(const QPoint& viewportPos);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class ListViewModel;
    void Check_Index(int index) const; // raises 35600 unless 1..Count
    void Apply_Column_Width(int col);
    void Close_Editor(); // closes the desktop's editor, if one is open, without an event
    void On_Selection_Changed(const QItemSelection& selected, const QItemSelection& deselected);

    std::unique_ptr<ListViewModel> m_model;
    QAbstractItemView* m_view = nullptr;
    LabelEditDelegate* m_delegate = nullptr;
    bool m_settingWidth = false;
    int m_widthTwips = 0;
    int m_heightTwips = 0;
    int m_editIndex = 0;
};

// The pages' one-column lists: a report list of its design size whose column is as wide as the list less
// its 20-twip border, and whose selection stays shown when the focus goes elsewhere.
ListView* Make_One_Column_List(const QString& name, const QString& caption, int widthTwips, int heightTwips,
                               QWidget* parent);

// The duplicate tests of the pages: they look at what a list shows.
// True at the first item whose text equals the text, both sides in lower case.
bool Is_Text_In_ListView(const QString& text, const ListView& list);
// True when sub-item 2 (the third column) of any item is the port in decimal; all rows are visited.
bool Is_Port_In_ListView(long port, const ListView& list);

class ComboBox;
// Position of the first entry exactly equal to the text (case sensitive); 0 when there is none.
int Find_In_Combo(const ComboBox& combo, const QString& text);

} // namespace hv::ui
