// What one run is told: the command line and the info file. Nothing else is
// run-wide; what the readers read they return, and the judgement and the
// writers get it handed in.
//
// `run()` is the one instance; `resetRun()` empties it again for tests and
// fuzzers.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qendor {

// An ordered map keyed by a signed 32-bit number, walked in ascending key
// order. `operator[]` on a missing key inserts an empty entry.
template <class Value>
using RunTable = std::map<int32_t, Value>;

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
  // "-index": rewrite the index of the output folder after the reports.
  bool index = false;
  // "-render".
  HtmlRenderer htmlRenderer = HtmlRenderer::kXsltproc;
  // "-junit": where the run's JUnit file goes; null without.
  const char* junitFile = nullptr;

  // "-coverage": the documents say how much of each model the test cases
  // went through.
  bool coverage = false;

  // From the info file.
  std::string ostraVersionNumber;
  std::string ostraBuildNumber;
  std::string korvanVersionNumber;
  std::string korvanBuildNumber;
  std::string activeProject;
  std::string activeComponent;
  std::string activeConfiguration;

  // The info file's tables.
  RunTable<std::string> testCaseNames;         // test case number -> full name
  RunTable<std::string> sequenceDiagramNames;  // test case number -> diagram name
  RunTable<std::string> sourceFiles;           // file number -> path
};

// The numbers of the test cases whose full name, cut before its last ".",
// is `contextName`, in ascending order.
std::vector<int32_t> contextMembers(const RunSettings& settings, std::string_view contextName);

// The run of this process.
RunSettings& run();

// Empties every setting and table, as before the entry point starts.
void resetRun();

}  // namespace qendor
