#include "report/diagnosis_element.h"

#include <gtest/gtest.h>

#include <regex>

#include <memory>
#include <string>
#include <vector>

#include "base/line_reader.h"
#include "report/xml_node.h"
#include "tests/test_support.h"
#include "tests/xml_dump.h"
#include "verify/judgement.h"
#include "verify/step_names.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

// A sequence diagram test case whose steps report `values` in turn (each as
// progress value/max, message "m" and the value, of `instance`), then
// finishes unless `finished` is false.
AssertionList sdRun(const std::vector<std::string>& values, int max, bool finished,
                    const std::string& instance = "Shop") {
  AssertionList records;
  records.push_back(AssertionRecord{R"(ZKR_ASSERT_SD("Shop", "start", "Starting test case"))",
                                    Status::kPassed, "1", "10", ""});
  int line = 11;
  for (const std::string& value : values) {
    records.push_back(AssertionRecord{
        "ZKR_ASSERT_SD(\"" + instance + "\", \"m" + value + "\", \"x\")", Status::kPassed, "1",
        std::to_string(line++), "step - progress " + value + "/" + std::to_string(max)});
  }
  if (finished) {
    records.push_back(AssertionRecord{R"(ZKR_ASSERT_SD("Shop", "end", "Finished test case: A"))",
                                      Status::kPassed, "1", std::to_string(line), ""});
  }
  return records;
}

// The Diagnosis element a run gets against `lines`, without indentation.
// Its Position, which has a table of its own below, is left out unless
// `position` asks for that alone.
std::string diagnosisOf(const SequenceLines& lines, const AssertionList& records,
                        bool position = false) {
  TestModel model;
  model.kind = VerificationKind::kSdTest;
  model.sequenceLines = std::make_shared<const SequenceLines>(lines);
  const TestCaseLog log = makeTestCaseLog(records);
  const TestCaseVerdict verdict = judgeTestCase(&log, model, true);
  XmlNodePtr result(newElement("TestCaseResult"));
  writeDiagnosis(result.get(), verdict);
  for (xmlNode* child = result->children->children; child; child = child->next) {
    if (xmlStrcmp(child->name, BAD_CAST "Position") != 0) continue;
    if (position) return test::dumpNode(child);
    xmlUnlinkNode(child);
    xmlFreeNode(child);
    break;
  }
  return position ? std::string() : test::dumpNode(result->children);
}

struct Case {
  const char* name;
  SequenceLines lines;
  std::vector<std::string> run;
  bool finished;
  const char* expected;
};

