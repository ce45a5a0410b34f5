#pragma once
// The file dialog moved into the page kit; this name stays for code written against the old place.
#include "ui/CommonDialog.h"
