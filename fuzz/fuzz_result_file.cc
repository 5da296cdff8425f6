// The record parsers of both forms, with the collection of assertion
// statements from a source text: the input is an info file, a source file
// and a result file, separated by lines "@@".
#include <cstddef>
#include <cstdint>

#include "base/assertion_record.h"
#include "base/line_reader.h"
#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"
#include "input/assertion_collection.h"
#include "input/info_file.h"
#include "input/result_file.h"
#include "input/short_assertions.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto parts = fuzz::splitInput(data, size, 3);
  RunSettings settings;
  LineReader info(parts[0]);
  parseInfoFile(info, settings);
  // The source text stands for two FILE entries, as if listed twice.
  RunTable<LineStatements> collected;
  for (int32_t file : {1, 2}) {
    LineReader source(parts[1]);
    collectStatements(source, collected[file]);
  }
  LineReader detect(parts[2]);
  const RecordForm form = detectRecordForm(detect);
  LineReader records(parts[2]);
  TestCaseLogs logs;
  TestCaseSplitter splitter(logs, WantedTestCases::of(settings));
  if (form == RecordForm::kShort) {
    const StatementIndex statements(collected);
    parseShortAssertions(records, statements, splitter);
  } else if (form == RecordForm::kFull) {
    parseFullAssertions(records, settings.sourceFiles, splitter);
  }
  return 0;
}
