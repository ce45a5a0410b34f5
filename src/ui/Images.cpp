#include "ui/Images.h"

#include <QFile>

// The compiled-in pictures live in a static library: their registration has to be asked for by name,
// from outside any namespace.
static void Init_Icon_Resource() {
    Q_INIT_RESOURCE(icons);
}

namespace hv {

void Init_Console_Images() {
    static const bool done = [] {
        Init_Icon_Resource();
        return true;
    }();
    (void)done;
}

QIcon Console_Image(const QString& key) {
    Init_Console_Images();
    const QString path = QStringLiteral(":/icons/%1.png").arg(key);
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QCursor Hand_Cursor() {
    // The hand's fingertips are the hot spot.
    return QCursor(Console_Image(QStringLiteral("Hand")).pixmap(24, 24), 11, 1);
}

} // namespace hv
