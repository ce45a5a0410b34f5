// The expectations: what must hold at that point of the scenario.
#include "drive/Player.h"

#include "platform/Err.h"
#include "platform/IniRegistry.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ListView.h"

#include <QComboBox>
#include <QFile>
#include <QTreeWidget>
#include <sqlite3.h>

namespace hv::drive {

namespace {

QString Quote_List(const QStringList& rows) {
    if (rows.isEmpty())
        return QStringLiteral("(none)");
    QStringList q;
    for (const QString& r : rows)
        q << Quoted_Text(r);
    return q.join(u' ');
}

QString Box_Text(const RecordedBox& b) {
    return QStringLiteral("%1 %2 %3 %4")
        .arg(Style_Word(b.style),
             b.buttons == MsgButtons::YesNo ? QStringLiteral("yesno") : QStringLiteral("ok"),
             Quoted_Text(b.text), Quoted_Text(b.title));
}

QString Quote_Bytes(const QByteArray& b) {
    QString out;
    for (char ch : b) {
        const auto u = static_cast<unsigned char>(ch);
        if (u == '\\')
            out += QStringLiteral("\\\\");
        else if (u == '"')
            out += QStringLiteral("\\\"");
        else if (u == '\r')
            out += QStringLiteral("\\r");
        else if (u == '\n')
            out += QStringLiteral("\\n");
        else if (u >= 0x20 && u < 0x7f)
            out += QChar(u);
        else
            out += QStringLiteral("\\x%1").arg(u, 2, 16, QLatin1Char('0'));
    }
    return u'"' + out + u'"';
}

QStringList Word_Texts(const Command& c, size_t from) {
    QStringList out;
    for (size_t i = from; i < c.words.size(); ++i)
        out << c.words[i].text;
    return out;
}

} // namespace

void Player::Cmd_Expect(const Command& c) {
    const Word& what = Arg(c, 1, "what to expect");
    if (what.Is("msgbox"))
        return Expect_Msgbox(c);
    if (what.Is("nomsgbox")) {
        Need_Args(c, 1, 1, "expect nomsgbox");
        if (m_boxesSeen < m_platform->boxes.size())
            throw Failure{QStringLiteral("a message box was not expected: %1")
                              .arg(Box_Text(m_platform->boxes[m_boxesSeen]))};
        return;
    }
    for (const char* kw : {"rows", "row", "selected", "checked", "bold", "rowtag", "colwidth"})
        if (what.Is(kw))
            return Expect_Rows(c, what.text.toLower());
    if (what.Is("sql"))
        return Expect_Sql(c);
    for (const char* kw : {"filecontains", "file", "nofile"})
        if (what.Is(kw))
            return Expect_File(c, what.text.toLower());
    for (const char* kw : {"log", "logline", "loglines", "nolog"})
        if (what.Is(kw))
            return Expect_Log(c, what.text.toLower());
    if (what.Is("ended"))
        return Expect_Ended(c);
    if (what.Is("shown") || what.Is("notshown")) {
        Need_Args(c, 2, 2, "expect shown|notshown FORM");
        const ui::Form* f = Find_Form(c.words[2].text);
        const bool shown = f && f->isVisible();
        if (what.Is("shown") && !shown)
            throw Failure{QStringLiteral("form %1 is not shown%2")
                              .arg(c.words[2].text, f ? QStringLiteral(" (it is loaded, hidden)")
                                                      : QStringLiteral(" (not loaded)"))};
        if (what.Is("notshown") && shown)
            throw Failure{QStringLiteral("form %1 is shown").arg(c.words[2].text)};
        return;
    }
    if (what.Is("caption")) {
        Need_Args(c, 4, 4, "expect caption FORM = \"TEXT\"");
        if (!c.words[3].Is("="))
            throw Failure{QStringLiteral("write: expect caption FORM = \"TEXT\"")};
        const ui::Form* f = Need_Form(c.words[2].text);
        if (f->Caption() != c.words[4].text)
            throw Failure{QStringLiteral("the caption of %1 is %2, not %3")
                              .arg(c.words[2].text, Quoted_Text(f->Caption()), Quoted_Text(c.words[4].text))};
        return;
    }
    if (what.Is("launched")) {
        Need_Args(c, 2, 2, "expect launched \"TEXT\"");
        for (const QString& l : m_platform->launched)
            if (l.contains(c.words[2].text))
                return;
        throw Failure{QStringLiteral("nothing containing %1 was launched; launched: %2")
                          .arg(Quoted_Text(c.words[2].text), Quote_List(m_platform->launched))};
    }
    if (what.Is("registry")) {
        Need_Args(c, 4, 4, "expect registry \"KEYPATH\" \"NAME\" \"VALUE\"");
        IniRegistry reg(m_platform->Windows_Directory() + QStringLiteral("/registry.ini"));
        const auto v = reg.Get_Value_Text(Machine_Key(c.words[2].text), c.words[3].text);
        if (!v)
            throw Failure{QStringLiteral("the registry has no value %1 under %2")
                              .arg(Quoted_Text(c.words[3].text), Quoted_Text(c.words[2].text))};
        if (*v != c.words[4].text)
            throw Failure{
                QStringLiteral("the registry value %1 is %2, not %3")
                    .arg(Quoted_Text(c.words[3].text), Quoted_Text(*v), Quoted_Text(c.words[4].text))};
        return;
    }
    if (!what.quoted && what.text.contains(u'.'))
        return Expect_Property(c);
    throw Failure{QStringLiteral("unknown expectation \"%1\"").arg(what.text)};
}

void Player::Expect_Msgbox(const Command& c) {
    Need_Args(c, 4, 5, "expect msgbox STYLE ok|yesno \"TEXT\" [\"TITLE\"]");
    const Word& style = c.words[2];
    const Word& buttons = c.words[3];
    const Word& text = c.words[4];
    const QString title = c.words.size() > 5 ? c.words[5].text : hv::kAppTitle;
    MsgStyle s;
    if (style.Is("exclamation"))
        s = MsgStyle::Exclamation;
    else if (style.Is("information"))
        s = MsgStyle::Information;
    else if (style.Is("question"))
        s = MsgStyle::Question;
    else if (style.Is("critical"))
        s = MsgStyle::Critical;
    else if (style.Is("plain"))
        s = MsgStyle::Plain;
    else
        throw Failure{
            QStringLiteral("\"%1\" is not a style: exclamation, information, question, critical or plain")
                .arg(style.text)};
    MsgButtons b;
    if (buttons.Is("ok"))
        b = MsgButtons::OK;
    else if (buttons.Is("yesno"))
        b = MsgButtons::YesNo;
    else
        throw Failure{QStringLiteral("\"%1\" is not a set of buttons: ok or yesno").arg(buttons.text)};

    const QString wanted =
        QStringLiteral("%1 %2 %3%4 %5")
            .arg(style.text.toLower(), buttons.text.toLower(),
                 text.contains ? QStringLiteral("~") : QString(), Quoted_Text(text.text), Quoted_Text(title));
    if (m_boxesSeen >= m_platform->boxes.size())
        throw Failure{QStringLiteral("no message box was shown; expected %1").arg(wanted)};
    const RecordedBox& box = m_platform->boxes[m_boxesSeen];
    const bool textOk = text.contains ? box.text.contains(text.text) : box.text == text.text;
    if (!textOk || box.style != s || box.buttons != b || box.title != title)
        throw Failure{QStringLiteral("the next message box is %1; expected %2").arg(Box_Text(box), wanted)};
    ++m_boxesSeen;
}

void Player::Expect_Property(const Command& c) {
    const QString ref = c.words[1].text;
    const qsizetype dot = ref.lastIndexOf(u'.');
    const QString prop = ref.mid(dot + 1);
    static const QStringList known = {QStringLiteral("text"),    QStringLiteral("caption"),
                                      QStringLiteral("enabled"), QStringLiteral("visible"),
                                      QStringLiteral("value"),   QStringLiteral("listindex"),
                                      QStringLiteral("tag"),     QStringLiteral("count"),
                                      QStringLiteral("tooltip"), QStringLiteral("maxlength")};
    if (!known.contains(prop.toLower()))
        throw Failure{QStringLiteral("unknown property \"%1\" (text, caption, enabled, visible, value, "
                                     "listindex, tag, count, tooltip, maxlength)")
                          .arg(prop)};
    if (c.words.size() < 3 || !c.words[2].Is("="))
        throw Failure{QStringLiteral("write: expect %1 = VALUE").arg(ref)};
    if (c.words.size() > 4)
        throw Failure{QStringLiteral("a value with blanks is written in quotes")};
    const QString wanted = c.words.size() == 4 ? c.words[3].text : QString();
    const Target t = Need_Control(ref.left(dot), true);
    const PropValue v = Read_Property(t, prop);
    const bool same = v.boolean ? v.text.compare(wanted, Qt::CaseInsensitive) == 0 : v.text == wanted;
    if (!same)
        throw Failure{QStringLiteral("%1 is %2, not %3").arg(ref, Quoted_Text(v.text), Quoted_Text(wanted))};
}

void Player::Expect_Rows(const Command& c, const QString& what) {
    const Target t = Need_Control(Arg(c, 2, "a list").text);
    if (what == QLatin1String("rows")) {
        const QStringList have = Rows_Of(t);
        const QStringList want = Word_Texts(c, 3);
        if (have != want)
            throw Failure{QStringLiteral("the rows of %1 are %2; expected %3")
                              .arg(t.ref, Quote_List(have), Quote_List(want))};
        return;
    }
    if (what == QLatin1String("colwidth")) {
        Need_Args(c, 5, 5, "expect colwidth FORM.LIST N = TWIPS");
        auto* lv = qobject_cast<ui::ListView*>(t.object);
        if (!lv)
            throw Failure{QStringLiteral("%1 is not a list view").arg(t.ref)};
        bool ok = false;
        const int col = c.words[3].text.toInt(&ok);
        if (!ok || col < 1 || col > lv->Column_Count())
            throw Failure{QStringLiteral("%1 has %2 columns, there is no column %3")
                              .arg(t.ref)
                              .arg(lv->Column_Count())
                              .arg(c.words[3].text)};
        if (!c.words[4].Is("="))
            throw Failure{QStringLiteral("write: expect colwidth FORM.LIST N = TWIPS")};
        const QString have = QString::number(lv->Column_Width(col));
        if (have != c.words[5].text)
            throw Failure{QStringLiteral("column %1 of %2 is %3 twips wide, not %4")
                              .arg(col)
                              .arg(t.ref, have, c.words[5].text)};
        return;
    }
    if (what == QLatin1String("selected") || what == QLatin1String("checked")) {
        QStringList have;
        if (auto* lv = qobject_cast<ui::ListView*>(t.object)) {
            for (int i = 1; i <= lv->Count(); ++i)
                if (what == QLatin1String("selected") ? lv->Selected(i) : lv->Checked(i))
                    have << lv->Row_Text(i);
        } else if (auto* cbo = qobject_cast<QComboBox*>(t.object); cbo && what == QLatin1String("selected")) {
            if (cbo->currentIndex() >= 0)
                have << cbo->itemText(cbo->currentIndex());
        } else if (auto* tree = qobject_cast<QTreeWidget*>(t.object);
                   tree && what == QLatin1String("selected")) {
            for (QTreeWidgetItem* item : tree->selectedItems())
                have << item->text(0);
        } else {
            throw Failure{QStringLiteral("%1 (%2) has no %3 rows").arg(t.ref, Kind_Of(t.object), what)};
        }
        const QStringList want = Word_Texts(c, 3);
        if (have != want)
            throw Failure{QStringLiteral("the %1 rows of %2 are %3; expected %4")
                              .arg(what, t.ref, Quote_List(have), Quote_List(want))};
        return;
    }
    // One row: row, bold, rowtag.
    auto* lv = qobject_cast<ui::ListView*>(t.object);
    if (!lv && what != QLatin1String("row"))
        throw Failure{QStringLiteral("%1 is not a list view").arg(t.ref)};
    const int row = Row_Of(t, Arg(c, 3, "a row"));
    if (what == QLatin1String("row")) {
        Need_Args(c, 4, 4, "expect row FORM.LIST ROW \"CELLS\"");
        const QString have = Rows_Of(t).at(row - 1);
        if (have != c.words[4].text)
            throw Failure{QStringLiteral("row %1 of %2 is %3, not %4")
                              .arg(row)
                              .arg(t.ref, Quoted_Text(have), Quoted_Text(c.words[4].text))};
    } else if (what == QLatin1String("bold")) {
        Need_Args(c, 4, 4, "expect bold FORM.LIST ROW true|false");
        bool want;
        if (c.words[4].Is("true"))
            want = true;
        else if (c.words[4].Is("false"))
            want = false;
        else
            throw Failure{QStringLiteral("bold takes true or false")};
        if (lv->Bold(row) != want)
            throw Failure{QStringLiteral("row %1 of %2 is %3bold")
                              .arg(row)
                              .arg(t.ref, want ? QStringLiteral("not ") : QString())};
    } else {
        Need_Args(c, 5, 5, "expect rowtag FORM.LIST ROW = VALUE");
        if (!c.words[4].Is("="))
            throw Failure{QStringLiteral("write: expect rowtag FORM.LIST ROW = VALUE")};
        if (lv->Tag(row) != c.words[5].text)
            throw Failure{QStringLiteral("the tag of row %1 of %2 is %3, not %4")
                              .arg(row)
                              .arg(t.ref, Quoted_Text(lv->Tag(row)), Quoted_Text(c.words[5].text))};
    }
}

void Player::Expect_Sql(const Command& c) {
    if (c.words.size() < 3)
        throw Failure{QStringLiteral("write: expect sql \"SELECT...\" \"ROW\"...")};
    const QString path = Store_Path();
    if (!QFile::exists(path))
        throw Failure{QStringLiteral("there is no store to query")};
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY, nullptr) !=
        SQLITE_OK) {
        const QString why = QString::fromUtf8(sqlite3_errmsg(db));
        sqlite3_close(db);
        throw Failure{QStringLiteral("the store could not be opened: %1").arg(why)};
    }
    sqlite3_stmt* st = nullptr;
    QStringList have;
    QString error;
    if (sqlite3_prepare_v2(db, c.words[2].text.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK) {
        error = QString::fromUtf8(sqlite3_errmsg(db));
    } else {
        int rc;
        while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < sqlite3_column_count(st); ++i) {
                const auto* txt = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
                cells << (txt ? QString::fromUtf8(txt, sqlite3_column_bytes(st, i)) : QString());
            }
            have << cells.join(u'|');
        }
        if (rc != SQLITE_DONE)
            error = QString::fromUtf8(sqlite3_errmsg(db));
    }
    sqlite3_finalize(st);
    sqlite3_close(db);
    if (!error.isEmpty())
        throw Failure{QStringLiteral("the query failed: %1").arg(error)};
    const QStringList want = Word_Texts(c, 3);
    if (have != want)
        throw Failure{
            QStringLiteral("the query gives %1; expected %2").arg(Quote_List(have), Quote_List(want))};
}

