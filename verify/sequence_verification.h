// Checks recorded messages one by one against a sequence diagram.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/run_settings.h"

namespace qendor {

// Accepts `message` at or after `position` in `lines` under the operator
// rules, moving `position` past the matched line. On false the position stays
// where the search stopped. Throws std::out_of_range when a scan runs past the
// last line or a marker lacks its "(" suffix. When the rules would come back
// to a line they are still evaluating for this message (and so would never
// end), the message is rejected: false, with `position` on that line. A list
// of any length is handled without deep recursion.
bool verifySdMessage(const std::string& message, size_t& position, const SequenceLines& lines);

// The same over the test case's `run().sequenceLines`; false when it holds no
// list.
bool verifySdMessage(const std::string& message, size_t& position, int32_t testCase);

// True when a line equal to `message` follows the "LOOP_OPERAND_BEGIN" line at
// `beginIndex` before the operand's closing marker.
bool loopOperandContains(const std::string& message, size_t beginIndex, const SequenceLines& lines);
bool loopOperandContains(const std::string& message, size_t beginIndex, int32_t testCase);

}  // namespace qendor
