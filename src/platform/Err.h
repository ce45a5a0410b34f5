#pragma once
// The current run-time error: the record of the last failed operation, read by Show_Error and Log_Error.
//
// A failing operation calls Err().Raise(number), which fills the record and throws RunTimeFailure; the
// procedure's error target catches it, reports through Show_Error and clears the record on its way out,
// just as leaving a handled procedure clears the error. Descriptions are the classic run-time words so a
// user sees familiar text.
#include <QString>
#include <exception>

namespace hv {

namespace errnum {
inline constexpr long SubscriptOutOfRange = 9;
inline constexpr long TypeMismatch = 13;
inline constexpr long Overflow = 6;
inline constexpr long OutOfMemory = 7;
inline constexpr long InternalError = 51;
inline constexpr long InvalidProcedureCall = 5;
inline constexpr long ErrorLoadingDll = 48;
inline constexpr long BadFileNameOrNumber = 52;
inline constexpr long FileNotFound = 53;
inline constexpr long PathFileAccessError = 75;
inline constexpr long InvalidUseOfNull = 94;
inline constexpr long InvalidPropertyValue = 380;
inline constexpr long FileAlreadyOpen = 55;
inline constexpr long InputPastEndOfFile = 62;
inline constexpr long DllEntryPointNotFound = 453;
inline constexpr long IndexOutOfBounds = 35600;
} // namespace errnum

// Thrown by Raise; carries nothing, the record is in Err().
struct RunTimeFailure final : std::exception {
    const char* what() const noexcept override { return "run-time error"; }
};

class ErrObject final {
public:
    long Number = 0;
    QString Description;
    QString Source;

    // Fills the record (the classic description when none is given) and throws RunTimeFailure.
    [[noreturn]] void Raise(long number, const QString& description = {}, const QString& source = {});
    // Fills the record without throwing, for code that reports in place.
    void Set(long number, const QString& description = {}, const QString& source = {});
    void Clear();

    static QString Classic_Description(long number);
};

ErrObject& Err();

inline const QString kAppTitle = QStringLiteral("HalvenorTS");

} // namespace hv
