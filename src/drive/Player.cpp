#include "drive/Player.h"

#include "console/FormCatalog.h"
#include "console/modProgram.h"
#include "platform/Err.h"
#include "testing/ScriptedPlatform.h"
#include "setup/StoreSetup.h"
#include "ui/Forms.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <exception>

namespace hv::drive {

Player::Player(const QString& fileName, bool verbose, QTextStream& out, QTextStream& err)
    : m_fileName(fileName), m_verbose(verbose), m_out(out), m_err(err) {
    m_platform = std::make_unique<ScriptedPlatform>();
    m_workDir = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/hv-work-XXXXXX"));
    m_oldCwd = QDir::currentPath();
    QDir::setCurrent(m_workDir->path());
    if (m_verbose)
        m_platform->onEvent = [this](const QString& line) {
            // Log lines written before this event come first, so the transcript keeps their order.
            Echo_Log();
            Say(QStringLiteral("    ") + line);
        };
    Set_Platform(m_platform.get());
    Reset_Process_State();
    Register_All_Forms();
}

Player::~Player() {
    // Whatever the scenario left open goes with its world, before the world itself.
    std::vector<QPointer<ui::Form>> left;
    for (ui::Form* f : ui::Forms::All())
        left.emplace_back(f);
    for (const QPointer<ui::Form>& f : left)
        delete f.data();
    Settle();
    Reset_Process_State();
    Set_Platform(nullptr);
    QDir::setCurrent(m_oldCwd);
}

void Player::Say(const QString& line) {
    m_out << line << '\n';
    m_out.flush();
}

QString Player::Store_Path() const {
    return m_platform->Windows_Directory() + u'/' + Store_File_Name();
}

QString Player::Work_Path(const QString& path) const {
    if (path.isEmpty() || QFileInfo(path).isAbsolute())
        return path;
    return QDir::cleanPath(m_workDir->path() + u'/' + path);
}

const Word& Player::Arg(const Command& c, size_t i, const char* what) const {
    if (i >= c.words.size())
        throw Failure{QStringLiteral("%1: missing %2").arg(c.words[0].text, QLatin1String(what))};
    return c.words[i];
}

void Player::Need_Args(const Command& c, size_t min, size_t max, const char* usage) const {
    const size_t n = c.words.size() - 1;
    if (n < min || n > max)
        throw Failure{QStringLiteral("wrong number of words; write: %1").arg(QLatin1String(usage))};
}

const std::map<QString, Player::Handler>& Player::Handlers() {
    static const std::map<QString, Handler> table = {
        {QStringLiteral("store"), &Player::Cmd_Store},
        {QStringLiteral("sql"), &Player::Cmd_Sql},
        {QStringLiteral("user"), &Player::Cmd_User},
        {QStringLiteral("now"), &Player::Cmd_Now},
        {QStringLiteral("instance"), &Player::Cmd_Instance},
        {QStringLiteral("wow64"), &Player::Cmd_Wow64},
        {QStringLiteral("provider"), &Player::Cmd_Provider},
        {QStringLiteral("registry"), &Player::Cmd_Registry},
        {QStringLiteral("http"), &Player::Cmd_Http},
        {QStringLiteral("write"), &Player::Cmd_Write},
        {QStringLiteral("start"), &Player::Cmd_Start},
        {QStringLiteral("show"), &Player::Cmd_Show},
        {QStringLiteral("click"), &Player::Cmd_Click},
        {QStringLiteral("menu"), &Player::Cmd_Menu},
        {QStringLiteral("set"), &Player::Cmd_Set},
        {QStringLiteral("type"), &Player::Cmd_Type},
        {QStringLiteral("key"), &Player::Cmd_Key},
        {QStringLiteral("choose"), &Player::Cmd_Choose},
        {QStringLiteral("select"), &Player::Cmd_Select},
        {QStringLiteral("itemclick"), &Player::Cmd_ItemClick},
        {QStringLiteral("dblclick"), &Player::Cmd_DblClick},
        {QStringLiteral("check"), &Player::Cmd_Check},
        {QStringLiteral("uncheck"), &Player::Cmd_Uncheck},
        {QStringLiteral("labeledit"), &Player::Cmd_LabelEdit},
        {QStringLiteral("node"), &Player::Cmd_Node},
        {QStringLiteral("settime"), &Player::Cmd_SetTime},
        {QStringLiteral("setdate"), &Player::Cmd_SetDate},
        {QStringLiteral("focus"), &Player::Cmd_Focus},
        {QStringLiteral("close"), &Player::Cmd_Close},
        {QStringLiteral("tick"), &Player::Cmd_Tick},
        {QStringLiteral("resize"), &Player::Cmd_Resize},
        {QStringLiteral("answer"), &Player::Cmd_Answer},
        {QStringLiteral("dialog"), &Player::Cmd_Dialog},
        {QStringLiteral("skip"), &Player::Cmd_Skip},
        {QStringLiteral("expect"), &Player::Cmd_Expect},
    };
    return table;
}

bool Player::Check_Script(const std::vector<Command>& commands, ParseError& error) {
    static const QStringList expectations = {
        QStringLiteral("msgbox"),   QStringLiteral("nomsgbox"),     QStringLiteral("rows"),
        QStringLiteral("row"),      QStringLiteral("selected"),     QStringLiteral("checked"),
        QStringLiteral("bold"),     QStringLiteral("rowtag"),       QStringLiteral("colwidth"),
        QStringLiteral("shown"),    QStringLiteral("notshown"),     QStringLiteral("caption"),
        QStringLiteral("sql"),      QStringLiteral("filecontains"), QStringLiteral("file"),
        QStringLiteral("nofile"),   QStringLiteral("log"),          QStringLiteral("logline"),
        QStringLiteral("loglines"), QStringLiteral("nolog"),        QStringLiteral("launched"),
        QStringLiteral("registry"), QStringLiteral("ended")};
    for (const Command& c : commands) {
        const Word& verb = c.words.front();
        if (verb.quoted || verb.contains || Handlers().count(verb.text.toLower()) == 0) {
            error = ParseError{c.line, QStringLiteral("unknown command %1").arg(Quoted_Text(verb.text))};
            return false;
        }
        if (!verb.Is("expect"))
            continue;
        if (c.words.size() < 2) {
            error = ParseError{c.line, QStringLiteral("expect what? (msgbox, rows, sql, log, ended, ...)")};
            return false;
        }
        const Word& what = c.words[1];
        const bool property = !what.quoted && !what.contains && what.text.contains(u'.');
        if (!property && (what.quoted || what.contains || !expectations.contains(what.text.toLower()))) {
            error = ParseError{c.line, QStringLiteral("unknown expectation %1").arg(Quoted_Text(what.text))};
            return false;
        }
    }
    return true;
}

void Player::Run(const Command& c) {
    const Word& verb = c.words.front();
    if (verb.quoted || verb.contains)
        throw Failure{QStringLiteral("a command begins with a keyword, not a quoted text")};
    const auto it = Handlers().find(verb.text.toLower());
    if (it == Handlers().end())
        throw Failure{QStringLiteral("unknown command \"%1\"").arg(verb.text)};
    (this->*(it->second))(c);
}

// Lets what the command set going run to its end: posted events, and forms that were unloaded.
void Player::Settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void Player::Echo_Log() {
    QFile f(m_platform->App_Path() + u'/' + m_platform->App_Exe_Name() + QStringLiteral(".log"));
    if (!f.open(QIODevice::ReadOnly)) {
        m_logEchoed = 0;
        return;
    }
    if (f.size() < m_logEchoed)
        m_logEchoed = 0; // the log was started anew
    if (f.size() == m_logEchoed)
        return;
    f.seek(m_logEchoed);
    const QByteArray added = f.readAll();
    m_logEchoed += added.size();
    const QList<QByteArray> lines = added.split('\n');
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (!line.isEmpty())
            Say(QStringLiteral("    log: ") + QString::fromUtf8(line));
    }
}

