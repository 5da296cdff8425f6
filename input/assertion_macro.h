// Splits an assertion statement into the pieces the reports show.
#pragma once

#include <string>
#include <string_view>

namespace qendor {

// Splits `statement` into its first argument, second argument and message.
// Each output is assigned only where the text yields it, so the caller's
// earlier values survive otherwise; a sequence diagram assertion with no "("
// after its name empties all three. False (nothing assigned) when the text
// holds no assertion macro name.
bool parseAssertionMacro(std::string_view statement, std::string& firstArgument,
                         std::string& secondArgument, std::string& message);

// The first argument of the call of `macroName` in `statement`; empty when
// there is none. An argument with neither a separator nor a ")" after it runs
// to the end of the text, untrimmed.
std::string macroFirstArgument(std::string_view statement, std::string_view macroName);

}  // namespace qendor
