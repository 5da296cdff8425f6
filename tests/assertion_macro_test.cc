#include "input/assertion_macro.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qendor {
namespace {

// Marks an output that the parser left alone.
constexpr const char* kUnset = "<unset>";

struct ParseCase {
  const char* statement;
  bool accepted;
  const char* firstArgument;
  const char* secondArgument;
  const char* message;
};

void expectParse(const ParseCase& c) {
  std::string_view first = kUnset, second = kUnset, message = kUnset;
  EXPECT_EQ(parseAssertionMacro(c.statement, first, second, message), c.accepted) << c.statement;
  EXPECT_EQ(first, c.firstArgument) << c.statement;
  EXPECT_EQ(second, c.secondArgument) << c.statement;
  EXPECT_EQ(message, c.message) << c.statement;
}

TEST(ParseAssertionMacro, SequenceDiagramAssertions) {
  const ParseCase cases[] = {
      // The usual layout: with no separator after the third argument its
      // closing quote before ")" is kept.
      {R"(ZKR_ASSERT_SD("sd1", "m1", "Starting test case");)", true, "sd1", "m1",
       R"(Starting test case")"},
      {R"(ZKR_ASSERT_SD("sd1", "m1", "Finished test case"))", true, "sd1", "m1",
       R"(Finished test case")"},
      // Commas inside quotes do not separate.
      {R"(ZKR_ASSERT_SD("a,b", "c,d", "e"))", true, "a,b", "c,d", R"(e")"},
      // An escaped quote does not end a string.
      {R"(ZKR_ASSERT_SD("s\"d", "m1", x))", true, R"(s\"d)", "m1", "x"},
      // Unquoted message followed by a separator: trailing blanks go.
      {R"(ZKR_ASSERT_SD("sd1", "m1", msg  , z))", true, "sd1", "m1", "msg"},
      // Trailing blanks, then one closing quote.
      {R"(ZKR_ASSERT_SD("sd1", "m1", msg"" , z))", true, "sd1", "m1", R"(msg")"},
      // The scan for a fourth argument starts after the message's opening
      // quote, so its closing quote opens a string that hides the next comma.
      {R"(ZKR_ASSERT_SD("sd1", "m1", "msg", "extra"))", true, "sd1", "m1", R"(msg", "extra")"},
      {R"(ZKR_ASSERT_SD("sd1", "m1", "Start",))", true, "sd1", "m1", R"(Start",)"},
      // Commas closer than three characters assign nothing.
      {"ZKR_ASSERT_SD(a,b,c)", true, kUnset, kUnset, "c"},
      // Exactly three characters: empty arguments are assigned.
      {R"(ZKR_ASSERT_SD("",x"",y))", true, "", "", "y"},
      {R"(ZKR_ASSERT_SD("", "", ""))", true, "", "", "\""},
      // Less the first and last character, then leading quotes erased.
      {R"(ZKR_ASSERT_SD(""sd"",  "m" , z))", true, "sd\"", " \"m\"", "z"},
      {R"(ZKR_ASSERT_SD(xsdx,xmx,m))", true, "sd", "m", "m"},
      // An empty third argument is not assigned.
      {R"(ZKR_ASSERT_SD("sd1", "m1",))", true, "sd1", "m1", kUnset},
      // No ")" at all for an unseparated third argument.
      {R"(ZKR_ASSERT_SD("sd1", "m1", x)", true, "sd1", "m1", kUnset},
      // Missing separators leave the later arguments unassigned.
      {R"(ZKR_ASSERT_SD("sd1", "m1"))", true, "sd1", kUnset, kUnset},
      {R"(ZKR_ASSERT_SD("sd1"))", true, kUnset, kUnset, kUnset},
      // A "(" but no comma: nothing is assigned, earlier values survive.
      {"ZKR_ASSERT_SD(", true, kUnset, kUnset, kUnset},
      {R"(ZKR_ASSERT_SD("flow32");)", true, kUnset, kUnset, kUnset},
      // No "(" after the name at all: all three arguments become empty.
      {"ZKR_ASSERT_SD", true, "", "", ""},
      {"ZKR_ASSERT_SD_OFF flow32;", true, "", "", ""},
      {"f(x); ZKR_ASSERT_SD_OFF flow32;", true, "", "", ""},
      // An unclosed third argument lies outside the text: not assigned,
      // unlike an unclosed first argument of the other macros.
      {R"(ZKR_ASSERT_SD("sd1", "m1", "flow20 > 52;)", true, "sd1", "m1", kUnset},
      // The name is found anywhere, also inside a longer word.
      {R"(x; MY_ASSERT_SDX("a", "b", "c"))", true, "a", "b", "c\""},
  };
  for (const ParseCase& c : cases) expectParse(c);
}

