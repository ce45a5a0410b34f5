#include "appcontrol/frmDeviceSettings.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "store/modDBFunctions.h"
#include "ui/Images.h"
#include "ui/PageSwitches.h"
#include "ui/Session.h"

#include <QFrame>
#include <QGroupBox>
#include <QVBoxLayout>
#include <iterator>

namespace hv {

namespace {
const char* const kOptionCaptions[] = {"Lock", "Unlock", "Read Only"};

struct DeviceDesign {
    const char* optName;
    const char* labelName;
    const char* caption;
    const char* pictureName;
    const char* image;
    const char* containerName;
    long mask;
    long shift;
    const char* lockTip;
    const char* unlockTip;
};
const DeviceDesign kDevices[] = {
    {.optName = "optFloppy",
     .labelName = "lblFloppy",
     .caption = "Floppy Drive",
     .pictureName = "picFloppy",
     .image = "imgFloppy",
     .containerName = "picFloppyContainer",
     .mask = 3,
     .shift = 0,
     .lockTip = "Click to Lock the Floppy",
     .unlockTip = "Click to Unlock the Floppy"},
    {.optName = "optCDDVD",
     .labelName = "lblCdDvd",
     .caption = "CD/DVD Drive",
     .pictureName = "picCDDVD",
     .image = "imgCdDvd",
     .containerName = "picCDContainer",
     .mask = 12,
     .shift = 2,
     .lockTip = "Click to Lock the CD/DVD",
     .unlockTip = "Click to Unlock the CD/DVD"},
    {.optName = "optUSB",
     .labelName = "lblUSB",
     .caption = "USB Mass Storage",
     .pictureName = "picUSB",
     .image = "imgUsb",
     .containerName = "picUSBContainer",
     .mask = 48,
     .shift = 4,
     .lockTip = "Click to Lock the USB",
     .unlockTip = "Click to Unlock the USB"},
};
} // namespace

void Is_Device_Field(long stored, long mask, long fieldValue, long shift, bool& isField) {
    isField = ((stored & mask) >> shift) == fieldValue;
}

void Add_Device_Field(long& value, long fieldValue, long shift) {
    value += fieldValue << shift;
}

frmDeviceSettings::frmDeviceSettings() : ui::ApplyPage(QStringLiteral("frmDeviceSettings")) {
    auto* fraDevice = new QGroupBox(QStringLiteral("Device Lock"), this);
    fraDevice->setObjectName(QStringLiteral("fraDevice"));
    auto* devices = new QVBoxLayout(fraDevice);
    for (size_t i = 0; i < std::size(kDevices); ++i)
        devices->addWidget(Build_Device(i));

    cmdCopySettings =
        new ui::CommandButton(QStringLiteral("cmdCopySettings"), QStringLiteral("Copy Settings"), this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraDevice);
    QHBoxLayout* buttons = Button_Row(false);
    buttons->insertWidget(0, cmdCopySettings);
    layout->addLayout(buttons);

    for (Device* d : Devices())
        for (ui::OptionButton* opt : d->opt)
            connect(opt, &ui::OptionButton::Click, this, [this] { Mark_Changed(); });
    connect(cmdCopySettings, &ui::CommandButton::Click, this, &frmDeviceSettings::cmdCopySettings_Click);
}

// A device's row: its picture and name, then its three options on a container of their own, so that each
// device's options exclude only each other; a separator line under it.
QWidget* frmDeviceSettings::Build_Device(size_t index) {
    const DeviceDesign& design = kDevices[index];
    Device& device = *Devices()[index];
    device.mask = design.mask;
    device.shift = design.shift;

    auto* row = new QWidget(this);
    auto* rowLayout = new QVBoxLayout(row);
    auto* holder = new QFrame(row);
    holder->setObjectName(QLatin1String(design.containerName));
    auto* line = new QHBoxLayout(holder);
    device.picture = new ui::Label(QLatin1String(design.pictureName), QString(), holder);
    line->addWidget(device.picture);
    auto* name = new ui::Label(QLatin1String(design.labelName), QLatin1String(design.caption), holder);
    name->setMinimumWidth(140);
    line->addWidget(name);
    for (size_t i = 0; i < device.opt.size(); ++i) {
        device.opt[i] = new ui::OptionButton(ui::Array_Name(QLatin1String(design.optName), int(i)),
                                             QLatin1String(kOptionCaptions[i]), holder);
        line->addWidget(device.opt[i]);
    }
    rowLayout->addWidget(holder);
    auto* separator = new QFrame(row);
    separator->setObjectName(ui::Array_Name(QStringLiteral("fraLine"), int(index)));
    separator->setFrameShape(QFrame::HLine);
    rowLayout->addWidget(separator);
    return row;
}

void frmDeviceSettings::Form_Load() {
    Guarded([this] {
        Set_Caption(QStringLiteral("Device Lock - ") + Current_User_Text());
        Set_Tool_Tips();
        Load_Pictures();
        Load_State();
        Set_Controls_Enabled();
        // Last: setting the options raised their Click.
        cmdApply->setEnabled(false);
    });
}

// Lock and Unlock have tips; Read Only has none.
void frmDeviceSettings::Set_Tool_Tips() {
    for (size_t i = 0; i < std::size(kDevices); ++i) {
        Devices()[i]->opt[0]->setToolTip(QLatin1String(kDevices[i].lockTip));
        Devices()[i]->opt[1]->setToolTip(QLatin1String(kDevices[i].unlockTip));
    }
}

void frmDeviceSettings::Load_Pictures() {
    for (size_t i = 0; i < std::size(kDevices); ++i)
        Devices()[i]->picture->Set_Picture(Console_Image(QLatin1String(kDevices[i].image)));
}

void frmDeviceSettings::Load_State() {
    const Subject subject = Current_Subject();
    if (!Get_Device_Lock(subject.computerId, subject.userId, m_lngDeviceLock))
        return;
    for (Device* d : Devices())
        for (size_t i = 0; i < d->opt.size(); ++i) {
            bool isField = false;
            Is_Device_Field(m_lngDeviceLock, d->mask, kDeviceFieldValues[i], d->shift, isField);
            d->opt[i]->Set_Value(isField);
        }
}

void frmDeviceSettings::Set_Controls_Enabled() {
    ui::Enable_Unless_Remote({cmdApply});
    for (Device* d : Devices())
        for (ui::OptionButton* opt : d->opt)
            opt->setEnabled(!Remote_Mode);
}

void frmDeviceSettings::cmdApply_Click() {
    long value = 0;
    // Not started afresh for each device: a device none of whose options is selected (its field held 2)
    // takes the field value of the device before it. Stored values have always been written this way.
    long field = 0;
    for (Device* d : Devices()) {
        for (size_t i = 0; i < d->opt.size(); ++i)
            if (d->opt[i]->Value())
                field = kDeviceFieldValues[i];
        Add_Device_Field(value, field, d->shift);
    }
    const Subject subject = Current_Subject();
    if (Set_Device_Lock(subject.computerId, subject.userId, value))
        Saved(QStringLiteral("Successfully saved the Device Status"));
}

void frmDeviceSettings::cmdCopySettings_Click() {
    Show_Page(QStringLiteral("frmCopySettings"), QStringLiteral("Device Settings"));
}

} // namespace hv
