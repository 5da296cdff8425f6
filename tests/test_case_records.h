// Records of one test case and the verification texts they are judged
// against, shared by the tests of the judgement and of the documents.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/assertion_record.h"
#include "tests/test_support.h"

namespace qendor {
namespace test {

inline AssertionRecord record(std::string text, std::string_view status = "PASSED",
                              std::string detail = "", std::string fileNumber = "1",
                              std::string lineNumber = "10") {
  return AssertionRecord{std::move(text), recordStatus(status), std::move(fileNumber),
                         std::move(lineNumber), std::move(detail)};
}

// Records of an SD test. The start's message comes from the macro parser,
// which keeps the closing quote before ")"; the steps carry their progress in
// the detail text, as the full form does.
inline constexpr char kSdStart[] = R"(ZKR_ASSERT_SD("Main", "m0", "Starting test case"))";
inline constexpr char kSdFinish[] = R"(ZKR_ASSERT_SD("Main", "m9", "Finished test case: CaseOne"))";
inline constexpr char kSdUserExit[] = R"(ZKR_ASSERT_SD("Main", "m8", "NOFAIL_INTENDED_USER_EXIT"))";
inline AssertionRecord sdStep(int step, int max, std::string_view status = "PASSED") {
  const std::string n = std::to_string(step);
  return record("ZKR_ASSERT_SD(\"Main\", \"m" + n + "\", \"step\")", status,
                "step" + n + " - progress " + n + "/" + std::to_string(max));
}

// Records of code and chart tests.
inline constexpr char kCodeStart[] = R"(ZKR_ASSERT_NAME("Starting test case", 1))";
inline constexpr char kCodeFinish[] = R"(ZKR_ASSERT_NAME("Finished test case: CaseOne", 1))";
inline constexpr char kUserExit[] = "ZKR_ASSERT_TRUE(NOFAIL_INTENDED_USER_EXIT)";

// A sequence diagram of four messages, "1" to "4".
inline constexpr char kFourSteps[] = "SD_TEST\n1\n2\n3\n4";

// A statechart: Init --go--> Work (asserts x==1 on entry) --done--> End.
inline constexpr char kStatechart[] =
    "STATECHART_TEST\n"
    "----------\nSTATE_NAME:\nInit\nGUID:\ns1\nSTATE_TYPE:\nInitial\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nOUT_TRANSITIONS:\nt1\n"
    "----------\nTRANSITION_NAME:\ngo\nGUID:\nt1\nTRANSITION_TARGET:\ns2\n"
    "----------\nSTATE_NAME:\nWork\nGUID:\ns2\nSTATE_TYPE:\nState\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nSTATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(x == 1);\n"
    "OUT_TRANSITIONS:\nt2\n"
    "----------\nTRANSITION_NAME:\ndone\nGUID:\nt2\nTRANSITION_TARGET:\ns3\n"
    "----------\nSTATE_NAME:\nEnd\nGUID:\ns3\nSTATE_TYPE:\nTermination\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n";

// A flowchart: Start -> Act (asserts x==1 and the user exit on entry) -> End,
// where End is `endType`.
inline std::string flowchart(const std::string& endType) {
  return "FLOWCHART_TEST\n"
         "----------\nSTATE_NAME:\nStart\nGUID:\nn1\nSTATE_TYPE:\nInitial\n"
         "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nOUT_TRANSITIONS:\nt1\n"
         "----------\nTRANSITION_NAME:\na\nGUID:\nt1\nTRANSITION_TARGET:\nn2\n"
         "----------\nSTATE_NAME:\nAct\nGUID:\nn2\nSTATE_TYPE:\nAction\n"
         "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nSTATE_ACTION_ENTRY:\n"
         "ZKR_ASSERT_TRUE(x == 1);\nZKR_ASSERT_TRUE(NOFAIL_INTENDED_USER_EXIT);\n"
         "OUT_TRANSITIONS:\nt2\n"
         "----------\nTRANSITION_NAME:\nb\nGUID:\nt2\nTRANSITION_TARGET:\nn3\n"
         "----------\nSTATE_NAME:\nEnd\nGUID:\nn3\nSTATE_TYPE:\n" +
         endType + "\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n";
}

}  // namespace test
}  // namespace qendor
