// The short record form: records that name an assertion by file and line.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "input/test_case_splitter.h"

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
  };

  explicit StatementIndex(const RunTable<std::unique_ptr<LineStatements>>& collected);

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

// Reads short-form records from `run().resultFile` into
// `run().testCaseAssertions`, taking the statements from
// `run().collectedAssertions`. 0 when the file cannot be opened, 1 otherwise.
int readShortAssertions();

// Hands every short-form record of `lines` whose statement `statements` holds
// to `splitter`.
void parseShortAssertions(LineReader& lines, const StatementIndex& statements,
                          TestCaseSplitter& splitter);

// Copies the statement collected for the file and line in `run()` into
// `statement`. False, with `statement` untouched, when either key is absent.
bool lookupCollectedAssertion(int32_t fileNumber, int32_t lineNumber, std::string& statement);

// The same over an index: the statement, or null when either key is absent.
const StatementIndex::Statement* lookupCollectedAssertion(const StatementIndex& statements,
                                                          int32_t fileNumber, int32_t lineNumber);

}  // namespace qendor
