// Parsers of the marked pieces behind the user's message in an SD assertion
// text. Each writes only the outputs its steps reach; the others keep the
// caller's values. The pieces are views into `text`.
#pragma once

#include <string>
#include <string_view>

namespace qendor {

// " - progress value/max": writes value and max, and coverage (percent,
// rounded half up) when max is not 0. True when coverage was written.
bool parseProgress(std::string_view text, std::string_view& value, std::string_view& max,
                   std::string& coverage);

// " - [Arbiter ASSERT: ": kind "internal" or "external".
bool parseArbiterKind(std::string_view text, std::string_view& kind);

// "GUID " and the 36 characters behind it (guid is emptied first).
bool parseGuid(std::string_view text, std::string_view& guid);

// "- no:" inr "," onr.
bool parseNumberPair(std::string_view text, std::string_view& inr, std::string_view& onr);

// The text before the first marker.
std::string_view parseUserMessage(std::string_view text);

}  // namespace qendor
