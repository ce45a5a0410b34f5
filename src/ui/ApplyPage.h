#pragma once
// The base of the settings pages whose single settings are saved by Apply: Apply and Close, the product's
// web address that opens on a click, and Esc acting as Close. cmdApply enabled is the page's mark of
// changes not yet saved; closing never asks about them.
#include "ui/Controls.h"
#include "ui/Form.h"

#include <QHBoxLayout>

namespace hv::ui {

class ApplyPage : public Form {
    Q_OBJECT
public:
    explicit ApplyPage(const QString& formName);

    CommandButton* cmdApply = nullptr;
    CommandButton* cmdClose = nullptr;
    // Null on pages that do not show the address.
    Label* lblHomeSite = nullptr;

protected:
    // Runs inside the page's error target: a run-time failure is reported and ends it.
    virtual void cmdApply_Click() = 0;
    void cmdClose_Click() { Unload(); }
    void Form_KeyPress(int& KeyAscii) override;

    // The page's bottom row: the web address when asked for, then Apply and Close.
    QHBoxLayout* Button_Row(bool withHomeSite);
    // What a change to the settings does.
    void Mark_Changed() { cmdApply->setEnabled(true); }
    // After a save that went through: the page holds nothing unsaved any more, and says so.
    void Saved(const QString& message);
};

} // namespace hv::ui
