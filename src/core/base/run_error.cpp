#include "base/run_error.h"

namespace ferrolund::base::err {

RunError FileNotFound(const std::string& path) { return {kFileNotFound, "File not found: " + path}; }
RunError PathNotFound(const std::string& path) { return {kPathNotFound, "Path not found: " + path}; }
RunError PathFileAccess(const std::string& path) { return {kPathFileAccess, "Path/File access error: " + path}; }
RunError Overflow() { return {kOverflow, "Overflow"}; }
RunError SubscriptOutOfRange() { return {kSubscriptOutOfRange, "Subscript out of range"}; }
RunError InputPastEnd() { return {kInputPastEnd, "Input past end of file"}; }
RunError TypeMismatch() { return {kTypeMismatch, "Type mismatch"}; }

}  // namespace ferrolund::base::err
