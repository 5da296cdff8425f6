// Log lines to feed the readers and dumps of the records they file, for tests
// that compare them as one string.
#pragma once

#include <string>

#include "base/assertion_record.h"
#include "base/status.h"

namespace qendor {
namespace test {

// A start and a finish assertion, as a source file holds them.
inline constexpr char kStart[] = R"(ZKR_ASSERT_SD("sd", "m", "Starting test case");)";
inline constexpr char kFinish[] = R"(ZKR_ASSERT_SD("sd", "m", "Finished test case");)";

// One full-form record line.
inline std::string fullLine(const std::string& path, const std::string& line,
                            const std::string& result, const std::string& detail,
                            const std::string& statementAfterMarker) {
  return "FULLASSERTION=" + path + "," + line + "," + result + "," + detail + "-----ZKR_ASSERT" +
         statementAfterMarker + "\n";
}
// The full-form records of kStart (under the number `result`) and kFinish.
inline std::string fullStart(const std::string& result) {
  return fullLine("t.c", "1", result, "", std::string(kStart).substr(10));
}
inline std::string fullFinish() {
  return fullLine("t.c", "2", "1", "", std::string(kFinish).substr(10));
}

// A row of a table of logs: what it shows, the log, and the dump of the
// lists it leaves.
struct LogCase {
  const char* name;
  std::string log;
  std::string dump;
};

// "text|STATUS|file number|line number|detail text", each as read.
inline std::string dumpRecord(const AssertionRecord& r) {
  return r.assertionText + "|" + std::string(statusText(r.status)) + "|" + r.fileNumber + "|" +
         r.lineNumber + "|" + r.detailText;
}

// Every test case's records as a "number: [record] [record]" line.
inline std::string dumpLists(const TestCaseLogs& logs) {
  std::string out;
  for (const auto& [number, log] : logs) {
    out += std::to_string(number) + ":";
    for (const AssertionRecord& r : log.records) out += " [" + dumpRecord(r) + "]";
    out += "\n";
  }
  return out;
}

}  // namespace test
}  // namespace qendor
