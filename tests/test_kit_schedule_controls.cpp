// The controls the schedulers bring: the "HH:mm" time picker, the check list that drops down under its
// combo box, and the focus events in the order a user's click gives them.
#include "testing/ScriptedPlatform.h"
#include "testing/TestSupport.h"
#include "ui/CheckList.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/TimePicker.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QGroupBox>
#include <QMouseEvent>
#include <QPointer>
#include <gtest/gtest.h>

namespace {

using namespace hv::ui;
using hv::testing::Raised;

TEST(KitTimePicker, ShowsAndTakesHoursAndMinutesAndRefusesOtherTexts) {
    TimePicker dtpk("dtpkFromTime", nullptr);
    int changes = 0;
    QObject::connect(&dtpk, &TimePicker::Change, [&] { ++changes; });
    const std::vector<std::pair<QString, QString>> taken = {{"08:00", "08:00"},
                                                            {"8:05", "08:05"},
                                                            {"23:59:59", "23:59"},
                                                            {"00:00:30", "00:00"},
                                                            {" 17:45 ", "17:45"}};
    for (const auto& [text, shown] : taken) {
        dtpk.Set_Value_Text(text);
        EXPECT_EQ(dtpk.Value_Text(), shown) << text.toStdString();
        EXPECT_EQ(dtpk.text(), shown);
        EXPECT_EQ(dtpk.Value().second(), 0);
    }
    EXPECT_EQ(changes, 5);
    dtpk.Set_Value_Text("17:45"); // no change, no event
    EXPECT_EQ(changes, 5);
    for (const char* bad : {"", "24:00", "noon", "12:60", "2026-01-15"})
        EXPECT_EQ(Raised([&] { dtpk.Set_Value_Text(bad); }), hv::errnum::TypeMismatch) << bad;
    EXPECT_EQ(dtpk.Value_Text(), "17:45");
}

// A page in the shape of the schedulers: a combo box inside a container inside a frame, a check list of
// the form, a button and a second combo box, with focus handlers that record and one that sends the focus on.
class frmCheckProbe final : public Form {
public:
    frmCheckProbe() : Form("frmCheckProbe"), days("lvwDays", this, 2400, 1800) {
        resize(600, 400);
        auto* frame = new QGroupBox("Frame", this);
        frame->setGeometry(30, 20, 400, 300);
        auto* container = new QWidget(frame);
        container->setObjectName("picContainer");
        container->setGeometry(10, 25, 380, 260);
        cboDay = new ComboBox("cboDay", ComboBox::DropDownList, container);
        cboDay->setGeometry(40, 60, 160, 24);
        cmdAdd = new CommandButton("cmAdd", "Add", this);
        cmdAdd->setGeometry(450, 20, 80, 24);
        lblNote = new Label("lblNote", "Note", this);
        days.Replace_List_Of(cboDay);
        Set_GotFocus(cboDay, [this] {
            log << "got cboDay";
            days.Drop_Down(cboDay);
        });
        Set_LostFocus(days.lvw, [this] {
            log << "lost lvwDays";
            days.Hide();
        });
        Set_GotFocus(days.lvw, [this] { log << "got lvwDays"; });
        Set_GotFocus(cmdAdd, [this] { log << "got cmAdd"; });
        connect(cmdAdd, &CommandButton::Click, this, [this] { log << "click cmAdd"; });
    }

    CheckListView days;
    ComboBox* cboDay;
    CommandButton* cmdAdd;
    Label* lblNote;
    QStringList log;
};

class KitCheckList : public ::testing::Test {
protected:
    void TearDown() override {
        delete form.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    QPointer<frmCheckProbe> form = new frmCheckProbe();
};

TEST_F(KitCheckList, DropsDownUnderItsComboBoxTakesTheFocusAndHidesOnLeaving) {
    form->Show_Modeless();
    EXPECT_FALSE(form->days.Shown());
    EXPECT_TRUE(form->days.lvw->Checkboxes());
    EXPECT_EQ(form->days.lvw->Column_Width(1), 2400 - 20);

    Set_Focus(form->cboDay);
    ASSERT_TRUE(form->days.Shown());
    // Left: frame + container + combo; top: the same plus the combo's height.
    EXPECT_EQ(form->days.lvw->pos(), QPoint(30 + 10 + 40, 20 + 25 + 60 + 24));
    EXPECT_EQ(form->log, (QStringList{"got cboDay", "got lvwDays"}));
    QApplication::processEvents(); // late focus events from the window system leave the list open
    EXPECT_TRUE(form->days.Shown());

    // A click on the button: the list loses the focus before the button's Click runs.
    form->log.clear();
    Click_Focus(form->cmdAdd);
    form->cmdAdd->click();
    EXPECT_EQ(form->log, (QStringList{"lost lvwDays", "got cmAdd", "click cmAdd"}));
    EXPECT_FALSE(form->days.Shown());

    // A label takes no focus; a disabled button neither.
    form->log.clear();
    Set_Focus(form->cboDay);
    Click_Focus(form->lblNote);
    form->cmdAdd->setEnabled(false);
    Click_Focus(form->cmdAdd);
    EXPECT_EQ(form->log, (QStringList{"got cboDay", "got lvwDays"}));
    EXPECT_TRUE(form->days.Shown());
}

// On the desktop a press on the combo box gives it the focus, and the check list drops down in place of
// the combo's own list.
TEST_F(KitCheckList, APressOnTheComboDropsTheCheckListInsteadOfItsOwnList) {
    form->Show_Modeless();
    form->cboDay->Add_Item("Mon");
    const QPointF at(5, 5);
    QMouseEvent press(QEvent::MouseButtonPress, at, form->cboDay->mapToGlobal(at), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(form->cboDay, &press);
    EXPECT_EQ(form->log, (QStringList{"got cboDay", "got lvwDays"}));
    EXPECT_TRUE(form->days.Shown());
    EXPECT_FALSE(form->cboDay->view()->isVisible());
}

} // namespace
