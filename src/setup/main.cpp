// halvenorts-setup: the installer's part that lays down the policy store.
//
//   halvenorts-setup create [DIR] [--force]
//   halvenorts-setup demo [DIR] [--force] [--report-rows N]
//   halvenorts-setup upgrade [DIR]
#include "platform/Platform.h"
#include "setup/StoreSetup.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstdio>

namespace {

int Usage(const char* why) {
    if (why)
        std::fprintf(stderr, "halvenorts-setup: %s\n", why);
    std::fprintf(stderr, "usage: halvenorts-setup create [DIR] [--force]\n"
                         "       halvenorts-setup demo [DIR] [--force] [--report-rows N]\n"
                         "       halvenorts-setup upgrade [DIR]\n"
                         "DIR defaults to $HALVENORTS_WINDIR, else /var/lib/halvenorts.\n");
    return 2;
}

int Failed(const QString& error) {
    std::fprintf(stderr, "halvenorts-setup: %s\n", error.toLocal8Bit().constData());
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return Usage(nullptr);
    const QString command = QString::fromLocal8Bit(argv[1]);
    const bool demo = command == QLatin1String("demo");
    const bool upgrade = command == QLatin1String("upgrade");
    if (command != QLatin1String("create") && !demo && !upgrade)
        return Usage("unknown command");

    bool force = false;
    long reportRows = hv::kDefaultDemoReportRows;
    QString dir;
    for (int i = 2; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (!upgrade && arg == QLatin1String("--force")) {
            force = true;
        } else if (demo && arg == QLatin1String("--report-rows")) {
            bool ok = false;
            reportRows = i + 1 < argc ? QString::fromLocal8Bit(argv[++i]).toLong(&ok) : 0;
            if (!ok || reportRows < 0)
                return Usage("--report-rows needs a number of rows");
        } else if (arg.startsWith(QLatin1String("--")) || !dir.isEmpty()) {
            return Usage("unexpected argument");
        } else {
            dir = arg;
        }
    }
    if (dir.isEmpty())
        dir = hv::Host_Windows_Directory();

    const QString path = QDir(dir).filePath(hv::Store_File_Name());
    QString error;
    if (upgrade) {
        if (!hv::Upgrade_Store(path, &error))
            return Failed(error);
        std::printf("%s now uses write-ahead logging\n",
                    QDir::toNativeSeparators(path).toLocal8Bit().constData());
        return 0;
    }
    if (!hv::Create_Store(path, force, &error))
        return Failed(error);
    if (demo &&
        !hv::Fill_Demo(path, reportRows, hv::Host_User_Name(), QDateTime::currentDateTime(), &error)) {
        QFile::remove(path); // a half-filled demo is no use to anyone
        return Failed(error);
    }
    std::printf("%s store written to %s\n", demo ? "Demo" : "New",
                QDir::toNativeSeparators(path).toLocal8Bit().constData());
    return 0;
}
