#pragma once
// The console's pictures, compiled into the program from resources/icons.
#include <QCursor>
#include <QIcon>
#include <QString>

namespace hv {

// A picture by image key ("WebsiteFilter", "AllUserMode", "Hand", "Logo", "login"...); a null icon for an
// unknown key. The first call makes the pictures available; the form catalogue makes that call before any
// form is built.
QIcon Console_Image(const QString& key);
void Init_Console_Images();
// The custom hand pointer (image "Hand") of the clickable labels and the feature entries.
QCursor Hand_Cursor();

} // namespace hv
