// halvenorts-drive FILE... [-v]: plays scenario files against the console's real code, headless.
// Exit status: 0 when every expectation held, 1 when some file failed, 2 when some file could not be read.
#include "drive/Player.h"
#include "drive/Script.h"

#include "ui/Application.h"

#include <QApplication>
#include <QFile>
#include <QTextStream>
#include <cstdio>

namespace {

QtMessageHandler g_qtHandler = nullptr;

// The headless desktop says things about itself that no scenario is about; the rest goes through.
void Headless_Messages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.contains(QLatin1String("propagateSizeHints")) ||
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR")))
        return;
    if (g_qtHandler)
        g_qtHandler(type, context, message);
}

} // namespace

int main(int argc, char* argv[]) {
    g_qtHandler = qInstallMessageHandler(Headless_Messages);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    hv::ui::Application app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    QTextStream out(stdout);
    QTextStream err(stderr);
    bool verbose = false;
    QStringList files;
    for (const QString& a : QCoreApplication::arguments().mid(1)) {
        if (a == QLatin1String("-v") || a == QLatin1String("--verbose"))
            verbose = true;
        else
            files << a;
    }
    if (files.isEmpty()) {
        err << "usage: halvenorts-drive [-v] FILE...\n";
        return 2;
    }

    int status = 0;
    for (const QString& file : files) {
        QFile f(file);
        if (!f.open(QIODevice::ReadOnly)) {
            err << file << ":0: the file cannot be read\n";
            status = 2;
            continue;
        }
        const QByteArray content = f.readAll();
        std::vector<hv::drive::Command> commands;
        hv::drive::ParseError parseError;
        if (!hv::drive::Parse_Script(content, commands, parseError) ||
            !hv::drive::Player::Check_Script(commands, parseError)) {
            err << file << ':' << parseError.line << ": " << parseError.reason << '\n';
            status = 2;
            continue;
        }
        const int lastLine = int(content.count('\n')) + (content.endsWith('\n') ? 0 : 1);
        int rc = 0;
        {
            hv::drive::Player player(file, verbose, out, err);
            rc = player.Play(commands, lastLine);
        }
        if (verbose)
            out << file << (rc == 0 ? ": passed\n" : ": FAILED\n");
        out.flush();
        if (rc != 0 && status == 0)
            status = 1;
    }
    err.flush();
    return status;
}
