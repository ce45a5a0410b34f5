#pragma once
// What the rule list pages (website, file, email, port, EXE and window) have in common: the page's frame
// of life (Esc closes, the enable check box with its confirmation and its "DontSaveToDB" tag, read-only in
// Remote Mode), and one RuleList for each list on a page, which does Add, in-place Edit, Remove, the fill
// from the store, Export, Import and Copy Settings by the list's description.
#include "filters/model/RuleLists.h"
#include "store/modDB.h"
#include "ui/CommonDialog.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"
#include "ui/PageSwitches.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <functional>
#include <initializer_list>
#include <vector>

namespace hv {

// Removes the selected rows of a list from the store and the list in one transaction, after the
// question. The row's key is its text (keySubItem 0) or one of its sub-items. When the transaction does
// not reach the store, `reload` puts back the list as the store has it.
void Remove_Selected_Rows(ui::ListView* list, const QString& question, const char* table, const char* column,
                          int keySubItem, const ColumnAllowance& allowance, std::function<void()> reload);

class RuleList final {
public:
    RuleList(const RuleListSpec& spec, ui::TextBox* text, ui::ListView* list, CommonDialog* dialog);

    // A list the duplicate test looks in, with what Add and Edit say when the text is found there.
    struct Duplicate {
        const ui::ListView* list;
        QString addMessage;
        QString editMessage;
    };

    const RuleListSpec& spec;
    ui::TextBox* txt;
    ui::ListView* lvw;
    CommonDialog* dlg;
    ColumnAllowance allowance;
    // By default the list's own rows with the list's words; the website page looks in both of its lists.
    std::vector<Duplicate> duplicates;
    // The black list's Add gives up without a connection, before it even wipes the text box.
    bool addNeedsConnection = false;
    // The website page disables its controls while it imports and lets the interface breathe.
    std::function<void(bool)> enableAll;
    bool yieldWhileImporting = false;

    void Init_Column(); // the column: the list's width less 20
    void Load_List();
    // The list as the store has it, its column as at load: what follows a batch that did not commit.
    void Reload();
    void Add();
    void Edit();
    void After_Label_Edit(int& Cancel, QString& NewString);
    void Remove();
    void Export();
    void Import();
    void Copy_Settings();
    // Adds a row as the store took it: the allowance first, then the row with the list's icon.
    void Add_Row(const QString& text);

private:
    const Duplicate* Find_Duplicate(const QString& text) const;
    void Import_File(StoreBatch& batch);
};

// The base of the six pages.
class RuleListPage : public ui::Form {
    Q_OBJECT
public:
    explicit RuleListPage(const QString& formName);

    ui::CommandButton* cmdClose = nullptr;
    virtual void cmdClose_Click();

protected:
    void Form_KeyPress(int& KeyAscii) override;

    // The enable check box's click: ask, then set or clear the bit, or put the box back silently.
    void Enable_Click(ui::CheckBox* box, const QString& featureWords, long bit);
    // Sets a check box from code without saving anything.
    static void Check_Silently(ui::CheckBox* box, int value);
    static void Enable_Unless_Remote(std::initializer_list<QWidget*> controls);

    // Building blocks of the pages' layouts.
    ui::ImageList* Make_Image_List(const QString& name, const QStringList& listIconKeys);
    static ui::ListView* Make_List(const QString& name, const RuleListSpec& spec, QWidget* parent);

    // A list's frame in the shape the pages share; the page names every control.
    struct PanelNames {
        const char* frame;
        const char* label;
        const char* text;
        const char* add;
        const char* edit;
        const char* remove;
        const char* importButton; // null on pages without
        const char* exportButton;
        const char* copySettings;
        const char* list;
    };
    struct Panel {
        QGroupBox* frame = nullptr;
        ui::Label* label = nullptr;
        ui::TextBox* txt = nullptr;
        ui::CommandButton* add = nullptr;
        ui::CommandButton* edit = nullptr;
        ui::CommandButton* remove = nullptr;
        ui::CommandButton* importButton = nullptr;
        ui::CommandButton* exportButton = nullptr;
        ui::CommandButton* copySettings = nullptr;
        ui::ListView* lvw = nullptr;
        QHBoxLayout* extraButtons = nullptr; // room for a page's own button beside the text box
    };
    // The pictures of a panel's Import, Export and Copy Settings buttons.
    static void Load_Panel_Pictures(const Panel& panel, ui::ImageList* images);
    // With a container name, the frame's controls stand on a picture box of that name inside the frame.
    Panel Build_Panel(const PanelNames& names, const QString& frameCaption, const QString& labelCaption,
                      const RuleListSpec& spec, ui::ImageList* images, QWidget* parent,
                      const char* containerName = nullptr);
    // Wires a panel's controls to its list: Enter in the text box adds, the buttons and the list's
    // after-label-edit event run the list's operations.
    void Wire_Panel(const Panel& panel, RuleList& list);
};

} // namespace hv
