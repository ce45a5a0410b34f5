// The line ends of the settings pages' message boxes. Their client option bits, Apply, Esc and home site
// link, and the Browse paths shared with the EXE blocker are walked by the pages' scenarios.
#include "testing/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/Form.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <gtest/gtest.h>

namespace {

using namespace hv;

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
