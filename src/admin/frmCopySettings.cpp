#include "admin/frmCopySettings.h"

namespace hv {

frmCopySettings::frmCopySettings() : ui::Form(QStringLiteral("frmCopySettings")) {}

// The copy itself is not offered yet; the feature pages' buttons already lead here. Nothing is shown, so
// the instance goes again at once rather than linger unseen.
void frmCopySettings::Show_This_Form(const QString& strFeature) {
    (void)strFeature;
    Unload();
}

} // namespace hv
