#include "filters/frmRuleListPage.h"

#include "core/ListFile.h"
#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"
#include "ui/Forms.h"
#include "ui/Session.h"

#include <QApplication>
#include <QFrame>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <climits>
#include <optional>
#include <utility>

namespace hv {

// ---- removing rows ---------------------------------------------------------------------------------------

void Remove_Selected_Rows(ui::ListView* list, const QString& question, const char* table, const char* column,
                          int keySubItem, const ColumnAllowance& allowance, std::function<void()> reload) {
    if (list->Count() == 0)
        return;
    if (MsgBox(question, MsgStyle::Question, MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    StoreBatch batch(std::move(reload));
    try {
        batch.Open();
        const Subject subject = Current_Subject();
        // The count shrinks as rows go, and the index steps back so the row that moves up is not skipped.
        int count = list->Count();
        for (int i = 1; i <= count; ++i) {
            if (!list->Selected(i))
                continue;
            const QString key = keySubItem == 0 ? list->Text(i) : list->Sub_Item(i, keySubItem);
            if (Remove_List_Item(batch.Handle(), batch.result, QLatin1String(column), QLatin1String(table),
                                 key, subject.computerId, subject.userId)) {
                list->Remove(i);
                --i;
                --count;
                allowance.After_Remove();
            }
        }
    } catch (...) {
        Report_Failure();
    }
}

// ---- one list ------------------------------------------------------------------------------------------

RuleList::RuleList(const RuleListSpec& s, ui::TextBox* text, ui::ListView* list, CommonDialog* dialog)
    : spec(s), txt(text), lvw(list), dlg(dialog) {
    allowance =
        ColumnAllowance{.list = list, .column = 1, .limit = s.limit, .cumulative = s.cumulativeAllowance};
    duplicates.push_back(Duplicate{list, s.words.addExists, s.words.editExists});
}

void RuleList::Init_Column() {
    ColumnAllowance::Fill_Width(lvw);
}

void RuleList::Load_List() {
    try {
        const Subject subject = Current_Subject();
        ResultTable table;
        long rows = 0;
        if (!Get_List_Items(QLatin1String(spec.column), QLatin1String(spec.table), subject.computerId,
                            subject.userId, table, rows))
            return;
        QStringList texts;
        texts.reserve(rows);
        for (long i = 1; i <= rows; ++i)
            texts.append(table.Text(int(i), 0));
        lvw->Add_Many(texts, spec.iconKey);
    } catch (...) {
        Report_Failure();
    }
}

void RuleList::Reload() {
    lvw->Clear();
    Init_Column();
    Load_List();
    allowance.After_Load();
}

const RuleList::Duplicate* RuleList::Find_Duplicate(const QString& text) const {
    for (const Duplicate& d : duplicates)
        if (Is_Text_In_ListView(text, *d.list))
            return &d;
    return nullptr;
}

void RuleList::Add_Row(const QString& text) {
    allowance.Before_Add(lvw->Count());
    lvw->Add(text, spec.iconKey);
}

void RuleList::Add() {
    StoreBatch batch([this] { Reload(); });
    try {
        const QString text = Prepare_Add_Text(txt->Text(), spec.addText);
        if (!(batch.Open() == 0 && addNeedsConnection)) {
            const Duplicate* found = nullptr;
            if (!spec.check(text)) {
                MsgBox(spec.words.addInvalid, MsgStyle::Exclamation);
            } else if ((found = Find_Duplicate(text))) {
                MsgBox(found->addMessage, MsgStyle::Exclamation);
            } else {
                const Subject subject = Current_Subject();
                if (Add_List_Item(batch.Handle(), batch.result, QLatin1String(spec.column),
                                  QLatin1String(spec.table), text, subject.computerId, subject.userId))
                    Add_Row(text);
            }
            // A refused entry is wiped as well: the box is left empty on every path.
            txt->Set_Text(QString());
            ui::Set_Focus(txt);
        }
    } catch (...) {
        Report_Failure();
    }
}

void RuleList::Edit() {
    if (lvw->Selected_Item() == 0)
        return;
    ui::Set_Focus(lvw);
    lvw->Start_Label_Edit();
}

void RuleList::After_Label_Edit(int& Cancel, QString& NewString) {
    try {
        NewString = Trim_Blanks(NewString).toLower();
        const int selected = lvw->Selected_Item();
        const QString oldText = lvw->Text(selected);
        if (oldText.toLower() == NewString.toLower()) {
            Cancel = 1;
            return;
        }
        if (!spec.check(NewString)) {
            MsgBox(spec.words.editInvalid, MsgStyle::Exclamation);
            Cancel = 1;
            return;
        }
        if (const Duplicate* found = Find_Duplicate(NewString)) {
            MsgBox(found->editMessage, MsgStyle::Exclamation);
            Cancel = 1;
            return;
        }
        const Subject subject = Current_Subject();
        // The list shows the new text whatever the store made of it.
        Update_List_Item(QLatin1String(spec.column), QLatin1String(spec.table), oldText, NewString,
                         subject.computerId, subject.userId);
    } catch (...) {
        Report_Failure();
    }
}

void RuleList::Remove() {
    Remove_Selected_Rows(lvw, spec.words.deleteQuestion, spec.table, spec.column, 0, allowance,
                         [this] { Reload(); });
}

void RuleList::Export() {
    if (lvw->Count() == 0) {
        MsgBox(QLatin1String(kNothingToExport), MsgStyle::Exclamation);
        return;
    }
    try {
        const Subject subject = Current_Subject();
        QString userName;
        if (!Get_User_Name(subject.computerId, subject.userId, userName))
            return;
        dlg->DialogTitle = spec.words.exportTitle;
        dlg->FileName = userName + spec.words.defaultSuffix;
        dlg->Filter = QLatin1String(kListFileFilter);
        dlg->ShowSave();
        // A Cancel is not told apart: the default name, without folder or extension, is written then.
        if (!dlg->CancelError) {
            QStringList items;
            items.reserve(lvw->Count());
            for (int i = 1; i <= lvw->Count(); ++i)
                items.append(lvw->Text(i));
            Write_List_File(dlg->FileName, items);
        }
    } catch (...) {
        Report_Failure();
    }
}

void RuleList::Import() {
    if (enableAll)
        enableAll(false);
    StoreBatch batch([this] { Reload(); });
    try {
        const Subject subject = Current_Subject();
        QString userName;
        if (Get_User_Name(subject.computerId, subject.userId, userName)) {
            dlg->DialogTitle = spec.words.importTitle;
            dlg->Filter = QLatin1String(kListFileFilter);
            // The file name is left as the dialog holds it, so a Cancel imports the earlier file again.
            dlg->ShowOpen();
            if (!dlg->FileName.isEmpty() && !dlg->CancelError)
                Import_File(batch);
        }
    } catch (...) {
        Report_Failure();
    }
    batch.Close();
    if (enableAll)
        enableAll(true);
}

namespace {

// The page's caption tells how far a long import has come, by the file's bytes read against its size,
// and is given back as it was when the import ends, however it ends.
class ImportProgress final {
public:
    ImportProgress(QWidget* page, qint64 fileSize)
        : m_page(page), m_caption(page->windowTitle()), m_size(fileSize) {}
    ~ImportProgress() {
        if (m_percent >= 0)
            m_page->setWindowTitle(m_caption);
    }
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;

    void Show(qint64 bytesRead) {
        const int percent = m_size > 0 ? int(std::clamp<qint64>(bytesRead * 100 / m_size, 0, 100)) : 100;
        if (percent == m_percent)
            return;
        m_percent = percent;
        m_page->setWindowTitle(m_caption + QStringLiteral(" - Importing %1%").arg(percent));
    }

private:
    QWidget* m_page;
    QString m_caption;
    qint64 m_size;
    int m_percent = -1;
};

} // namespace

void RuleList::Import_File(StoreBatch& batch) {
    batch.Open();
    ListFileInput file(dlg->FileName);
    ListFieldReader& reader = file.Reader();
    ImportProgress progress(lvw->window(), file.Size());
    const Subject subject = Current_Subject();
    const QString column = QLatin1String(spec.column);
    const QString table = QLatin1String(spec.table);

    while (!reader.Eof()) {
        // The website page lets the interface breathe every 500 rows, its controls disabled meanwhile.
        if (yieldWhileImporting && lvw->Count() % 500 == 0) {
            progress.Show(reader.Bytes_Read());
            platform().Do_Events();
        }
        const std::optional<QString> text = Import_Rule(reader.Next_Field(), spec);
        if (!text)
            continue;
        if (!Add_List_Item(batch.Handle(), batch.result, column, table, *text, subject.computerId,
                           subject.userId))
            continue;
        Add_Row(*text);
    }
    batch.Close();
}

void RuleList::Copy_Settings() {
    Show_Page(QStringLiteral("frmCopySettings"), spec.words.copySettingsName);
}

// ---- the page --------------------------------------------------------------------------------------------

RuleListPage::RuleListPage(const QString& formName) : ui::Form(formName) {
    KeyPreview = true;
}

void RuleListPage::cmdClose_Click() {
    Unload();
}

void RuleListPage::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

void RuleListPage::Check_Silently(ui::CheckBox* box, int value) {
    ui::Check_Silently(box, value);
}

void RuleListPage::Enable_Click(ui::CheckBox* box, const QString& featureWords, long bit) {
    ui::Enable_Feature_Click(box, featureWords, bit);
}

void RuleListPage::Enable_Unless_Remote(std::initializer_list<QWidget*> controls) {
    ui::Enable_Unless_Remote(controls);
}

ui::ImageList* RuleListPage::Make_Image_List(const QString& name, const QStringList& listIconKeys) {
    auto* images = new ui::ImageList(name, this);
    QStyle* style = QApplication::style();
    images->Add(QStringLiteral("Import"), style->standardIcon(QStyle::SP_DialogOpenButton));
    images->Add(QStringLiteral("Export"), style->standardIcon(QStyle::SP_DialogSaveButton));
    images->Add(QStringLiteral("Copy Settings"), style->standardIcon(QStyle::SP_FileDialogContentsView));
    for (const QString& key : listIconKeys)
        images->Add(key, style->standardIcon(QStyle::SP_FileIcon));
    return images;
}

void RuleListPage::Load_Panel_Pictures(const Panel& p, ui::ImageList* images) {
    if (p.importButton)
        p.importButton->Set_Picture(images->Icon(QStringLiteral("Import")));
    if (p.exportButton)
        p.exportButton->Set_Picture(images->Icon(QStringLiteral("Export")));
    p.copySettings->Set_Picture(images->Icon(QStringLiteral("Copy Settings")));
}

ui::ListView* RuleListPage::Make_List(const QString& name, const RuleListSpec& spec, QWidget* parent) {
    ui::ListView* list =
        ui::Make_One_Column_List(name, spec.columnCaption, spec.widthTwips, spec.heightTwips, parent);
    list->Set_Multi_Select(true);
    return list;
}

RuleListPage::Panel RuleListPage::Build_Panel(const PanelNames& n, const QString& frameCaption,
                                              const QString& labelCaption, const RuleListSpec& spec,
                                              ui::ImageList* images, QWidget* parent,
                                              const char* containerName) {
    Panel p;
    p.frame = new QGroupBox(frameCaption, parent);
    p.frame->setObjectName(QLatin1String(n.frame));
    QWidget* holder = p.frame;
    if (containerName) {
        auto* frameLayout = new QVBoxLayout(p.frame);
        frameLayout->setContentsMargins(0, 0, 0, 0);
        auto* container = new QFrame(p.frame);
        container->setObjectName(QLatin1String(containerName));
        container->setFrameShape(QFrame::NoFrame);
        frameLayout->addWidget(container);
        holder = container;
    }
    auto* column = new QVBoxLayout(holder);
    p.label = new ui::Label(QLatin1String(n.label), labelCaption, holder);
    column->addWidget(p.label);

    auto* entry = new QHBoxLayout;
    p.txt = new ui::TextBox(QLatin1String(n.text), holder);
    p.txt->Set_Max_Length(spec.maxLength);
    entry->addWidget(p.txt, 1);
    p.extraButtons = new QHBoxLayout;
    entry->addLayout(p.extraButtons);
    p.add = new ui::CommandButton(QLatin1String(n.add), QStringLiteral("Add"), holder);
    entry->addWidget(p.add);
    column->addLayout(entry);

    auto* body = new QHBoxLayout;
    p.lvw = Make_List(QLatin1String(n.list), spec, holder);
    p.lvw->Set_Small_Icons(images);
    body->addWidget(p.lvw);
    auto* buttons = new QVBoxLayout;
    p.edit = new ui::CommandButton(QLatin1String(n.edit), QStringLiteral("Edit"), holder);
    p.remove = new ui::CommandButton(QLatin1String(n.remove), QStringLiteral("Remove"), holder);
    buttons->addWidget(p.edit);
    buttons->addWidget(p.remove);
    buttons->addStretch(1);
    if (n.importButton) {
        p.importButton = new ui::CommandButton(QLatin1String(n.importButton), QString(), holder);
        buttons->addWidget(p.importButton);
    }
    if (n.exportButton) {
        p.exportButton = new ui::CommandButton(QLatin1String(n.exportButton), QString(), holder);
        buttons->addWidget(p.exportButton);
    }
    p.copySettings = new ui::CommandButton(QLatin1String(n.copySettings), QString(), holder);
    buttons->addWidget(p.copySettings);
    body->addLayout(buttons);
    column->addLayout(body);
    return p;
}

void RuleListPage::Wire_Panel(const Panel& p, RuleList& list) {
    ui::Set_KeyPress(p.txt, [&list](int& KeyAscii) {
        if (KeyAscii == 13) {
            KeyAscii = 0;
            list.Add();
        }
    });
    connect(p.add, &ui::CommandButton::Click, this, [&list] { list.Add(); });
    connect(p.edit, &ui::CommandButton::Click, this, [&list] { Guarded([&list] { list.Edit(); }); });
    connect(p.remove, &ui::CommandButton::Click, this, [&list] { list.Remove(); });
    if (p.importButton)
        connect(p.importButton, &ui::CommandButton::Click, this, [&list] { list.Import(); });
    if (p.exportButton)
        connect(p.exportButton, &ui::CommandButton::Click, this, [&list] { list.Export(); });
    connect(p.copySettings, &ui::CommandButton::Click, this,
            [&list] { Guarded([&list] { list.Copy_Settings(); }); });
    connect(p.lvw, &ui::ListView::AfterLabelEdit, this,
            [&list](int& Cancel, QString& NewString) { list.After_Label_Edit(Cancel, NewString); });
}

} // namespace hv
