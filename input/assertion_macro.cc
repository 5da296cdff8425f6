#include "input/assertion_macro.h"

#include "base/text.h"

namespace qendor {

namespace {

constexpr size_t npos = std::string_view::npos;

// Macro names whose message is their first argument, tried in this order. The
// search is by substring, so a longer name must come before its prefix.
constexpr std::string_view kFirstArgumentMacros[] = {
    "ASSERT_NAME_FATAL",
    "ASSERT_NAME",
    "ASSERT_TRUE",
    "ASSERT_FALSE",
    "ASSERT_EQUAL",
    "ASSERT_NOT_EQUAL",
    "ASSERT_PTR_EQUAL",
    "ASSERT_PTR_NOT_EQUAL",
    "ASSERT_PTR_NULL",
    "ASSERT_PTR_NOT_NULL",
    "ASSERT_CPTRSTRING_EQUAL",
    "ASSERT_CPTRSTRING_NOT_EQUAL",
    "ASSERT_STRING_EQUAL",
    "ASSERT_STRING_NOT_EQUAL",
    "ASSERT_FATAL",
};

// The first "," at or after `from` that stands outside a string. A double
// quote toggles the in-string state unless a backslash stands just before it;
// the state starts outside a string at `from`. npos when there is none.
size_t findSeparator(std::string_view text, size_t from) {
  bool inString = false;
  for (size_t i = from; i < text.size(); ++i) {
    char c = text[i];
    if (c == '"') {
      if (i == 0 || text[i - 1] != '\\') inString = !inString;
    } else if (c == ',' && !inString) {
      return i;
    }
  }
  return npos;
}

// The first "(" after the first occurrence of `name`; npos when either is missing.
size_t openingParenthesis(std::string_view text, std::string_view name) {
  size_t at = text.find(name);
  if (at == npos) return npos;
  return text.find('(', at + name.size());
}

// The text of an argument between two separators at `before` and `after`
// (positions of the "(" or ","), less its first and its last character and
// then less any leading double quotes. Assigned only when `after` lies at
// least three characters after `before`.
bool quotedBetween(std::string_view text, size_t before, size_t after, std::string_view& out) {
  if (before == npos || after == npos || after < before + 3) return false;
  std::string_view inner = text.substr(before + 2, after - before - 3);
  while (!inner.empty() && inner.front() == '"') inner.remove_prefix(1);
  out = inner;
  return true;
}

// What an argument with neither a separator nor a ")" after it yields.
enum class Unclosed {
  kRestOfText,  // the not-found end lies past every character: the whole rest
  kNothing,     // an end outside the text assigns nothing
};

// An argument that starts at `start` (just after its "(" or ","): past blanks
// and one opening double quote; it ends before the first separator found by
// scanning from `scanFrom`, less trailing blanks and one closing double quote,
// or, with no separator, at the last ")" of the text. False when that range is
// empty or inverted; with no ")" either, `unclosed` decides.
bool argumentFrom(std::string_view text, size_t start, size_t scanFrom, Unclosed unclosed,
                  std::string_view& out) {
  size_t separator = findSeparator(text, scanFrom);
  size_t end;
  if (separator != npos) {
    end = separator;
    while (end > start && text[end - 1] == ' ') --end;
    if (end > start && text[end - 1] == '"') --end;
  } else {
    end = text.rfind(')');
    if (end == npos) {
      if (unclosed == Unclosed::kNothing || start >= text.size()) return false;
      out = text.substr(start);
      return true;
    }
  }
  if (end <= start || end > text.size()) return false;
  out = text.substr(start, end - start);
  return true;
}

// Moves `at` past blanks and then past one double quote.
size_t skipBlanksAndQuote(std::string_view text, size_t at) {
  while (at < text.size() && text[at] == ' ') ++at;
  if (at < text.size() && text[at] == '"') ++at;
  return at;
}

// The sequence diagram assertion: diagram name, message name, message text.
void parseSequenceAssertion(std::string_view text, std::string_view& firstArgument,
                            std::string_view& secondArgument, std::string_view& message) {
  size_t open = openingParenthesis(text, "ASSERT_SD");
  if (open == npos) {
    // A statement that names the macro but never calls it has no arguments.
    firstArgument = {};
    secondArgument = {};
    message = {};
    return;
  }
  size_t firstComma = findSeparator(text, open);
  quotedBetween(text, open, firstComma, firstArgument);
  if (firstComma == npos) return;
  size_t secondComma = findSeparator(text, firstComma + 1);
  quotedBetween(text, firstComma, secondComma, secondArgument);
  if (secondComma == npos) return;
  // The scan for a fourth argument starts after the opening quote of the
  // third, so a quote inside the message opens a string.
  size_t start = skipBlanksAndQuote(text, secondComma + 1);
  argumentFrom(text, start, start, Unclosed::kNothing, message);
}

}  // namespace

std::string_view macroFirstArgument(std::string_view statement, std::string_view macroName) {
  size_t open = openingParenthesis(statement, macroName);
  if (open == npos) return {};
  size_t start = skipBlanksAndQuote(statement, open + 1);
  std::string_view argument;
  if (!argumentFrom(statement, start, open, Unclosed::kRestOfText, argument)) return {};
  return argument;
}

bool parseAssertionMacro(std::string_view statement, std::string_view& firstArgument,
                         std::string_view& secondArgument, std::string_view& message) {
  if (contains(statement, "ASSERT_SD")) {
    parseSequenceAssertion(statement, firstArgument, secondArgument, message);
    return true;
  }
  for (std::string_view name : kFirstArgumentMacros) {
    if (contains(statement, name)) {
      message = macroFirstArgument(statement, name);
      return true;
    }
  }
  if (contains(statement, "ASSERT")) {
    message = macroFirstArgument(statement, "ASSERT");
    return true;
  }
  return false;
}

}  // namespace qendor
