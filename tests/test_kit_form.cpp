// The page base: loading, modal showing under the scripted platform, unloading with its cancellable
// events, the key preview and the controls' key, focus and Tag protocols.
#include "platform/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QPointer>
#include <gtest/gtest.h>

namespace {

using namespace hv::ui;

// A page as the pages are written: controls made in the constructor, handlers that record what ran.
class frmKitProbe final : public Form {
public:
    frmKitProbe() : Form(QStringLiteral("frmKitProbe")) {
        auto* frame = new QFrame(this);
        frame->setObjectName(QStringLiteral("fraRules"));
        txtRule = new TextBox(QStringLiteral("txtRule"), frame); // a grandchild, as inside a frame
        txtOther = new TextBox(QStringLiteral("txtOther"), this);
        lvwList = new ListView(QStringLiteral("lvwList"), ListView::Report, this);
        Set_KeyPress(txtRule, [this](int& k) {
            log << QStringLiteral("txtRule:%1").arg(k);
            if (k == 13)
                k = 0; // Enter adds and is swallowed
            else if (k >= 'a' && k <= 'z')
                k -= 32; // the box takes capitals only
        });
        Set_KeyPress(lvwList, [this](int& k) { log << QStringLiteral("lvwList:%1").arg(k); });
        for (QWidget* w : {static_cast<QWidget*>(txtRule), static_cast<QWidget*>(txtOther),
                           static_cast<QWidget*>(lvwList)}) {
            Set_GotFocus(w, [this, w] { log << QStringLiteral("got ") + w->objectName(); });
            Set_LostFocus(w, [this, w] { log << QStringLiteral("lost ") + w->objectName(); });
        }
    }

    TextBox* txtRule;
    TextBox* txtOther;
    ListView* lvwList;
    QStringList log;
    int loads = 0;
    int cancelQuery = 0;
    int cancelUnload = 0;
    QList<int> queryModes;

protected:
    void Form_Load() override { ++loads; }
    void Form_KeyPress(int& k) override {
        log << QStringLiteral("form:%1").arg(k);
        if (k == 27)
            k = 0; // Esc closes the page in real pages; here it is only swallowed
        else if (k == '!')
            k = '?';
    }
    void Form_QueryUnload(int& Cancel, int UnloadMode) override {
        queryModes << UnloadMode;
        Cancel = cancelQuery;
    }
    void Form_Unload(int& Cancel) override { Cancel = cancelUnload; }
};

class KitForm : public ::testing::Test {
protected:
    void SetUp() override { form = new frmKitProbe(); }
    void TearDown() override {
        if (form)
            delete form.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void Flush_Deletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // A real key press delivered to a control, as the desktop delivers it.
    static void Press(QWidget* w, int qtKey, const QString& text) {
        QKeyEvent e(QEvent::KeyPress, qtKey, Qt::NoModifier, text);
        QCoreApplication::sendEvent(w, &e);
    }

    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    QPointer<frmKitProbe> form;
};

TEST_F(KitForm, LoadRunsOnceAndModalShowReturnsAtOnceUnderTheDriver) {
    form->Show_Modal();
    form->Show_Modal();
    form->Load();
    EXPECT_EQ(form->loads, 1);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(form->isModal());
    EXPECT_EQ(Forms::Find(QStringLiteral("frmKitProbe")), form.data());
}

TEST_F(KitForm, QueryUnloadAndUnloadCanCancelAndTheCloseBoxGoesThroughThem) {
    form->Show_Modeless();
    form->cancelQuery = 1;
    EXPECT_FALSE(form->Unload());
    form->close(); // the close box
    ASSERT_TRUE(form);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->queryModes, (QList<int>{vbFormCode, vbFormControlMenu}));

    form->cancelQuery = 0;
    form->cancelUnload = 1;
    EXPECT_FALSE(form->Unload());
    EXPECT_TRUE(form->isVisible());

