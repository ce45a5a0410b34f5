#pragma once
// Copies one user's policy, feature by feature, onto other users. The feature pages open it with their
// own feature ticked.
#include "ui/Form.h"

namespace hv {

class frmCopySettings final : public ui::Form {
    Q_OBJECT
public:
    frmCopySettings();
    // Ticks the feature with this text (nothing for a text that names none) and shows the page modally.
    void Show_This_Form(const QString& strFeature);
    void Open(const QString& word, QWidget* owner) override {
        (void)owner;
        Show_This_Form(word);
    }
};

} // namespace hv