void Player::Expect_File(const Command& c, const QString& what) {
    if (what == QLatin1String("nofile")) {
        Need_Args(c, 2, 2, "expect nofile \"PATH\"");
        if (QFile::exists(Work_Path(c.words[2].text)))
            throw Failure{QStringLiteral("the file %1 exists").arg(Quoted_Text(c.words[2].text))};
        return;
    }
    Need_Args(c, 3, 3, "expect file|filecontains \"PATH\" \"BYTES\"");
    QFile f(Work_Path(c.words[2].text));
    if (!f.open(QIODevice::ReadOnly))
        throw Failure{QStringLiteral("there is no file %1").arg(Quoted_Text(c.words[2].text))};
    const QByteArray have = f.readAll();
    const QByteArray& want = c.words[3].bytes;
    if (what == QLatin1String("file") && have != want)
        throw Failure{QStringLiteral("the file %1 holds %2; expected %3")
                          .arg(Quoted_Text(c.words[2].text), Quote_Bytes(have), Quote_Bytes(want))};
    if (what == QLatin1String("filecontains") && !have.contains(want))
        throw Failure{
            QStringLiteral("the file %1 does not hold %2; it holds %3")
                .arg(Quoted_Text(c.words[2].text), Quote_Bytes(want), Quote_Bytes(have.left(2000)))};
}