    form->cancelUnload = 0;
    form->close();
    EXPECT_EQ(form->queryModes.last(), int(vbFormControlMenu));
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Forms::Find(QStringLiteral("frmKitProbe")), nullptr);
    Flush_Deletes();
    EXPECT_TRUE(form.isNull()); // the form removed itself
}

TEST_F(KitForm, EscAloneDoesNotCloseTheDialog) {
    form->Show_Modeless();
    Press(form->txtOther, Qt::Key_Escape, QStringLiteral("\x1b"));
    ASSERT_TRUE(form);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->log, QStringList()); // KeyPreview is off and the box has no handler
}

// Keys go through the form first (with KeyPreview), then the control's handler, then to the control.
TEST_F(KitForm, KeysAreSwallowedOrChangedByTheFormAndThenByTheControl) {
    struct Case {
        bool preview;
        int key;
        QString expectText;
        QStringList expectLog;
    };
    const Case cases[] = {
        {true, 'a', QStringLiteral("A"), {QStringLiteral("form:97"), QStringLiteral("txtRule:97")}},
        {false, 'a', QStringLiteral("A"), {QStringLiteral("txtRule:97")}},
        {true, 27, QString(), {QStringLiteral("form:27")}},
        {false, 27, QString(), {QStringLiteral("txtRule:27")}},
        {true, 13, QString(), {QStringLiteral("form:13"), QStringLiteral("txtRule:13")}},
        {true, '!', QStringLiteral("?"), {QStringLiteral("form:33"), QStringLiteral("txtRule:63")}},
        {true, 8, QString(), {QStringLiteral("form:8"), QStringLiteral("txtRule:8")}},
    };
    form->Load();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.key);
        form->KeyPreview = c.preview;
        // The driver's way: route, then the default action of what is left.
        form->txtRule->Set_Text(QString());
        form->log.clear();
        Default_Key_Action(form->txtRule, Route_Key(form->txtRule, c.key));
        EXPECT_EQ(form->txtRule->Text(), c.expectText);
        EXPECT_EQ(form->log, c.expectLog);
    }
    // The desktop's way: real key events through the form's filter, text typed into the box.
    form->KeyPreview = true;
    form->txtRule->Set_Text(QString());
    form->log.clear();
    Press(form->txtRule, Qt::Key_B, QStringLiteral("b"));
    Press(form->txtRule, Qt::Key_Exclam, QStringLiteral("!"));
    Press(form->txtRule, Qt::Key_Escape, QStringLiteral("\x1b"));
    Press(form->txtRule, Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(form->txtRule->Text(), QStringLiteral("B?"));
    EXPECT_EQ(form->log,
              (QStringList{QStringLiteral("form:98"), QStringLiteral("txtRule:98"), QStringLiteral("form:33"),
                           QStringLiteral("txtRule:63"), QStringLiteral("form:27"), QStringLiteral("form:13"),
                           QStringLiteral("txtRule:13")}));
}

