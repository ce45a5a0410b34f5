// shoot_screens [DIR]: pictures of the login form and of the main console on a demo store, for the README.
// Runs headless (Qt's offscreen platform) with the scripted desktop, so nothing on the machine is touched;
// writes DIR/login.png and DIR/main.png (DIR defaults to docs/screenshots). Text needs a font that
// fontconfig finds (Debian: fonts-dejavu-core).
#include "console/FormCatalog.h"
#include "console/frmLogin.h"
#include "console/frmMain.h"
#include "console/modProgram.h"
#include "setup/StoreSetup.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Forms.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <cstdio>

namespace {

bool Save(QWidget& w, const QString& path) {
    QApplication::processEvents();
    const QPixmap shot = w.grab();
    if (shot.isNull() || !shot.save(path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s: %dx%d\n", qPrintable(path), shot.width(), shot.height());
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString outDir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs/screenshots");
    if (!QDir().mkpath(outDir)) {
        std::fprintf(stderr, "cannot make %s\n", qPrintable(outDir));
        return 1;
    }

    hv::ScriptedPlatform desktop;
    hv::PlatformScope scope(desktop);
    desktop.userName = QStringLiteral("jsmith");
    const QString store = desktop.Windows_Directory() + QLatin1Char('/') + hv::Store_File_Name();
    QString error;
    if (!hv::Create_Store(store, true, &error) ||
        !hv::Fill_Demo(store, 200, QString(), desktop.now, &error)) {
        std::fprintf(stderr, "demo store: %s\n", qPrintable(error));
        return 1;
    }

    hv::Register_All_Forms();
    hv::Main(QString());
    auto* login = qobject_cast<hv::frmLogin*>(hv::ui::Forms::Find(QStringLiteral("frmLogin")));
    if (!login) {
        std::fprintf(stderr, "the login form did not come up\n");
        return 1;
    }
    login->txtPassword->Set_Text(QStringLiteral("Watchman"));
    if (!Save(*login, outDir + QStringLiteral("/login.png")))
        return 1;

    login->cmdLogin_Click();
    auto* main = qobject_cast<hv::frmMain*>(hv::ui::Forms::Find(QStringLiteral("frmMain")));
    if (!main || !main->isVisible()) {
        std::fprintf(stderr, "the main console did not come up\n");
        return 1;
    }
    // A user with the scheduler on, and one entry picked, as an administrator would see it at work.
    main->cboUsers->User_Choose(main->cboUsers->findText(QStringLiteral("mgarcia")));
    main->lvwMain[0]->User_Item_Click(1);
    const bool ok = Save(*main, outDir + QStringLiteral("/main.png"));
    main->Unload();
    for (const auto& box : desktop.boxes)
        std::fprintf(stderr, "message box: %s\n", qPrintable(box.text));
    return ok && desktop.boxes.empty() ? 0 : 1;
}
