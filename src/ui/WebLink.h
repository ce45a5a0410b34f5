#pragma once
// Labels that are links to the product's site or mail: the custom hand pointer and the link's colour and
// underline. What a click opens goes through the platform's shell.
#include "ui/Controls.h"

namespace hv::ui {

// Makes a label look and point like a link.
void Style_As_Link(Label* label);

// The `lblHomeSite` label every page with a home-site link carries: the web host, as a link. Its page
// connects Click to its own `lblHomeSite_Click`, which calls Open_Home_Site.
Label* Home_Site_Label(QWidget* parent);

// Opens the product's home page.
void Open_Home_Site();

} // namespace hv::ui
