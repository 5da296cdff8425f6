// Splits an assertion statement into the pieces the reports show.
#pragma once

#include <string_view>

namespace qendor {

// Splits `statement` into its first argument, second argument and message,
// each a view into `statement`. Each output is assigned only where the text
// yields it, so the caller's earlier values survive otherwise; a sequence
// diagram assertion with no "(" after its name empties all three. False
// (nothing assigned) when the text holds no assertion macro name.
bool parseAssertionMacro(std::string_view statement, std::string_view& firstArgument,
                         std::string_view& secondArgument, std::string_view& message);

// The first argument of the call of `macroName` in `statement`, a view into
// it; empty when there is none. An argument with neither a separator nor a
// ")" after it runs to the end of the text, untrimmed.
std::string_view macroFirstArgument(std::string_view statement, std::string_view macroName);

}  // namespace qendor
