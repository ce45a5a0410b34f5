#pragma once
// The file dialog is part of the page kit; the rule list pages reach it under its old place as well.
#include "ui/CommonDialog.h"
