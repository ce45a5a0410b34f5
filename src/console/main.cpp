// The console's process: the desktop platform, the page catalogue, Main, and the forms' message loop for
// as long as any form is there.
#include "console/FormCatalog.h"
#include "console/modProgram.h"
#include "platform/qt/QtPlatform.h"
#include "ui/Application.h"
#include "ui/Forms.h"

int main(int argc, char* argv[]) {
    hv::ui::Application app(argc, argv);
    // The process ends when the last form is gone, not when the last window closes: between the login
    // form and the main console there is a moment with no window at all.
    QApplication::setQuitOnLastWindowClosed(false);

    hv::QtPlatform desktop;
    hv::Set_Platform(&desktop);
    hv::Register_All_Forms();

    // The command line as one text, as the program receives it.
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    hv::Run_Main(words.join(u' '));

    const int rc = hv::ui::Forms::Run_While_Any_Form();
    hv::Set_Platform(nullptr);
    return rc;
}
