#pragma once
// The two bit columns of a subject's row. FEATURE_BITS says what the administrator has enabled;
// STATUS_BITS is the console's one signal to the enforcement side, which reads it from the store.
// The reads and writes of these columns are in modDBFunctions.h.

namespace hv {

inline constexpr long FEATURE_INTERNET_SCHEDULER = 1;
inline constexpr long FEATURE_PORT_FILTER = 2;
inline constexpr long FEATURE_URL_FILTER = 4;
inline constexpr long FEATURE_FILE_FILTER = 8;
// 16 is not used.
inline constexpr long FEATURE_SMTP_FILTER = 32;
inline constexpr long FEATURE_POP3_FILTER = 64;
inline constexpr long FEATURE_EXE_BLOCKER = 128;
inline constexpr long FEATURE_WINDOW_BLOCKER = 256;
inline constexpr long FEATURE_APP_SCHEDULER = 512;
// 1024 is not used.
inline constexpr long FEATURE_URL_REPORTING = 2048;
inline constexpr long FEATURE_APP_REPORTING = 4096;
inline constexpr long FEATURE_DEVICE_REPORTING = 8192;
inline constexpr long FEATURE_EMAIL_REPORTING = 16384;

// Set when the administrator turns the internet OFF, cleared when ON is applied. The other bits of
// the column belong to the enforcement components.
inline constexpr long STATUS_INTERNET_ON_OFF = 4;

// Sets or clears `flag` in an in-memory mask (CLIENT_OPTIONS of General Options). Clearing works with
// the 31-bit all-ones constant, so every clearing call also drops bit 31 of the mask; stored values
// have always been written that way and the behaviour stays. Always true.
bool Apply_Bit(long& mask, long flag, bool on);

} // namespace hv
