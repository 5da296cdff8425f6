// The short record form: records that name an assertion by file and line.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/assertion_record.h"
#include "base/line_reader.h"
#include "input/assertion_collection.h"
#include "input/case_splitter.h"

namespace qendor {

// The collected statements in a form that a record finds in two steps, each
// with whether it starts or finishes a test case, worked out once per
// statement rather than once per record. Refers to the statements of the
// table it was built from, which must outlive it.
class StatementIndex {
 public:
  struct Statement {
    const std::string* text = nullptr;
    RecordBoundary boundary;
    bool sequenceDiagram = false;  // makes its test case a sequence diagram test case
  };

  explicit StatementIndex(const RunTable<LineStatements>& collected);

  // The statement under the two numbers; null when either is absent.
  const Statement* find(int32_t fileNumber, int32_t lineNumber) const;

 private:
  struct File {
    int32_t first = 0;
    std::vector<Statement> byLine;  // index: line number less `first`
    std::unordered_map<int32_t, Statement> sparse;
  };

  std::unordered_map<int32_t, File> files_;
};

// Hands every short-form record of `lines` whose statement `statements` holds
// to `splitter`.
void parseShortAssertions(LineReader& lines, const StatementIndex& statements,
                          TestCaseSplitter& splitter);

// Reads the short-form records of `lines` into the test cases `wanted` names.
TestCaseLogs readShortAssertions(LineReader& lines, const StatementIndex& statements,
                                 const WantedTestCases& wanted);

// The statement collected for the file and line; null when either key is
// absent.
const StatementIndex::Statement* lookupCollectedAssertion(const StatementIndex& statements,
                                                          int32_t fileNumber, int32_t lineNumber);

}  // namespace qendor
