// What earlier runs of a test context or a single test case left behind:
// each run's result and its test cases' statuses, what they say about each
// test case now (new failure, fixed, flaky, still failing, stable), the text
// of the history file and the "History" element of the documents.
#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "verify/judgement.h"

namespace qendor {

// The most runs a history file keeps, newest first.
constexpr size_t kHistoryRuns = 30;
// How many of a test case's newest runs, this one included, decide whether
// it is flaky.
constexpr size_t kFlakyWindow = 10;

enum class Classification { kNew, kFixed, kFlaky, kStillFailing, kStable };

// "new", "fixed", "flaky", "still failing" or "stable".
std::string_view classificationText(Classification classification);

// Classifies a test case by its statuses, newest first: [0] is this run, then
// the earlier runs in which the test case was reported. Only PASSED counts as
// passed; a change is a step between passed and not passed.
//   flaky          it changed at least twice within the first kFlakyWindow
//   new            not passed now, passed in the run before or never run before
//   fixed          passed now, not passed in the run before
//   still failing  not passed now nor in the run before
//   stable         passed now and in the run before, or never run before
// The first rule that holds wins. An empty sequence is stable.
Classification classify(const std::vector<Status>& newestFirst);

// A test case as one run reported it.
struct HistoryCase {
  std::string name;                    // short name, as "TestCaseResult" writes it
  std::string fullName;                // what identifies the test case across runs
  Status status = Status::kUndefined;  // the document's "status"
  std::string verificationResult;
};

// What a run with "-coverage" reached of one model: the model's name, kind
// ("sequence" or "chart") and content fingerprint, and the elements at least
// one test case reached: for a diagram the line numbers of its steps and
// operands (operands by the line of their begin marker), for a chart the
// numbers of its records in file order (both from 1), ascending. The file
// writes consecutive ones as ranges.
struct HistoryCoverage {
  std::string name;
  std::string kind;
  std::string fingerprint;
  std::vector<uint32_t> covered;
};

struct HistoryRun {
  uint64_t number = 0;                 // one above the run before it; the first run is 1
  std::string time;                    // ISO 8601, UTC
  Status status = Status::kUndefined;  // the document's own status
  std::vector<HistoryCase> cases;
  // Kept in the history file only (a "ModelRun" per model); empty without
  // "-coverage".
  std::vector<HistoryCoverage> coverage;
};

// The runs of one history file, newest first.
struct History {
  std::vector<HistoryRun> runs;
};

// Who a history file belongs to: the report kind ("rk_testcontext" or
// "rk_testcase") and the full name of the context or test case.
struct HistoryOwner {
  std::string kind;
  std::string fullName;
};

enum class HistoryParse { kRead, kNotWellFormed, kForeign };

// Reads the text of a history file into `history` (emptied first). kForeign
// when it is well-formed but not the history of `owner`; `history` is then
// left empty. Elements and attributes it does not know are passed over.
HistoryParse parseHistory(std::string_view text, const HistoryOwner& owner, History& history);

// The text of the history file of `owner` holding `history`.
std::string historyText(const History& history, const HistoryOwner& owner);

// Puts `run` first, numbered one above the newest run, and keeps the newest
// kHistoryRuns.
void addRun(History& history, HistoryRun run);

// The test case named `fullName` of this run as `verdict` judged it.
HistoryCase historyCase(const std::string& fullName, const TestCaseVerdict& verdict);

// The current time as ISO 8601 in UTC, such as "2025-11-22T10:15:58Z".
std::string historyTimeText();

// Appends the "History" element to `root`: one "TestCaseTrend" per test case
// of `current` (this run's, in document order) with its classification, then
// the runs of `earlier`, newest first, each listing only those test cases.
void appendHistoryElement(xmlNode* root, const History& earlier,
                          const std::vector<HistoryCase>& current);

}  // namespace qendor
