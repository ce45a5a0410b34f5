#include "ui/PageSwitches.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Platform.h"
#include "store/modDBFunctions.h"
#include "ui/Form.h"
#include "ui/Session.h"

namespace hv {

void ColumnAllowance::Give_Room(ui::ListView* list, int column) {
    list->Set_Column_Width(column, list->Column_Width(column) - kScrollBarTwips);
}

void ColumnAllowance::Fill_Width(ui::ListView* list) {
    list->Set_Column_Width(1, list->Width_Twips() - 20);
}

void ColumnAllowance::Take_Room_Back(ui::ListView* list, int column) {
    list->Set_Column_Width(column, list->Column_Width(column) + kScrollBarTwips);
}

void ColumnAllowance::After_Load() const {
    if (list->Count() > limit)
        Give_Room(list, column);
}

void ColumnAllowance::Before_Add(int rowsNow) const {
    if (cumulative ? rowsNow > limit : rowsNow == limit)
        Give_Room(list, column);
}

void ColumnAllowance::After_Remove() const {
    const int rows = list->Count();
    if (cumulative ? rows <= limit : rows == limit)
        Take_Room_Back(list, column);
}

namespace ui {

void Check_Silently(CheckBox* box, int value) {
    Set_Tag(box, QLatin1String(kDontSaveToDB));
    box->Set_Value(value);
    Set_Tag(box, QString());
}

void Enable_Feature_Click(CheckBox* box, const QString& featureWords, long bit) {
    if (Tag(box) == QLatin1String(kDontSaveToDB))
        return;
    const int value = box->Value();
    if (value != 0 && value != 1)
        return;
    const bool on = value == 1;
    Guarded([&] {
        if (MsgBox(QStringLiteral("Are you sure you want to ") + QLatin1String(on ? "enable" : "disable") +
                       QStringLiteral(" the ") + featureWords + u'?',
                   MsgStyle::Question, MsgButtons::YesNo) == MsgAnswer::Yes) {
            const Subject subject = Current_Subject();
            Set_Feature_Bit(on, bit, subject.computerId, subject.userId);
        } else {
            // Put back without a save, so no second question comes.
            Check_Silently(box, on ? 0 : 1);
        }
    });
}

void Enable_Unless_Remote(std::initializer_list<QWidget*> controls) {
    for (QWidget* w : controls)
        w->setEnabled(!Remote_Mode);
}

} // namespace ui
} // namespace hv