// Each diagram with a conforming run, a wrong operand or step, a skipped
// step, an extra step and a run that stops early.
TEST(DiagnosisElement, SequenceDiagramsAndRuns) {
  const SequenceLines strict = {"STRICT_BEGIN(s)", "1", "2", "STRICT_END(s)", "3"};
  const SequenceLines alt2 = {"1", "ALT_BEGIN(a)",       "ALT_OPERAND_BEGIN(a)",
                              "2", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)",
                              "3", "ALT_OPERAND_END(a)", "ALT_END(a)",
                              "4"};
  const SequenceLines alt3 = {"ALT_BEGIN(a)",       "ALT_OPERAND_BEGIN(a)", "1",
                              "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "2",
                              "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "3",
                              "ALT_OPERAND_END(a)", "ALT_END(a)",           "4"};
  const SequenceLines opt = {
      "1", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "2", "OPT_OPERAND_END(o)", "OPT_END(o)", "3"};
  const SequenceLines loop = {"1", "LOOP_BEGIN(l)",       "LOOP_OPERAND_BEGIN(l)", "2",
                              "3", "LOOP_OPERAND_END(l)", "LOOP_END(l)",           "4"};
  const SequenceLines brk = {"STRICT_BEGIN",
                             "1",
                             "BREAK_BEGIN(b)",
                             "BREAK_OPERAND_BEGIN(b)",
                             "2",
                             "BREAK_OPERAND_END(b)",
                             "BREAK_END(b)",
                             "3",
                             "STRICT_END",
                             "4"};
  const SequenceLines consider = {"CONSIDER_BEGIN(c)",       "CONSIDER_OPERAND_BEGIN(c)", "1", "2",
                                  "CONSIDER_OPERAND_END(c)", "CONSIDER_END(c)",           "3"};
  const SequenceLines nested = {"1",
                                "LOOP_BEGIN(l)",
                                "LOOP_OPERAND_BEGIN(l)",
                                "ALT_BEGIN(a)",
                                "ALT_OPERAND_BEGIN(a)",
                                "2",
                                "ALT_OPERAND_END(a)",
                                "ALT_OPERAND_BEGIN(a)",
                                "3",
                                "ALT_OPERAND_END(a)",
                                "ALT_END(a)",
                                "LOOP_OPERAND_END(l)",
                                "LOOP_END(l)",
                                "4"};
  const SequenceLines emptyLine = {"STRICT_BEGIN(strict_1)", "1", "",  "2", "3",
                                   "STRICT_END(strict_1)",   "4", "5", "6"};
  struct Run {
    std::vector<std::string> values;
    const char* expected;
  };
  struct Diagram {
    const char* name;
    const SequenceLines* lines;
    int max;
    std::vector<Run> runs;
  };
  const Diagram diagrams[] = {
      {"strict",
       &strict,
       3,
       {{{"1", "2", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="s" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="3" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Fragment><Step line="5" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Outline></Diagnosis>)"},
        {{"2", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="s" line="1"><Step line="2" value="1" accepted="0"/><Step line="3" value="2" accepted="0"/></Fragment><Step line="5" value="3" accepted="0"/></Outline><Rejected assertion="2" fnr="1" lnr="11" value="2" sdiname="Shop" msgid="m2"/><Expected line="1"><Value value="1"/></Expected><NotJudged more="0"><Entry assertion="3" value="3" sdiname="Shop" msgid="m3" guid="" status="PASSED" usermsg="step" inr="" onr="" dir="" filename="" fnr="1" lnr="12"/></NotJudged></Diagnosis>)"},
        {{"1", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="s" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="3" value="2" accepted="0"/></Fragment><Step line="5" value="3" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="3" sdiname="Shop" msgid="m3"/><Expected line="3"><Value value="2"/></Expected></Diagnosis>)"},
        {{"1", "2", "2", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="s" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="3" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Fragment><Step line="5" value="3" accepted="0"/></Outline><Rejected assertion="4" fnr="1" lnr="13" value="2" sdiname="Shop" msgid="m2"/><Expected line="4"><Value value="3"/></Expected><NotJudged more="0"><Entry assertion="5" value="3" sdiname="Shop" msgid="m3" guid="" status="PASSED" usermsg="step" inr="" onr="" dir="" filename="" fnr="1" lnr="14"/></NotJudged></Diagnosis>)"},
        {{"1"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="s" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="3" value="2" accepted="0"/></Fragment><Step line="5" value="3" accepted="0"/></Outline><Expected line="3"><Value value="2"/></Expected></Diagnosis>)"}}},
      {"alt2",
       &alt2,
       4,
       {{{"1", "3", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="ALT" id="a" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/></Operand><Operand line="6"><Step line="7" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Operand></Fragment><Step line="10" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "5"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="ALT" id="a" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/></Operand><Operand line="6"><Step line="7" value="3" accepted="0"/></Operand></Fragment><Step line="10" value="4" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="5" sdiname="Shop" msgid="m5"/><Expected line="2"><Value value="2"/><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"},
        {{"1", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="ALT" id="a" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/></Operand><Operand line="6"><Step line="7" value="3" accepted="0"/></Operand></Fragment><Step line="10" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "2", "3", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="ALT" id="a" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand><Operand line="6"><Step line="7" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Operand></Fragment><Step line="10" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "2"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="ALT" id="a" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand><Operand line="6"><Step line="7" value="3" accepted="0"/></Operand></Fragment><Step line="10" value="4" accepted="0"/></Outline><Expected line="5"><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"}}},
      {"alt3",
       &alt3,
       4,
       {{{"3", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="ALT" id="a" line="1"><Operand line="2"><Step line="3" value="1" accepted="0"/></Operand><Operand line="5"><Step line="6" value="2" accepted="0"/></Operand><Operand line="8"><Step line="9" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Operand></Fragment><Step line="12" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"5", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="ALT" id="a" line="1"><Operand line="2"><Step line="3" value="1" accepted="0"/></Operand><Operand line="5"><Step line="6" value="2" accepted="0"/></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment><Step line="12" value="4" accepted="0"/></Outline><Rejected assertion="2" fnr="1" lnr="11" value="5" sdiname="Shop" msgid="m5"/><Expected line="1"><Value value="1"/><Value value="2"/><Value value="3"/><Value value="4"/></Expected><NotJudged more="0"><Entry assertion="3" value="4" sdiname="Shop" msgid="m4" guid="" status="PASSED" usermsg="step" inr="" onr="" dir="" filename="" fnr="1" lnr="12"/></NotJudged></Diagnosis>)"},
        {{"4"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="ALT" id="a" line="1"><Operand line="2"><Step line="3" value="1" accepted="0"/></Operand><Operand line="5"><Step line="6" value="2" accepted="0"/></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment><Step line="12" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"2", "2", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="ALT" id="a" line="1"><Operand line="2"><Step line="3" value="1" accepted="0"/></Operand><Operand line="5"><Step line="6" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment><Step line="12" value="4" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="2" sdiname="Shop" msgid="m2"/><Expected line="7"><Value value="3"/><Value value="4"/></Expected><NotJudged more="0"><Entry assertion="4" value="4" sdiname="Shop" msgid="m4" guid="" status="PASSED" usermsg="step" inr="" onr="" dir="" filename="" fnr="1" lnr="13"/></NotJudged></Diagnosis>)"},
        {{"1"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="ALT" id="a" line="1"><Operand line="2"><Step line="3" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step></Operand><Operand line="5"><Step line="6" value="2" accepted="0"/></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment><Step line="12" value="4" accepted="0"/></Outline><Expected line="4"><Value value="2"/><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"}}},
      {"opt",
       &opt,
       3,
       {{{"1", "2", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="OPT" id="o" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="7" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Outline></Diagnosis>)"},
        {{"1", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="OPT" id="o" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/></Operand></Fragment><Step line="7" value="3" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="4" sdiname="Shop" msgid="m4"/><Expected line="2"><Value value="2"/><Value value="3"/></Expected></Diagnosis>)"},
        {{"1", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="OPT" id="o" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/></Operand></Fragment><Step line="7" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Outline></Diagnosis>)"},
        {{"1", "2", "2", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="OPT" id="o" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="7" value="3" accepted="0"/></Outline><Rejected assertion="4" fnr="1" lnr="13" value="2" sdiname="Shop" msgid="m2"/><Expected line="5"><Value value="3"/></Expected><NotJudged more="0"><Entry assertion="5" value="3" sdiname="Shop" msgid="m3" guid="" status="PASSED" usermsg="step" inr="" onr="" dir="" filename="" fnr="1" lnr="14"/></NotJudged></Diagnosis>)"},
        {{"1", "2"}, R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="OPT" id="o" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="7" value="3" accepted="0"/></Outline><Expected line="5"><Value value="3"/></Expected></Diagnosis>)"}}},
      {"loop",
       &loop,
       4,
       {{{"1", "2", "3", "2", "3", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Step line="4" value="2" accepted="2"><Name instance="Shop" message="m2"/></Step><Step line="5" value="3" accepted="2"><Name instance="Shop" message="m3"/></Step></Operand></Fragment><Step line="8" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/><Step line="5" value="3" accepted="0"/></Operand></Fragment><Step line="8" value="4" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="3" sdiname="Shop" msgid="m3"/><Expected line="2"><Value value="2"/><Value value="4"/></Expected></Diagnosis>)"},
        {{"1", "2", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step><Step line="5" value="3" accepted="0"/></Operand></Fragment><Step line="8" value="4" accepted="0"/></Outline><Rejected assertion="4" fnr="1" lnr="13" value="4" sdiname="Shop" msgid="m4"/><Expected line="5"><Value value="3"/></Expected></Diagnosis>)"},
        {{"1", "4", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Step line="4" value="2" accepted="0"/><Step line="5" value="3" accepted="0"/></Operand></Fragment><Step line="8" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline><Rejected assertion="4" fnr="1" lnr="13" value="4" sdiname="Shop" msgid="m4"/><Expected line="end"/></Diagnosis>)"},
        {{"1", "2"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step><Step line="5" value="3" accepted="0"/></Operand></Fragment><Step line="8" value="4" accepted="0"/></Outline><Expected line="5"><Value value="3"/></Expected></Diagnosis>)"}}},
      {"break",
       &brk,
       4,
       {{{"1", "2", "3", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="BREAK" id="b" line="3"><Operand line="4"><Step line="5" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="8" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Fragment><Step line="10" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "5"}, R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="BREAK" id="b" line="3"><Operand line="4"><Step line="5" value="2" accepted="0"/></Operand></Fragment><Step line="8" value="3" accepted="0"/></Fragment><Step line="10" value="4" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="5" sdiname="Shop" msgid="m5"/><Expected line="3"><Value value="2"/><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"},
        {{"1", "3", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="BREAK" id="b" line="3"><Operand line="4"><Step line="5" value="2" accepted="0"/></Operand></Fragment><Step line="8" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Fragment><Step line="10" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "2", "2"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="BREAK" id="b" line="3"><Operand line="4"><Step line="5" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="8" value="3" accepted="0"/></Fragment><Step line="10" value="4" accepted="0"/></Outline><Rejected assertion="4" fnr="1" lnr="13" value="2" sdiname="Shop" msgid="m2"/><Expected line="6"><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"},
        {{"1"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="BREAK" id="b" line="3"><Operand line="4"><Step line="5" value="2" accepted="0"/></Operand></Fragment><Step line="8" value="3" accepted="0"/></Fragment><Step line="10" value="4" accepted="0"/></Outline><Expected line="3"><Value value="2"/><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"}}},
      {"consider",
       &consider,
       3,
       {{{"1", "2", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="CONSIDER" id="c" line="1"><Operand line="2"><Step line="3" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="7" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Outline></Diagnosis>)"},
        {{"2"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="CONSIDER" id="c" line="1"><Operand line="2"><Step line="3" value="1" accepted="0"/><Step line="4" value="2" accepted="0"/></Operand></Fragment><Step line="7" value="3" accepted="0"/></Outline><Rejected assertion="2" fnr="1" lnr="11" value="2" sdiname="Shop" msgid="m2"/><Expected line="1"><Value value="1"/></Expected></Diagnosis>)"},
        {{"1", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="CONSIDER" id="c" line="1"><Operand line="2"><Step line="3" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="4" value="2" accepted="0"/></Operand></Fragment><Step line="7" value="3" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="3" sdiname="Shop" msgid="m3"/><Expected line="4"><Value value="2"/></Expected></Diagnosis>)"},
        {{"1", "2", "3", "3"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="CONSIDER" id="c" line="1"><Operand line="2"><Step line="3" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="7" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Outline><Rejected assertion="5" fnr="1" lnr="14" value="3" sdiname="Shop" msgid="m3"/><Expected line="end"/></Diagnosis>)"},
        {{"1", "2"},
         R"(<Diagnosis kind="sequence"><Outline><Fragment operator="CONSIDER" id="c" line="1"><Operand line="2"><Step line="3" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="4" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand></Fragment><Step line="7" value="3" accepted="0"/></Outline><Expected line="5"><Value value="3"/></Expected></Diagnosis>)"}}},
      {"nested",
       &nested,
       4,
       {{{"1", "2", "3", "2", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Fragment operator="ALT" id="a" line="4"><Operand line="5"><Step line="6" value="2" accepted="2"><Name instance="Shop" message="m2"/></Step></Operand><Operand line="8"><Step line="9" value="3" accepted="1"><Name instance="Shop" message="m3"/></Step></Operand></Fragment></Operand></Fragment><Step line="14" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "2", "5"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Fragment operator="ALT" id="a" line="4"><Operand line="5"><Step line="6" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment></Operand></Fragment><Step line="14" value="4" accepted="0"/></Outline><Rejected assertion="4" fnr="1" lnr="13" value="5" sdiname="Shop" msgid="m5"/><Expected line="7"><Value value="2"/><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"},
        {{"1", "4"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Fragment operator="ALT" id="a" line="4"><Operand line="5"><Step line="6" value="2" accepted="0"/></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment></Operand></Fragment><Step line="14" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline></Diagnosis>)"},
        {{"1", "3", "3", "4", "4"}, R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Fragment operator="ALT" id="a" line="4"><Operand line="5"><Step line="6" value="2" accepted="0"/></Operand><Operand line="8"><Step line="9" value="3" accepted="2"><Name instance="Shop" message="m3"/></Step></Operand></Fragment></Operand></Fragment><Step line="14" value="4" accepted="1"><Name instance="Shop" message="m4"/></Step></Outline><Rejected assertion="6" fnr="1" lnr="15" value="4" sdiname="Shop" msgid="m4"/><Expected line="end"/></Diagnosis>)"},
        {{"1", "2"},
         R"(<Diagnosis kind="sequence"><Outline><Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Fragment operator="LOOP" id="l" line="2"><Operand line="3"><Fragment operator="ALT" id="a" line="4"><Operand line="5"><Step line="6" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step></Operand><Operand line="8"><Step line="9" value="3" accepted="0"/></Operand></Fragment></Operand></Fragment><Step line="14" value="4" accepted="0"/></Outline><Expected line="7"><Value value="2"/><Value value="3"/><Value value="4"/></Expected></Diagnosis>)"}}},
      // No recorded message can be accepted on the empty line.
      {"empty line",
       &emptyLine,
       6,
       {{{"1", "2"}, R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="strict_1" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="3" value="" accepted="0"/><Step line="4" value="2" accepted="0"/><Step line="5" value="3" accepted="0"/></Fragment><Step line="7" value="4" accepted="0"/><Step line="8" value="5" accepted="0"/><Step line="9" value="6" accepted="0"/></Outline><Rejected assertion="3" fnr="1" lnr="12" value="2" sdiname="Shop" msgid="m2"/><Expected line="3"/></Diagnosis>)"}, {{"1"}, R"(<Diagnosis kind="sequence"><Outline><Fragment operator="STRICT" id="strict_1" line="1"><Step line="2" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step><Step line="3" value="" accepted="0"/><Step line="4" value="2" accepted="0"/><Step line="5" value="3" accepted="0"/></Fragment><Step line="7" value="4" accepted="0"/><Step line="8" value="5" accepted="0"/><Step line="9" value="6" accepted="0"/></Outline><Expected line="3"/></Diagnosis>)"}}},
  };
  for (const Diagram& d : diagrams) {
    for (size_t i = 0; i < d.runs.size(); ++i) {
      // The last run of each stops early: no finish assertion.
      EXPECT_EQ(diagnosisOf(*d.lines, sdRun(d.runs[i].values, d.max, i + 1 != d.runs.size())),
                d.runs[i].expected)
          << d.name << " run " << i;
    }
  }
}

}  // namespace
}  // namespace qendor

namespace qendor {
namespace {

// A statechart: Init, then by "go" into the composite Outer, whose default
// transition "enter" leads to Inner; Inner loops on itself by "again" and
// leaves Outer by "leave" to the top-level End.
const char kChart[] =
    "STATECHART_TEST\n"
    "STATE_NAME:\nInit\nGUID:\ng1\nSTATE_TYPE:\nState\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n"
    "STATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(\"Starting test case: C\");\nOUT_TRANSITIONS:\nt1\n"
    "----------\n"
    "TRANSITION_NAME:\ngo\nGUID:\nt1\nTRANSITION_TARGET:\ng2\n"
    "----------\n"
    "STATE_NAME:\nOuter\nGUID:\ng2\nSTATE_TYPE:\nState\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n"
    "DEFAULT_TRANSITION:\nt2\nOUT_TRANSITIONS:\nt4\n"
    "----------\n"
    "TRANSITION_NAME:\nenter\nGUID:\nt2\nTRANSITION_TARGET:\ng3\n"
    "----------\n"
    "STATE_NAME:\nInner\nGUID:\ng3\nSTATE_TYPE:\nState\nPARENT_NAME:\nOuter\nPARENT_GUID:\ng2\n"
    "STATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(inner());\nOUT_TRANSITIONS:\nt3\n"
    "----------\n"
    "TRANSITION_NAME:\nagain\nGUID:\nt3\nTRANSITION_ACTION:\nZKR_ASSERT_TRUE(again());\n"
    "TRANSITION_TARGET:\ng3\n"
    "----------\n"
    "TRANSITION_NAME:\nleave\nGUID:\nt4\nTRANSITION_TARGET:\ng4\n"
    "----------\n"
    "STATE_NAME:\nEnd\nGUID:\ng4\nSTATE_TYPE:\nLocalTermination\nPARENT_NAME:\nROOT\n"
    "PARENT_GUID:\nROOT\n";

std::string chartDiagnosisOf(const std::vector<std::string>& statements, bool finished) {
  LineReader text{std::string_view(kChart)};
  const TestModel model(parseVerificationFile(text));
  AssertionList records;
  records.push_back(AssertionRecord{R"(ZKR_ASSERT_TRUE("Starting test case: C");)", Status::kPassed,
                                    "1", "1", ""});
  for (const std::string& statement : statements) {
    records.push_back(AssertionRecord{statement, Status::kPassed, "1", "2", ""});
  }
  if (finished) {
    records.push_back(AssertionRecord{R"(ZKR_ASSERT_TRUE("Finished test case: C");)",
                                      Status::kPassed, "1", "3", ""});
  }
  const TestCaseLog log = makeTestCaseLog(records);
  const TestCaseVerdict verdict = judgeTestCase(&log, model, true);
  XmlNodePtr result(newElement("TestCaseResult"));
  writeDiagnosis(result.get(), verdict);
  // The drawing has tests of its own (chart_drawing_test).
  static const std::regex drawing("<Drawing .*</Drawing>");
  return std::regex_replace(test::dumpNode(result->children), drawing, "");
}

// The searches' path, then where one found nothing: an assertion after a
// transition whose target performs another one, an assertion nowhere in the
// chart, the chart's end out of reach.
TEST(DiagnosisElement, ChartPaths) {
  const std::string init = R"(<State name="Init" guid="g1" assertion="1"/>)";
  const std::string toInner =
      R"(<Transition name="go" guid="t1"/><State name="Outer" guid="g2"/>)"
      R"(<Transition name="enter" guid="t2"/><State name="Inner" guid="g3" assertion="2"/>)";
  const std::string again = R"(<Transition name="again" guid="t3" assertion="3"/>)";
  EXPECT_EQ(
      chartDiagnosisOf({"ZKR_ASSERT_TRUE(inner());", "ZKR_ASSERT_TRUE(again());"}, true),
      R"(<Diagnosis kind="chart"><Path omitted="0">)" + init + toInner + again +
          R"(</Path><NoEnd name="again" guid="t3"><Tried name="again"/>)"
          R"(<Blocked kind="state" name="Inner" guid="g3" statement="ZKR_ASSERT_TRUE(inner());" )"
          R"(recorded="yes"/></NoEnd></Diagnosis>)");
  EXPECT_EQ(chartDiagnosisOf({"ZKR_ASSERT_TRUE(inner());", "ZKR_ASSERT_TRUE(nowhere());"}, true),
            R"(<Diagnosis kind="chart"><Path omitted="0">)" + init + toInner +
                R"(</Path><NoMatch name="Inner" guid="g3" assertion="3" )"
                R"(statement="ZKR_ASSERT_TRUE(nowhere());"><Tried name="enter"/>)"
                R"(<Tried name="leave"/></NoMatch></Diagnosis>)");
  EXPECT_EQ(chartDiagnosisOf({"ZKR_ASSERT_TRUE(again());"}, true),
            R"(<Diagnosis kind="chart"><Path omitted="0">)" + init +
                R"(</Path><NoMatch name="Init" guid="g1" assertion="2" )"
                R"(statement="ZKR_ASSERT_TRUE(again());"><Tried name="go"/><Tried name="enter"/>)"
                R"(<Tried name="leave"/><PerformedIn kind="transition" name="again" guid="t3"/>)"
                R"(<Blocked kind="state" name="Inner" guid="g3" )"
                R"(statement="ZKR_ASSERT_TRUE(inner());"/></NoMatch></Diagnosis>)");
  // The self-loop is taken once; from the transition only its target's
  // entry could follow, and that performs another assertion.
  EXPECT_EQ(chartDiagnosisOf({"ZKR_ASSERT_TRUE(inner());", "ZKR_ASSERT_TRUE(again());",
                              "ZKR_ASSERT_TRUE(again());"},
                             true),
            R"(<Diagnosis kind="chart"><Path omitted="0">)" + init + toInner + again +
                R"(</Path><NoMatch name="again" guid="t3" assertion="4" )"
                R"(statement="ZKR_ASSERT_TRUE(again());"><Tried name="again"/>)"
                R"(<PerformedIn kind="transition" name="again" guid="t3"/>)"
                R"(<Blocked kind="state" name="Inner" guid="g3" )"
                R"(statement="ZKR_ASSERT_TRUE(inner());" recorded="yes"/></NoMatch>)"
                R"(</Diagnosis>)");
  // A run that stops early on a chart that could still end: only the path.
  EXPECT_EQ(
      chartDiagnosisOf({"ZKR_ASSERT_TRUE(inner());"}, false),
      R"(<Diagnosis kind="chart"><Path omitted="0">)" + init + toInner + R"(</Path></Diagnosis>)");
}

TEST(DiagnosisElement, LongChartPathsKeepTheirEnd) {
  ChartDiagnosis diagnosis;
  for (size_t i = 0; i < ChartDiagnosis::kMostSteps + 5; ++i) {
    diagnosis.add(ChartDiagnosis::Step{std::to_string(i), "g", true, i});
  }
  EXPECT_EQ(diagnosis.omitted, 5u);
  ASSERT_EQ(diagnosis.path.size(), ChartDiagnosis::kMostSteps);
  EXPECT_EQ(diagnosis.path.front().name, "5");
  EXPECT_EQ(diagnosis.path.back().name, std::to_string(ChartDiagnosis::kMostSteps + 4));
}

TEST(DiagnosisElement, AContextNamesStepsAfterItsTestCasesOfTheSameDiagram) {
  const SequenceLines lines = {
      "1", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "2", "OPT_OPERAND_END(o)", "OPT_END(o)", "3",
      "4"};
  // Two test cases read the diagram from files of their own; a third has
  // another diagram.
  TestModel own, same, other;
  own.kind = same.kind = other.kind = VerificationKind::kSdTest;
  own.sequenceLines = std::make_shared<const SequenceLines>(lines);
  same.sequenceLines = std::make_shared<const SequenceLines>(lines);
  other.sequenceLines = std::make_shared<const SequenceLines>(SequenceLines{"1", "3"});
  const TestCaseLog ownLog = makeTestCaseLog(sdRun({"1", "3"}, 4, false, "Till"));
  const TestCaseLog sameLog = makeTestCaseLog(sdRun({"1", "2", "3", "4"}, 4, true));
  const TestCaseLog otherLog = makeTestCaseLog(sdRun({"1", "3"}, 3, true, "Elsewhere"));
  const TestCaseVerdict ownVerdict = judgeTestCase(&ownLog, own, true);
  const TestCaseVerdict sameVerdict = judgeTestCase(&sameLog, same, true);
  const TestCaseVerdict otherVerdict = judgeTestCase(&otherLog, other, true);
  DiagramStepNames names;
  for (const TestCaseVerdict* verdict : {&ownVerdict, &sameVerdict, &otherVerdict}) {
    names.add(*verdict);
  }
  EXPECT_EQ(names.of(ownVerdict), names.of(sameVerdict));
  EXPECT_NE(names.of(ownVerdict), names.of(otherVerdict));

  XmlNodePtr result(newElement("TestCaseResult"));
  writeDiagnosis(result.get(), ownVerdict, {}, names.of(ownVerdict));
  EXPECT_EQ(
      test::dumpNode(result->children),
      R"(<Diagnosis kind="sequence"><Outline>)"
      R"(<Step line="1" value="1" accepted="1"><Name instance="Till" message="m1"/>)"
      R"(<Name instance="Shop" message="m1" from="other"/></Step>)"
      R"(<Fragment operator="OPT" id="o" line="2"><Operand line="3">)"
      R"(<Step line="4" value="2" accepted="0"><Name instance="Shop" message="m2" from="other"/></Step>)"
      R"(</Operand></Fragment>)"
      R"(<Step line="7" value="3" accepted="1"><Name instance="Till" message="m3"/>)"
      R"(<Name instance="Shop" message="m3" from="other"/></Step>)"
      R"(<Step line="8" value="4" accepted="0"><Name instance="Shop" message="m4" from="other"/></Step>)"
      R"(</Outline><Expected line="8"><Value value="4"/></Expected>)"
      R"(<Position last="7" lastValue="3" moreOptions="0">)"
      R"(<PassedOver operator="OPT" id="o" line="2"/><Option value="4" line="8"/></Position>)"
      R"(</Diagnosis>)");
}

// Steps side by side with the same count fold into one element unless a
// run named them.
TEST(DiagnosisElement, UnnamedStepsFold) {
  SequenceLines lines;
  for (int i = 1; i <= 20; ++i) lines.push_back(std::to_string(i));
  EXPECT_EQ(diagnosisOf(lines, sdRun({"1", "2"}, 20, false)),
            R"(<Diagnosis kind="sequence"><Outline>)"
            R"(<Step line="1" value="1" accepted="1"><Name instance="Shop" message="m1"/></Step>)"
            R"(<Step line="2" value="2" accepted="1"><Name instance="Shop" message="m2"/></Step>)"
            R"(<Steps line="3" lastLine="20" first="3" last="20" count="18" accepted="0"/>)"
            R"(</Outline><Expected line="3"><Value value="3"/></Expected></Diagnosis>)");
}

// After the rejection the walk goes on for the diagnosis only: the verdict
// says what it says without explaining, and the records it does not list
// are kept, the first so many of them.
TEST(DiagnosisElement, RecordsAfterTheRejectionAreNotJudged) {
  TestModel model;
  model.kind = VerificationKind::kSdTest;
  model.sequenceLines = std::make_shared<const SequenceLines>(SequenceLines{"1", "2"});
  std::vector<std::string> values = {"2"};
  for (size_t i = 0; i < Diagnosis::kMostNotJudged + 3; ++i) values.push_back("1");
  // Unfinished: its last record would make it "not terminated" had the
  // verdict's walk gone that far.
  const TestCaseLog log = makeTestCaseLog(sdRun(values, 2, false, "Till"));
  const TestCaseVerdict plain = judgeTestCase(&log, model, false);
  const TestCaseVerdict explained = judgeTestCase(&log, model, true);
  EXPECT_EQ(explained.entries.size(), plain.entries.size());
  EXPECT_EQ(explained.entries.size(), 2u);
  EXPECT_EQ(explained.status, plain.status);
  EXPECT_EQ(explained.folded, plain.folded);
  EXPECT_EQ(explained.verification, plain.verification);
  EXPECT_EQ(explained.summaryName, plain.summaryName);
  EXPECT_EQ(explained.summaryName, "Till");
  EXPECT_EQ(explained.coverage, plain.coverage);
  ASSERT_TRUE(explained.diagnosis);
  EXPECT_EQ(explained.diagnosis->notJudged.size(), Diagnosis::kMostNotJudged);
  EXPECT_EQ(explained.diagnosis->moreNotJudged, 3u);

  XmlNodePtr result(newElement("TestCaseResult"));
  const RunTable<std::string> sources = {{1, "src/till/refunds.cpp"}};
  writeDiagnosis(result.get(), explained, sources);
  const std::string xml = test::dumpNode(result->children);
  EXPECT_NE(xml.find(R"(<NotJudged more="3"><Entry assertion="3" value="1" sdiname="Till" )"
                     R"(msgid="m1" guid="" status="PASSED" usermsg="step" inr="" onr="" )"
                     R"(dir="src/till" filename="refunds.cpp" fnr="1" lnr="12"/>)"),
            std::string::npos)
      << xml;
  EXPECT_NE(xml.find(R"(<Entry assertion="202" value="1" )"), std::string::npos);
  EXPECT_EQ(xml.find(R"(<Entry assertion="203")"), std::string::npos);
}

TEST(DiagnosisElement, ChartRecordsAfterTheRejectionAreNotJudged) {
  EXPECT_EQ(chartDiagnosisOf({"ZKR_ASSERT_TRUE(nowhere());", "ZKR_ASSERT_TRUE(inner());"}, true),
            R"(<Diagnosis kind="chart"><Path omitted="0"><State name="Init" guid="g1" )"
            R"(assertion="1"/></Path><NoMatch name="Init" guid="g1" assertion="2" )"
            R"(statement="ZKR_ASSERT_TRUE(nowhere());"><Tried name="go"/><Tried name="enter"/>)"
            R"(<Tried name="leave"/></NoMatch><NotJudged more="0"><Entry assertion="3" )"
            R"x(name="inner()" status="PASSED" dir="" filename="" fnr="1" lnr="2"/>)x"
            R"(</NotJudged></Diagnosis>)");
}

TEST(DiagnosisElement, NoneWithoutAModel) {
  const TestCaseLog log = makeTestCaseLog(sdRun({"1"}, 1, true));
  const TestCaseVerdict verdict = judgeTestCase(&log, TestModel{}, true);
  XmlNodePtr result(newElement("TestCaseResult"));
  writeDiagnosis(result.get(), verdict);
  EXPECT_EQ(test::dumpNode(result.get()), "<TestCaseResult/>");
}

}  // namespace
}  // namespace qendor

namespace qendor {
namespace {

// Where the run stood, in the diagram's terms: the sentence of the report
// is made of these.
struct PositionCase {
  const char* name;
  SequenceLines lines;
  std::vector<std::string> run;
  bool finished;
  const char* expected;
};

const SequenceLines kRefund = {"1",
                               "ALT_BEGIN(R.refund)",
                               "ALT_OPERAND_BEGIN(R.refund)",
                               "2",
                               "ALT_OPERAND_END(R.refund)",
                               "ALT_OPERAND_BEGIN(R.refund)",
                               "3",
                               "ALT_OPERAND_END(R.refund)",
                               "ALT_END(R.refund)",
                               "OPT_BEGIN(R.mail)",
                               "OPT_OPERAND_BEGIN(R.mail)",
                               "4",
                               "OPT_OPERAND_END(R.mail)",
                               "OPT_END(R.mail)",
                               "5"};

const SequenceLines kNested = {"1",
                               "LOOP_BEGIN(l)",
                               "LOOP_OPERAND_BEGIN(l)",
                               "2",
                               "ALT_BEGIN(a)",
                               "ALT_OPERAND_BEGIN(a)",
                               "3",
                               "ALT_OPERAND_END(a)",
                               "ALT_OPERAND_BEGIN(a)",
                               "4",
                               "ALT_OPERAND_END(a)",
                               "ALT_END(a)",
                               "LOOP_OPERAND_END(l)",
                               "LOOP_END(l)",
                               "STRICT_BEGIN(s)",
                               "5",
                               "6",
                               "STRICT_END(s)"};

const PositionCase kPositions[] = {
    {"skipped alt, inside opt, recorded behind",
     kRefund,
     {"1", "4", "2"},
     true,
     R"(<Position last="12" lastValue="4" moreOptions="0">)"
     R"(<Inside operator="OPT" id="R.mail" line="10" operand="1" enteredAt="4"/>)"
     R"(<PassedOver operator="ALT" id="R.refund" line="2"/>)"
     R"(<Option value="5" line="15"/>)"
     R"(<Recorded where="behind" line="4" operator="ALT" id="R.refund" fragmentLine="2"/>)"
     R"(</Position>)"},
    {"inside alt operand 1, options in other fragments",
     kRefund,
     {"1", "2", "9"},
     true,
     R"(<Position last="4" lastValue="2" moreOptions="0">)"
     R"(<Inside operator="ALT" id="R.refund" line="2" operand="1" enteredAt="2"/>)"
     R"(<Option value="3" line="7"/>)"
     R"(<Option value="4" line="12" operator="OPT" id="R.mail" fragmentLine="10"/>)"
     R"(<Option value="5" line="15"/>)"
     R"(<Recorded where="nowhere"/></Position>)"},
    {"nothing accepted yet",
     kRefund,
     {"5"},
     true,
     R"(<Position moreOptions="0"><Option value="1" line="1"/>)"
     R"(<Recorded where="ahead" line="15"/></Position>)"},
    {"ended early at the top level",
     kRefund,
     {"1"},
     false,
     R"(<Position last="1" lastValue="1" moreOptions="0">)"
     R"(<Option value="2" line="4" operator="ALT" id="R.refund" fragmentLine="2"/>)"
     R"(<Option value="3" line="7" operator="ALT" id="R.refund" fragmentLine="2"/>)"
     R"(<Option value="4" line="12" operator="OPT" id="R.mail" fragmentLine="10"/>)"
     R"(<Option value="5" line="15"/></Position>)"},
    {"nested alt inside a loop",
     kNested,
     {"1", "2", "4", "1"},
     true,
     R"(<Position last="10" lastValue="4" moreOptions="0">)"
     R"(<Inside operator="LOOP" id="l" line="2" operand="1" enteredAt="2"/>)"
     R"(<Inside operator="ALT" id="a" line="5" operand="2" enteredAt="4"/>)"
     R"(<Option value="2" line="4"/>)"
     R"(<Option value="5" line="16" operator="STRICT" id="s" fragmentLine="15"/>)"
     R"(<Recorded where="behind" line="1"/></Position>)"},
    {"a loop passed over, inside a strict fragment",
     kNested,
     {"1", "5", "9"},
     true,
     R"(<Position last="16" lastValue="5" moreOptions="0">)"
     R"(<Inside operator="STRICT" id="s" line="15"/>)"
     R"(<PassedOver operator="LOOP" id="l" line="2"/>)"
     R"(<Option value="6" line="17"/>)"
     R"(<Recorded where="nowhere"/></Position>)"},
};

TEST(DiagnosisElement, PositionSaysWhereTheRunStood) {
  for (const PositionCase& c : kPositions) {
    EXPECT_EQ(diagnosisOf(c.lines, sdRun(c.run, 5, c.finished), true), c.expected) << c.name;
  }
}

// More values than the sentence names are counted, not listed.
TEST(DiagnosisElement, PositionListsTheFirstEightOptions) {
  SequenceLines lines = {"ALT_BEGIN(a)"};
  for (int i = 1; i <= 10; ++i) {
    lines.insert(lines.end(), {"ALT_OPERAND_BEGIN(a)", std::to_string(i), "ALT_OPERAND_END(a)"});
  }
  lines.push_back("ALT_END(a)");
  const std::string position = diagnosisOf(lines, sdRun({"x"}, 10, true), true);
  EXPECT_NE(position.find(R"(<Position moreOptions="2"><Option value="1" line="3" operator="ALT")"),
            std::string::npos)
      << position;
  EXPECT_EQ(position.find(R"(value="8")"), std::string::npos) << position;
  EXPECT_NE(position.find(R"(<Option value="7" line="21")"), std::string::npos) << position;
}

}  // namespace
}  // namespace qendor
