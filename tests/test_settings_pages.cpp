// The settings pages' own arithmetic (client option bits; the device fields are walked by the device lock
// scenario), the page base they share and the Browse paths shared with the EXE blocker.
#include "admin/frmGeneralOptions.h"
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

// Clearing a client option also clears bit 31 (Apply_Bit, with the validators' tests).
TEST(ClientOptions, KeysGiveTheirBits) {
    EXPECT_EQ(Client_Option_Bit(QStringLiteral("c0")), 1);
    EXPECT_EQ(Client_Option_Bit(QStringLiteral("c2")), 4);
    EXPECT_TRUE(Is_Client_Option_Set(6, 2));
    EXPECT_FALSE(Is_Client_Option_Set(6, 1));
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
