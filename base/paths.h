// Path and name helpers. The program builds its paths with backslashes between
// directory and file name on every platform and turns them into "/" here,
// before any file operation.
#pragma once

#include <string>
#include <string_view>

namespace qendor {

// Replaces every separator of the other kind by `separator` ("/" when empty)
// and removes every double quote. Nothing else changes.
std::string normalisePath(std::string_view path, std::string_view separator = "");

// The same for a setting that may be unset: null reads as empty.
std::string normalisePath(const char* path, std::string_view separator = "");

// The file name stem of a report or verification file: the part after the
// last ":" and then after the last "." (Lib::Pkg.Ctx.CaseOne gives CaseOne).
std::string baseReportName(std::string_view name);

// A dotted full name cut before its last "." (the whole name without one):
// the test context a test case belongs to.
std::string_view contextOf(std::string_view fullName);

// The text after the last `separator` (the whole text without one).
std::string_view afterLast(std::string_view text, char separator);

}  // namespace qendor
