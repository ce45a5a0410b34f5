#pragma once
// Plays one scenario file in a world of its own: a scripted platform with fresh Windows and executable
// folders, a fresh working directory, the page catalogue, and the console's real code run in-process.
#include "drive/Lookup.h"
#include "drive/Script.h"

#include <QTemporaryDir>
#include <QTextStream>
#include <functional>
#include <map>
#include <memory>

namespace hv {
class ScriptedPlatform;
}

namespace hv::drive {

class Player final {
public:
    Player(const QString& fileName, bool verbose, QTextStream& out, QTextStream& err);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // 0 when every expectation held; 1 after the first failure (reported as "file:line: reason").
    int Play(const std::vector<Command>& commands, int lastLine);

    // Before anything runs: every line must begin with a command the driver knows, and an expectation
    // with a kind it knows; false with the first line that does not.
    static bool Check_Script(const std::vector<Command>& commands, ParseError& error);

private:
    using Handler = void (Player::*)(const Command&);
    static const std::map<QString, Handler>& Handlers();

    void Run(const Command& c);
    void Settle();
    void Echo_Log();
    void Say(const QString& line);
    QString Store_Path() const;
    QString Work_Path(const QString& path) const;
    const Word& Arg(const Command& c, size_t i, const char* what) const;
    void Need_Args(const Command& c, size_t min, size_t max, const char* usage) const;

    // The world.
    void Cmd_Store(const Command& c);
    void Cmd_Sql(const Command& c);
    void Cmd_User(const Command& c);
    void Cmd_Now(const Command& c);
    void Cmd_Instance(const Command& c);
    void Cmd_Wow64(const Command& c);
    void Cmd_Provider(const Command& c);
    void Cmd_Registry(const Command& c);
    void Cmd_Http(const Command& c);
    void Cmd_Write(const Command& c);

    // Actions.
    void Cmd_Start(const Command& c);
    void Cmd_Show(const Command& c);
    void Cmd_Click(const Command& c);
    void Cmd_Menu(const Command& c);
    void Cmd_Set(const Command& c);
    void Cmd_Type(const Command& c);
    void Cmd_Key(const Command& c);
    void Cmd_Choose(const Command& c);
    void Cmd_Select(const Command& c);
    void Cmd_ItemClick(const Command& c);
    void Cmd_DblClick(const Command& c);
    void Cmd_Check(const Command& c);
    void Cmd_Uncheck(const Command& c);
    void Cmd_LabelEdit(const Command& c);
    void Cmd_Node(const Command& c);
    void Cmd_SetTime(const Command& c);
    void Cmd_SetDate(const Command& c);
    void Cmd_Focus(const Command& c);
    void Cmd_Close(const Command& c);
    void Cmd_Tick(const Command& c);
    void Cmd_Resize(const Command& c);
    void Cmd_Answer(const Command& c);
    void Cmd_Dialog(const Command& c);
    void Cmd_Skip(const Command& c);

    // Expectations.
    void Cmd_Expect(const Command& c);
    void Expect_Msgbox(const Command& c);
    void Expect_Property(const Command& c);
    void Expect_Rows(const Command& c, const QString& what);
    void Expect_Sql(const Command& c);
    void Expect_File(const Command& c, const QString& what);
    void Expect_Log(const Command& c, const QString& what);
    void Expect_Ended(const Command& c);
    QStringList Log_Lines(bool mustExist) const;

    // A user's action on a control that is disabled does nothing; true when it may go on.
    bool Reachable(const Target& t);
    void Key_Press(QWidget* w, int key);

    QString m_fileName;
    bool m_verbose;
    QTextStream& m_out;
    QTextStream& m_err;

    std::unique_ptr<ScriptedPlatform> m_platform;
    std::unique_ptr<QTemporaryDir> m_workDir;
    QString m_oldCwd;
    size_t m_boxesSeen = 0; // boxes consumed by expectations
    qint64 m_logEchoed = 0; // bytes of the session log already shown in the transcript
};

} // namespace hv::drive