QStringList Player::Log_Lines(bool mustExist) const {
    QFile f(m_platform->App_Path() + u'/' + m_platform->App_Exe_Name() + QStringLiteral(".log"));
    if (!f.open(QIODevice::ReadOnly)) {
        if (mustExist)
            throw Failure{QStringLiteral("there is no session log file")};
        return {};
    }
    const QByteArray all = f.readAll();
    QStringList lines;
    for (const QByteArray& l : all.split('\n'))
        lines << QString::fromUtf8(l);
    // Split at CR LF: every piece but the last lost its LF above and must end in CR.
    QStringList out;
    QString pending;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString piece = lines[i];
        if (i + 1 < lines.size()) {
            if (piece.endsWith(u'\r')) {
                piece.chop(1);
                out << pending + piece;
                pending.clear();
            } else {
                pending += piece + u'\n'; // a bare LF stays inside its line
            }
        } else {
            out << pending + piece;
        }
    }
    return out;
}

void Player::Expect_Log(const Command& c, const QString& what) {
    if (what == QLatin1String("nolog")) {
        Need_Args(c, 1, 1, "expect nolog");
        if (QFile::exists(m_platform->App_Path() + u'/' + m_platform->App_Exe_Name() +
                          QStringLiteral(".log")))
            throw Failure{QStringLiteral("a session log file exists")};
        return;
    }
    const QStringList lines = Log_Lines(true);
    if (what == QLatin1String("log")) {
        Need_Args(c, 2, 2, "expect log \"TEXT\"");
        for (const QString& l : lines)
            if (l.contains(c.words[2].text))
                return;
        throw Failure{
            QStringLiteral("no line of the session log contains %1").arg(Quoted_Text(c.words[2].text))};
    }
    if (what == QLatin1String("loglines")) {
        Need_Args(c, 2, 2, "expect loglines N");
        const QString have = QString::number(lines.size());
        if (have != c.words[2].text)
            throw Failure{QStringLiteral("the session log has %1 lines, not %2").arg(have, c.words[2].text)};
        return;
    }
    Need_Args(c, 3, 3, "expect logline N \"TEXT\"");
    bool ok = false;
    const int n = c.words[2].text.toInt(&ok);
    if (!ok || n < 1)
        throw Failure{QStringLiteral("\"%1\" is not a line number").arg(c.words[2].text)};
    if (n > lines.size())
        throw Failure{QStringLiteral("the session log has only %1 lines, there is no line %2")
                          .arg(lines.size())
                          .arg(n)};
    if (lines[n - 1] != c.words[3].text)
        throw Failure{QStringLiteral("line %1 of the session log is %2, not %3")
                          .arg(n)
                          .arg(Quoted_Text(lines[n - 1]), Quoted_Text(c.words[3].text))};
}

void Player::Expect_Ended(const Command& c) {
    Need_Args(c, 1, 1, "expect ended");
    Settle();
    const auto forms = ui::Forms::All();
    if (!forms.empty()) {
        QStringList names;
        for (const ui::Form* f : forms)
            names << f->objectName() + (f->isVisible() ? QString() : QStringLiteral(" (hidden)"));
        throw Failure{QStringLiteral("the program has not ended: forms left: %1")
                          .arg(names.join(QStringLiteral(", ")))};
    }
}

} // namespace hv::drive