int Player::Play(const std::vector<Command>& commands, int lastLine) {
    for (const Command& c : commands) {
        if (m_verbose)
            Say(QStringLiteral("%1:%2: %3").arg(m_fileName).arg(c.line).arg(c.source));
        QString failure;
        try {
            Run(c);
            Settle();
        } catch (const Failure& f) {
            failure = f.reason;
        } catch (const RunTimeFailure&) {
            failure = QStringLiteral("run-time error %1 (%2) was not handled by the program")
                          .arg(Err().Number)
                          .arg(Err().Description);
            Err().Clear();
        } catch (const std::exception& e) {
            failure = QStringLiteral("the program failed: %1").arg(QString::fromLocal8Bit(e.what()));
        }
        if (m_verbose)
            Echo_Log();
        if (failure.isEmpty() && !m_platform->failure.isEmpty())
            failure = m_platform->failure;
        if (!failure.isEmpty()) {
            // One line, whatever the reason quotes from the program.
            failure.replace(u'\r', QStringLiteral("\\r")).replace(u'\n', QStringLiteral("\\n"));
            m_err << m_fileName << ':' << c.line << ": " << failure << '\n';
            m_err.flush();
            return 1;
        }
    }
    // Every box the scenario caused is part of what it tests.
    if (m_boxesSeen < m_platform->boxes.size()) {
        const RecordedBox& b = m_platform->boxes[m_boxesSeen];
        m_err << m_fileName << ':' << lastLine
              << ": a message box was shown and never expected: " << Quoted_Text(b.text) << " ("
              << (m_platform->boxes.size() - m_boxesSeen - 1) << " more after it)" << '\n';
        m_err.flush();
        return 1;
    }
    return 0;
}

} // namespace hv::drive
