#include "ui/CheckList.h"

#include "ui/Form.h"

#include <QEvent>

namespace hv::ui {

namespace {
class PressToFocus final : public QObject {
public:
    explicit PressToFocus(QWidget* combo) : QObject(combo), m_combo(combo) {
        combo->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == m_combo &&
            (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)) {
            Set_Focus(m_combo);
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget* m_combo;
};
} // namespace

CheckListView::CheckListView(const QString& name, QWidget* form, int widthTwips, int heightTwips)
    : lvw(Make_One_Column_List(name, QString(), widthTwips, heightTwips, form)) {
    lvw->Set_Checkboxes(true);
    lvw->hide();
}

void CheckListView::Drop_Down(const QWidget* combo) {
    QWidget* holder = lvw->parentWidget();
    lvw->move(combo->mapTo(holder, QPoint(0, combo->height())));
    lvw->raise();
    lvw->show();
    Set_Focus(lvw);
}

void CheckListView::Replace_List_Of(QWidget* combo) {
    new PressToFocus(combo);
}

void CheckListView::Hide() {
    lvw->hide();
}

bool CheckListView::Shown() const {
    return lvw->isVisibleTo(lvw->parentWidget());
}

int CheckListView::Item_Count() const {
    return lvw->Count();
}

QString CheckListView::Item_Text(int index) const {
    return lvw->Text(index);
}

bool CheckListView::Item_Checked(int index) const {
    return lvw->Checked(index);
}

void CheckListView::Set_Item_Checked(int index, bool checked) {
    lvw->Set_Checked(index, checked);
}

void CheckListView::Add_Item(const QString& key, const QString& text) {
    lvw->Add(text, QString(), key);
}

} // namespace hv::ui
