// The page base: modal showing under the driver, cancellable unloading, key preview, key and focus events.
#include "testing/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace hv::ui;

// A page as the pages are written: controls made in the constructor, handlers that record what ran.
class frmKitProbe final : public Form {
public:
    frmKitProbe() : Form("frmKitProbe") {
        auto* frame = new QFrame(this);
        txtRule = new TextBox("txtRule", frame); // a grandchild, as inside a frame
        txtOther = new TextBox("txtOther", this);
        lvwList = new ListView("lvwList", ListView::Report, this);
        Set_KeyPress(txtRule, [this](int& k) {
            log << u"txtRule:%1"_s.arg(k);
            if (k == 13)
                k = 0; // Enter adds and is swallowed
            else if (k >= 'a' && k <= 'z')
                k -= 32; // the box takes capitals only
        });
        Set_KeyPress(lvwList, [this](int& k) { log << u"lvwList:%1"_s.arg(k); });
        for (QWidget* w : std::initializer_list<QWidget*>{txtRule, txtOther, lvwList}) {
            Set_GotFocus(w, [this, w] { log << "got " + w->objectName(); });
            Set_LostFocus(w, [this, w] { log << "lost " + w->objectName(); });
        }
    }

    TextBox *txtRule, *txtOther;
    ListView* lvwList;
    QStringList log;
    int loads = 0, cancelQuery = 0, cancelUnload = 0;
    QList<int> queryModes;

protected:
    void Form_Load() override { ++loads; }
    void Form_KeyPress(int& k) override {
        log << u"form:%1"_s.arg(k);
        k = k == 27 ? 0 : k == '!' ? '?' : k; // swallows Esc, changes one key
    }
    void Form_QueryUnload(int& Cancel, int UnloadMode) override {
        queryModes << UnloadMode;
        Cancel = cancelQuery;
    }
    void Form_Unload(int& Cancel) override { Cancel = cancelUnload; }
};

class KitForm : public ::testing::Test {
protected:
    void TearDown() override {
        delete form.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // A real key press delivered to a control, as the desktop delivers it.
    static void Press(QWidget* w, int qtKey, const QString& text) {
        QKeyEvent e(QEvent::KeyPress, qtKey, Qt::NoModifier, text);
        QCoreApplication::sendEvent(w, &e);
    }

    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    QPointer<frmKitProbe> form = new frmKitProbe();
};

// Under the driver a modal show returns at once, so the scenario can go on with the page open.
TEST_F(KitForm, ModalShowReturnsAndUnloadEventsCanCancelAlsoFromTheCloseBox) {
    form->Show_Modal();
    form->Show_Modal();
    form->Load();
    EXPECT_EQ(form->loads, 1);
    EXPECT_TRUE(form->isVisible() && form->isModal());
    form->cancelQuery = 1;
    EXPECT_FALSE(form->Unload());
    form->close(); // the close box
    ASSERT_TRUE(form && form->isVisible());
    EXPECT_EQ(form->queryModes, (QList<int>{vbFormCode, vbFormControlMenu}));
    form->cancelQuery = 0;
    form->cancelUnload = 1;
    EXPECT_FALSE(form->Unload());
    EXPECT_TRUE(form->isVisible());
    form->cancelUnload = 0;
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Forms::Find("frmKitProbe"), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(form.isNull()); // the form removed itself
}

// The process's message loop lasts while any form exists: a form that gives way to another does not end
// it, the last one to unload does, and with no form at all it does not start.
TEST_F(KitForm, TheLoopEndsWhenTheLastFormUnloads) {
    QStringList seen;
    form->Show_Modeless();
    QTimer::singleShot(0, [&] {
        // The form goes and, in the same turn, another takes its place, as the login gives way to the
        // console.
        form->Unload();
        auto* next = new frmKitProbe();
        next->setObjectName("frmNext");
        next->Show_Modeless();
        seen << QString::number(Forms::Count());
        QTimer::singleShot(0, [&seen, next] {
            seen << QString::number(Forms::Count());
            next->Unload();
        });
    });
    EXPECT_EQ(Forms::Run_While_Any_Form(), 0);
    EXPECT_EQ(seen, (QStringList{"1", "1"}));
    EXPECT_EQ(Forms::Count(), 0);
    EXPECT_EQ(Forms::Run_While_Any_Form(), 0); // returns at once
}

// Keys go through the form first (with KeyPreview), then the control's handler, then to the control.
TEST_F(KitForm, KeysAreSwallowedOrChangedByTheFormAndThenByTheControl) {
    const struct {
        bool preview;
        int key;
        const char* text;
        QStringList log;
    } cases[] = {
        {true, 'a', "A", {"form:97", "txtRule:97"}},
        {false, 'a', "A", {"txtRule:97"}},
        {true, 27, "", {"form:27"}},
        {false, 27, "", {"txtRule:27"}},
        {true, 13, "", {"form:13", "txtRule:13"}},
        {true, '!', "?", {"form:33", "txtRule:63"}},
        {true, 8, "", {"form:8", "txtRule:8"}},
    };
    form->Load();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        form->KeyPreview = c.preview;
        form->txtRule->Set_Text("");
        form->log.clear();
        Default_Key_Action(form->txtRule, Route_Key(form->txtRule, c.key)); // the driver's way
        EXPECT_EQ(form->txtRule->Text(), c.text);
        EXPECT_EQ(form->log, c.log);
    }
    // The desktop's way: real key events through the form's filter, text typed into the box.
    form->txtRule->Set_Text("");
    form->log.clear();
    Press(form->txtRule, Qt::Key_B, "b");
    Press(form->txtRule, Qt::Key_Exclam, "!");
    Press(form->txtRule, Qt::Key_Escape, "\x1b");
    Press(form->txtRule, Qt::Key_Return, "\r");
    Press(form->lvwList->View_Widget(), Qt::Key_Return, "\r"); // the list's inner view counts as the list
    EXPECT_EQ(form->txtRule->Text(), "B?");
    EXPECT_EQ(form->log, (QStringList{"form:98", "txtRule:98", "form:33", "txtRule:63", "form:27", "form:13",
                                      "txtRule:13", "form:13", "lvwList:13"}));
    // Without preview and without a handler, Esc must not close the dialog as Qt would.
    form->Show_Modeless();
    form->KeyPreview = false;
    form->log.clear();
    Press(form->txtOther, Qt::Key_Escape, "\x1b");
    ASSERT_TRUE(form && form->isVisible());
    EXPECT_EQ(form->log, QStringList());
}

TEST_F(KitForm, FocusMovesRunLostFocusThenGotFocusOnceEach) {
    form->Show_Modeless();
    form->log.clear();
    Set_Focus(form->txtRule);
    Set_Focus(form->txtRule); // already there: nothing
    Set_Focus(form->lvwList);
    QApplication::processEvents(); // late focus events from the window system change nothing
    Set_Focus(form->txtOther);
    EXPECT_EQ(form->log,
              (QStringList{"got txtRule", "lost txtRule", "got lvwList", "lost lvwList", "got txtOther"}));
    form->log.clear();
    Default_Key_Action(form->txtOther, 9); // Tab moves on
    EXPECT_EQ(form->log.value(0), "lost txtOther");
}

} // namespace