TEST(ParseAssertionMacro, FirstArgumentMacros) {
  const ParseCase cases[] = {
      {"ZKR_ASSERT_TRUE(a == b);", true, kUnset, kUnset, "a == b"},
      {R"(ZKR_ASSERT_TRUE("Starting test case"))", true, kUnset, kUnset, R"(Starting test case")"},
      {R"(ZKR_ASSERT_EQUAL("a,b", c))", true, kUnset, kUnset, "a,b"},
      {R"(ZKR_ASSERT_TRUE(   "m"   , 1))", true, kUnset, kUnset, "m"},
      {R"(ZKR_ASSERT_TRUE(" m", 1))", true, kUnset, kUnset, " m"},
      {R"(ZKR_ASSERT_TRUE(""m"", 1))", true, kUnset, kUnset, R"("m")"},
      {R"(ZKR_ASSERT_TRUE("say \"hi, there\"", x))", true, kUnset, kUnset, R"(say \"hi, there\")"},
      {"ZKR_ASSERT_TRUE(\tx)", true, kUnset, kUnset, "\tx"},
      // Without a separator the argument runs to the last ")" of the text.
      {"ZKR_ASSERT_TRUE( x )", true, kUnset, kUnset, "x "},
      {"ZKR_ASSERT_TRUE(x); // note (y)", true, kUnset, kUnset, "x); // note (y"},
      // The separator scan runs past the call's own ")".
      {"ZKR_ASSERT_TRUE(x); f(a, b);", true, kUnset, kUnset, "x); f(a"},
      {"x = 1; // ZKR_ASSERT_TRUE(x);", true, kUnset, kUnset, "x"},
      // Empty, inverted or missing ranges give the empty string.
      {"ZKR_ASSERT_TRUE()", true, kUnset, kUnset, ""},
      {"ZKR_ASSERT_TRUE(,x)", true, kUnset, kUnset, ""},
      {"ZKR_ASSERT_TRUE)(", true, kUnset, kUnset, ""},
      {"ZKR_ASSERT_TRUE", true, kUnset, kUnset, ""},
      {"ZKR_ASSERT_TRUE(\"", true, kUnset, kUnset, ""},
      // Neither a separator nor a ")": the not-found end lies past every
      // character, so the argument is the whole rest, untrimmed.
      {"ZKR_ASSERT_TRUE(x", true, kUnset, kUnset, "x"},
      {"ZKR_ASSERT_TRUE(speed15;", true, kUnset, kUnset, "speed15;"},
      {"ZKR_ASSERT_TRUE(level25; // checked", true, kUnset, kUnset, "level25; // checked"},
      {"ZKR_ASSERT_TRUE(temp29;\r", true, kUnset, kUnset, "temp29;\r"},
      {"ZKR_ASSERT_TRUE( \"lvl  ", true, kUnset, kUnset, "lvl  "},
      {"ZKR_ASSERT(x > 0;", true, kUnset, kUnset, "x > 0;"},
      // Names are tried in their fixed order, not in the order of the text.
      {"ZKR_ASSERT_FATAL(a); ZKR_ASSERT_TRUE(b)", true, kUnset, kUnset, "b"},
      {"ZKR_ASSERT_NAME(a); ZKR_ASSERT_NAME_FATAL(b)", true, kUnset, kUnset, "b"},
      {"ZKR_ASSERT_STRING_NOT_EQUAL(s, t)", true, kUnset, kUnset, "s"},
      {"ZKR_ASSERT_PTR_NOT_NULL(p)", true, kUnset, kUnset, "p"},
      // Any other name holding "ASSERT".
      {"ZKR_ASSERT(x > 0);", true, kUnset, kUnset, "x > 0"},
      {"MY_ASSERTION(m, 1)", true, kUnset, kUnset, "m"},
      {"ASSERT", true, kUnset, kUnset, ""},
      // No macro name: rejected, nothing assigned.
      {"ZKR_CHECK(x)", false, kUnset, kUnset, kUnset},
      {"assert(x)", false, kUnset, kUnset, kUnset},
      {"", false, kUnset, kUnset, kUnset},
  };
  for (const ParseCase& c : cases) expectParse(c);
}

TEST(MacroFirstArgument, Cases) {
  struct Case {
    const char* statement;
    const char* name;
    const char* expected;
  };
  const Case cases[] = {
      {R"(ZKR_ASSERT_EQUAL("a,b", c))", "ASSERT_EQUAL", "a,b"},
      {"ZKR_ASSERT_TRUE(x)", "ASSERT_FALSE", ""},
      {"f(y); ZKR_ASSERT_TRUE(x)", "ASSERT_TRUE", "x"},
      {"ZKR_ASSERT_TRUE (  x , y)", "ASSERT_TRUE", "x"},
      {"ZKR_ASSERT_TRUE(x,", "ASSERT_TRUE", "x"},
      {"ZKR_ASSERT_TRUE(speed15;", "ASSERT_TRUE", "speed15;"},
      {"ZKR_ASSERT_TRUE(temp29;\r", "ASSERT_TRUE", "temp29;\r"},
      {"ZKR_ASSERT_SD_OFF flow32;", "ASSERT_SD", ""},
      {"ZKR_ASSERT_TRUE(\"", "ASSERT_TRUE", ""},
      {"", "ASSERT", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(macroFirstArgument(c.statement, c.name), c.expected) << c.statement;
  }
}

TEST(ParseAssertionMacro, BytesOfAnyKind) {
  std::string statement = std::string("ZKR_ASSERT_TRUE(\xff") + '\0' + "\xfe, x)";
  std::string_view first, second, message;
  EXPECT_TRUE(parseAssertionMacro(statement, first, second, message));
  EXPECT_EQ(message, std::string_view("\xff\0\xfe", 3));
  EXPECT_EQ(message.data(), statement.data() + 16);  // a view into the statement
}

TEST(ParseAssertionMacro, HugeStatement) {
  std::string statement = "ZKR_ASSERT_SD(\"sd\", \"m\", \"" + std::string(10 << 20, 'q') + "\")";
  std::string_view first, second, message;
  EXPECT_TRUE(parseAssertionMacro(statement, first, second, message));
  EXPECT_EQ(first, "sd");
  EXPECT_EQ(second, "m");
  EXPECT_EQ(message.size(), (10u << 20) + 1);
  // Views into the statement: nothing of the ten megabytes is copied.
  EXPECT_EQ(first.data(), statement.data() + 15);
  EXPECT_EQ(second.data(), statement.data() + 21);
  EXPECT_EQ(message.data(), statement.data() + 26);
}

}  // namespace
}  // namespace qendor
