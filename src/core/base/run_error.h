#pragma once
// Run-time failures travel as values: a core routine returns what went wrong and the
// command that called it reports it and carries on with its next step.

#include <optional>
#include <string>

namespace ferrolund::base {

struct RunError {
    int number = 0;           // the classic run-time error numbers (53 file not found, ...)
    std::string description;  // Windows-1252 text shown to the user and written to the log
};

// Empty means success.
using Status = std::optional<RunError>;

namespace err {
inline constexpr int kOverflow = 6;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kInputPastEnd = 62;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kUnsupportedValueType = 1001;

RunError FileNotFound(const std::string& path);
RunError PathNotFound(const std::string& path);
RunError PathFileAccess(const std::string& path);
RunError Overflow();
RunError SubscriptOutOfRange();
RunError InputPastEnd();
RunError TypeMismatch();
}  // namespace err

}  // namespace ferrolund::base
