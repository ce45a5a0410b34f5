// The settings pages' own arithmetic (client option bits; the device fields are walked by the device lock
// scenario), the Browse paths shared with the EXE blocker and the line ends of their message boxes. Apply,
// Esc and the home site link of the page base they share are walked by the settings pages' scenarios.
#include "admin/frmGeneralOptions.h"
#include "store/Bits.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/ExeBrowse.h"
#include "ui/Form.h"

#include <QCoreApplication>
#include <QKeyEvent>
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
    EXPECT_EQ(ui::Chosen_Paths(QStringLiteral("/opt/a.exe")), QStringList{"/opt/a.exe"});
    const QString several = QStringLiteral("/opt") + QChar(0) + "a.exe" + QChar(0) + "b.exe";
    EXPECT_EQ(ui::Chosen_Paths(several), (QStringList{"/opt/a.exe", "/opt/b.exe"}));
}

// The message boxes of the settings pages take line ends from Enter, as typed and as routed by the form.
TEST(TextBoxMultiLine, EnterPutsALineEndOnlyInAMultiLineBox) {
    ScriptedPlatform world;
    PlatformScope scope{world};
    ui::Form page(QStringLiteral("frmProbe"));
    auto* single = new ui::TextBox(QStringLiteral("txtSingle"), &page);
    auto* multi = new ui::TextBox(QStringLiteral("txtMulti"), &page);
    multi->Set_Multi_Line(true);
    for (ui::TextBox* box : {single, multi})
        for (int key : {int('a'), 13, int('b')})
            ui::Default_Key_Action(box, ui::Route_Key(box, key));
    EXPECT_EQ(single->Text(), QStringLiteral("ab"));
    EXPECT_EQ(multi->Text(), QStringLiteral("a\r\nb"));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(multi, &enter);
    EXPECT_EQ(multi->Text(), QStringLiteral("a\r\nb\r\n"));
}

} // namespace
