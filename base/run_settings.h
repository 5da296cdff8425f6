// Everything one run knows: the command line, the values of the info file and
// the run-wide tables the readers fill and the report writers read.
//
// These are process-wide by design: every stage reads them without having
// them passed in. `run()` is the one instance; `resetRun()` empties it again
// for tests and fuzzers.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/assertion_record.h"
#include "base/chart_record.h"

namespace qendor {

// An ordered map keyed by a signed 32-bit number, walked in ascending key
// order. `operator[]` on a missing key inserts an empty entry (empty string,
// null pointer); several readers rely on that.
template <class Value>
using RunTable = std::map<int32_t, Value>;

using LineStatements = std::map<int32_t, std::string>;
using SequenceLines = std::vector<std::string>;

// Report languages in the order of the "-language" table.
enum ReportLanguage { kEnu = 1, kChs = 2, kCht = 3, kKor = 4, kJpn = 5 };

// What turns a saved result document into HTML ("-render"): the xsltproc
// command, one process per report, or libxslt inside this process.
enum class HtmlRenderer { kXsltproc, kBuiltin };

struct RunSettings {
  // From the command line; null when the option was not given.
  const char* infoFile = nullptr;
  const char* resultFile = nullptr;
  const char* outDirectory = nullptr;
  std::string testContextName;
  std::string testCaseName;
  int reportLanguage = kEnu;
  std::string programDirectory;
  // "-explain": the documents say why each model-based verification failed.
  bool explain = false;
  // "-history": where the history files of earlier runs lie; null without.
  const char* historyDirectory = nullptr;
  // "-render".
  HtmlRenderer htmlRenderer = HtmlRenderer::kXsltproc;

  // From the info file.
  std::string ostraVersionNumber;
  std::string ostraBuildNumber;
  std::string korvanVersionNumber;
  std::string korvanBuildNumber;
  std::string activeProject;
  std::string activeComponent;
  std::string activeConfiguration;

  // Run tables. The pointees are owned by the tables.
  RunTable<std::string> testCaseNames;         // test case number -> full name
  RunTable<std::string> sequenceDiagramNames;  // test case number -> diagram name
  RunTable<std::string> sourceFiles;           // file number -> path
  RunTable<std::unique_ptr<LineStatements>> collectedAssertions;  // file number -> statements
  RunTable<std::unique_ptr<AssertionList>> testCaseAssertions;    // test case number -> records
  RunTable<std::unique_ptr<SequenceLines>> sequenceLines;         // test case number -> lines
  RunTable<std::unique_ptr<ChartList>> chartSteps;                // test case number -> chart
};

// The run of this process.
RunSettings& run();

// Empties every setting and table, as before the entry point starts.
void resetRun();

// Releases what the tables point to while keeping their keys, as the report
// driver does after the last document.
void releaseRunTables();

}  // namespace qendor
