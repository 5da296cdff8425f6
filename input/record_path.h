// Matching the source path of a full-form record to a FILE entry of the info file.
#pragma once

#include <string>
#include <string_view>

#include "base/run_settings.h"

namespace qendor {

// The record path as it is matched: every backslash turned into "/", then
// every "../" removed until none is left, then the first character dropped
// when the first ":" stands at index 1 (a drive letter: C:/a.c gives :/a.c),
// then one leading "/" dropped.
std::string normaliseRecordPath(std::string_view path);

// The number ("%d") of the first entry of `sourceFiles`, in ascending order, whose path
// holds "/" followed by `normalisedPath`, or failing that, holds the first
// occurrence of `normalisedPath` at index 1. Empty when no entry matches.
std::string matchSourceFile(std::string_view normalisedPath,
                            const RunTable<std::string>& sourceFiles);

}  // namespace qendor
