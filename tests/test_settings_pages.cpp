// The settings pages' own arithmetic (device fields, client option bits), the page base they share and
// the Browse paths shared with the EXE blocker.
#include "admin/frmGeneralOptions.h"
#include "appcontrol/frmDeviceSettings.h"
#include "platform/Err.h"
#include "store/Bits.h"
#include "testing/ScriptedPlatform.h"
#include "ui/ApplyPage.h"
#include "ui/ExeBrowse.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <gtest/gtest.h>

namespace {

using namespace hv;

// Each stored value read into the three devices' option indices, and written back from them by Apply.
TEST(DeviceFields, StoredValuesShowAsOptionsAndWriteBackWhole) {
    const long masks[] = {3, 12, 48};
    const long shifts[] = {0, 2, 4};
    const struct {
        long stored;
        int option[3]; // -1: no option shows the field
        long written;  // what Apply writes from those options
    } cases[] = {
        {0, {0, 0, 0}, 0},
        {21, {1, 1, 1}, 21},
        {29, {1, 2, 1}, 29},
        {63, {2, 2, 2}, 63},
        {29 + 64, {1, 2, 1}, 29},
        // A field of 2: no option; Apply carries the field value of the device before it, 0 for the first.
        {3 + 8 + 16, {2, -1, 1}, 3 + 12 + 16},
        {2 + 4, {-1, 1, 0}, 4},
        {1 + 12 + 32, {1, 2, -1}, 1 + 12 + 48},
    };
    for (const auto& c : cases) {
        long value = 0;
        long field = 0;
        for (int d = 0; d < 3; ++d) {
            int shown = -1;
            for (int i = 0; i < 3; ++i) {
                bool isField = false;
                Is_Device_Field(c.stored, masks[d], kDeviceFieldValues[size_t(i)], shifts[d], isField);
                if (isField) {
                    EXPECT_EQ(shown, -1) << "two options for one field";
                    shown = i;
                }
            }
            EXPECT_EQ(shown, c.option[d]) << c.stored << " device " << d;
            if (shown >= 0)
                field = kDeviceFieldValues[size_t(shown)];
            Add_Device_Field(value, field, shifts[d]);
        }
        EXPECT_EQ(value, c.written) << c.stored;
    }
}

TEST(ClientOptions, KeysGiveTheirBitsAndClearingDropsBit31) {
    EXPECT_EQ(Client_Option_Bit(QStringLiteral("c0")), 1);
    EXPECT_EQ(Client_Option_Bit(QStringLiteral("c2")), 4);
    EXPECT_TRUE(Is_Client_Option_Set(6, 2));
    EXPECT_FALSE(Is_Client_Option_Set(6, 1));
    // Read_Client_Options over a stored value with bit 31 and an unknown bit 3.
    const long stored = (1L << 31) | 8 | 7;
    long all = stored;
    for (long bit : {1L, 2L, 4L})
        Apply_Bit(all, bit, true);
    EXPECT_EQ(all, stored);
    long one = stored;
    for (long bit : {1L, 2L, 4L})
        Apply_Bit(one, bit, bit != 2);
    EXPECT_EQ(one, 8 | 5);
}

TEST(ExeBrowse, OnePathOrAFolderWithItsNames) {
    EXPECT_EQ(ui::Chosen_Paths(QStringLiteral("/opt/a.exe")), QStringList{QStringLiteral("/opt/a.exe")});
    const QString several =
        QStringLiteral("/opt") + QChar(0) + QStringLiteral("a.exe") + QChar(0) + QStringLiteral("b.exe");
    EXPECT_EQ(ui::Chosen_Paths(several),
              (QStringList{QStringLiteral("/opt/a.exe"), QStringLiteral("/opt/b.exe")}));
}

class frmApplyProbe final : public ui::ApplyPage {
public:
    frmApplyProbe() : ui::ApplyPage(QStringLiteral("frmApplyProbe")) { Button_Row(true); }
    int applied = 0;
    bool fail = false;
    using ui::ApplyPage::Mark_Changed;

protected:
    void cmdApply_Click() override {
        ++applied;
        if (fail)
            Err().Raise(errnum::TypeMismatch);
        Saved(QStringLiteral("Saved"));
    }
};

TEST(ApplyPage, ApplyRunsInItsErrorTargetSavedDisablesAndEscCloses) {
    ScriptedPlatform world;
    PlatformScope scope{world};
    QPointer<frmApplyProbe> page = new frmApplyProbe();
    page->Show_Modal();
    page->Mark_Changed();
    page->cmdApply->click();
    EXPECT_FALSE(page->cmdApply->isEnabled());
    ASSERT_EQ(world.boxes.size(), 1u);
    EXPECT_EQ(world.boxes[0].style, MsgStyle::Information);
    // A failure is reported and leaves Apply enabled.
    page->Mark_Changed();
    page->fail = true;
    page->cmdApply->click();
    EXPECT_TRUE(page->cmdApply->isEnabled());
    ASSERT_EQ(world.boxes.size(), 2u);
    EXPECT_EQ(world.boxes[1].style, MsgStyle::Critical);
    page->lblHomeSite->Click_As_User();
    EXPECT_EQ(world.launched, QStringList{QStringLiteral("https://www.halvenor.example")});
    EXPECT_EQ(ui::Route_Key(page->cmdApply, 27), 0);
    EXPECT_FALSE(page->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(page.isNull());
}

} // namespace

namespace {

// The message boxes of the settings pages take line ends from Enter, as typed and as routed by the form.
TEST(TextBoxMultiLine, EnterPutsALineEndOnlyInAMultiLineBox) {
    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    QPointer<frmApplyProbe> page = new frmApplyProbe();
    auto* single = new hv::ui::TextBox(QStringLiteral("txtSingle"), page);
    auto* multi = new hv::ui::TextBox(QStringLiteral("txtMulti"), page);
    multi->Set_Multi_Line(true);
    for (hv::ui::TextBox* box : {single, multi})
        for (int key : {int('a'), 13, int('b')})
            hv::ui::Default_Key_Action(box, hv::ui::Route_Key(box, key));
    EXPECT_EQ(single->Text(), QStringLiteral("ab"));
    EXPECT_EQ(multi->Text(), QStringLiteral("a\r\nb"));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(multi, &enter);
    EXPECT_EQ(multi->Text(), QStringLiteral("a\r\nb\r\n"));
    delete page.data();
}

} // namespace