TEST_F(KitForm, AListViewsInnerViewRoutesKeysToTheListView) {
    form->Load();
    form->log.clear();
    Press(form->lvwList->View_Widget(), Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(form->log, QStringList{QStringLiteral("lvwList:13")});
}

TEST_F(KitForm, TypingHonoursMaxLengthButCodeMaySetLongerText) {
    form->Load();
    form->txtOther->Set_Max_Length(3);
    for (QChar ch : QStringLiteral("abcdef"))
        Default_Key_Action(form->txtOther, Route_Key(form->txtOther, ch.unicode()));
    EXPECT_EQ(form->txtOther->Text(), QStringLiteral("abc"));
    Press(form->txtOther, Qt::Key_G, QStringLiteral("g"));
    EXPECT_EQ(form->txtOther->Text(), QStringLiteral("abc"));
    form->txtOther->Set_Text(QStringLiteral("longer than three"));
    EXPECT_EQ(form->txtOther->Text(), QStringLiteral("longer than three"));
    Default_Key_Action(form->txtOther, 8);
    EXPECT_EQ(form->txtOther->Text(), QStringLiteral("longer than thre"));
}

TEST_F(KitForm, FocusMovesRunLostFocusThenGotFocusOnceEach) {
    form->Show_Modeless();
    form->log.clear();
    Set_Focus(form->txtRule);
    Set_Focus(form->txtRule); // already there: nothing
    Set_Focus(form->lvwList);
    QApplication::processEvents(); // late focus events from the window system change nothing
    Set_Focus(form->txtOther);
    EXPECT_EQ(form->log, (QStringList{QStringLiteral("got txtRule"), QStringLiteral("lost txtRule"),
                                      QStringLiteral("got lvwList"), QStringLiteral("lost lvwList"),
                                      QStringLiteral("got txtOther")}));
}

TEST_F(KitForm, TabMovesTheFocusToTheNextControl) {
    form->Show_Modeless();
    Set_Focus(form->txtRule);
    form->log.clear();
    Default_Key_Action(form->txtRule, 9);
    ASSERT_FALSE(form->log.isEmpty());
    EXPECT_EQ(form->log.first(), QStringLiteral("lost txtRule"));
}

TEST(KitForms, RegistryKeepsOneInstanceInCreationOrderAndForgetsUnloadedForms) {
    hv::ScriptedPlatform world;
    hv::PlatformScope scope(world);
    const int before = Forms::Count();
    Forms::Register(QStringLiteral("frmKitProbe"), [] { return new frmKitProbe(); });
    EXPECT_TRUE(Forms::Known(QStringLiteral("frmKitProbe")));
    EXPECT_FALSE(Forms::Known(QStringLiteral("frmNothing")));
    EXPECT_EQ(Forms::Create(QStringLiteral("frmNothing")), nullptr);

    Form* a = Forms::Create(QStringLiteral("frmKitProbe"));
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(Forms::Create(QStringLiteral("frmKitProbe")), a);
    EXPECT_EQ(&Forms::Get<frmKitProbe>(), a);
    auto* other = new Form(QStringLiteral("frmOther"));
    ASSERT_EQ(Forms::Count(), before + 2);
    EXPECT_EQ(Forms::All()[size_t(before)], a);
    EXPECT_EQ(Forms::All()[size_t(before) + 1], other);

    EXPECT_TRUE(a->Unload());
    EXPECT_EQ(Forms::Find(QStringLiteral("frmKitProbe")), nullptr);
    Form& fresh = Forms::Get<frmKitProbe>();
    EXPECT_NE(&fresh, a);
    EXPECT_TRUE(fresh.Unload());
    EXPECT_TRUE(other->Unload());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Forms::Count(), before);
}

// The "DontSaveToDB" protocol: code marks the box, sets the value (Click runs and sees the mark), clears
// the mark; a user's click then runs Click without it.
TEST(KitTag, DontSaveToDbProtocolLetsTheHandlerSeeTheMark) {
    CheckBox chk(QStringLiteral("chkEnable"), QStringLiteral("Enable"), nullptr);
    QStringList seen;
    QObject::connect(&chk, &CheckBox::Click, [&] {
        if (Tag(&chk) == QStringLiteral("DontSaveToDB"))
            seen << QStringLiteral("silent %1").arg(chk.Value());
        else
            seen << QStringLiteral("save %1").arg(chk.Value());
    });
    EXPECT_EQ(Tag(&chk), QString());
    Set_Tag(&chk, QStringLiteral("DontSaveToDB"));
    chk.Set_Value(1);
    Set_Tag(&chk, QString());
    chk.click();
    chk.click();
    EXPECT_EQ(seen,
              (QStringList{QStringLiteral("silent 1"), QStringLiteral("save 0"), QStringLiteral("save 1")}));
    EXPECT_EQ(Tag(nullptr), QString());
}

} // namespace
