#pragma once
// What may be done with removable storage, for the selected subject: floppy, CD/DVD and USB mass storage,
// each Lock, Unlock or Read Only, held as three two-bit fields of DEVICE_LOCK.
#include "ui/ApplyPage.h"

#include <array>

namespace hv {

class frmDeviceSettings final : public ui::ApplyPage {
    Q_OBJECT
public:
    frmDeviceSettings();

    // One device's group: its options by index (Lock, Unlock, Read Only), its picture and its field in
    // the column.
    struct Device {
        std::array<ui::OptionButton*, 3> opt{};
        ui::Label* picture = nullptr;
        long mask = 0;
        long shift = 0;
    };

    ui::CommandButton* cmdCopySettings = nullptr;
    Device optFloppy, optCDDVD, optUSB;

protected:
    void Form_Load() override;
    void cmdApply_Click() override;

private:
    void Set_Tool_Tips();
    void Load_Pictures();
    void Load_State();
    void Set_Controls_Enabled();
    void cmdCopySettings_Click();
    // Floppy, CD/DVD and USB: the order of loading and of Apply.
    std::array<Device*, 3> Devices() { return {&optFloppy, &optCDDVD, &optUSB}; }
    QWidget* Build_Device(size_t index);

    long m_lngDeviceLock = 0;
};

// The field value of each option index: Lock 0, Unlock 1, Read Only 3. No option shows 2.
inline constexpr std::array<long, 3> kDeviceFieldValues{0, 1, 3};
// (stored AND mask) / 2^shift equals the field value.
void Is_Device_Field(long stored, long mask, long fieldValue, long shift, bool& isField);
// Adds the field value times 2^shift.
void Add_Device_Field(long& value, long fieldValue, long shift);

} // namespace hv
