#include "input/info_file.h"

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"

namespace qendor {

namespace {

// Removes everything up to and including the first blank; without a blank the
// whole text stays (the not-found position plus one wraps round to zero).
std::string_view afterFirstBlank(std::string_view text) {
  size_t blank = text.find(' ');
  return blank == std::string_view::npos ? text : text.substr(blank + 1);
}

// Erases `count` characters from the front, or all when fewer are left.
void erasePrefix(std::string_view& text, size_t count) {
  text.remove_prefix(count < text.size() ? count : text.size());
}

// "TESTCASE " name, blank, number, blank, sequence diagram name. The diagram
// name of the last line that had one carries over to lines without one.
void readTestCaseLine(std::string_view line, std::string& diagramName, RunSettings& settings) {
  std::string_view rest = afterFirstBlank(line);
  std::string_view name = cutField(rest, " ");
  std::string_view numberField = rest;
  size_t blank = rest.find(' ');
  if (blank != std::string_view::npos) {
    numberField = rest.substr(0, blank);
    diagramName.assign(rest.substr(blank + 1));
  }
  int32_t number = readInt32(numberField);
  settings.testCaseNames[number].assign(name);
  settings.sequenceDiagramNames[number] = diagramName;
}

// "FILE", blank, double-quoted path, blank, file number.
void readFileLine(std::string_view line, RunSettings& settings) {
  std::string_view rest = line;
  cutField(rest, "\"");
  size_t closing = rest.find('"');
  std::string_view path = rest.substr(0, closing);
  // Path, closing quote and the one character after it go. Without a closing
  // quote the position wraps round as in the other cuts: one character goes.
  erasePrefix(rest, closing == std::string_view::npos ? 1 : closing + 2);
  settings.sourceFiles[readInt32(rest)].assign(path);
}

struct ValueKey {
  std::string_view key;
  std::string RunSettings::*setting;
};

// Tested after "TESTCASE " and "FILE", in this order; the first prefix wins.
const ValueKey kValueKeys[] = {
    {"OstraVersionNumber", &RunSettings::ostraVersionNumber},
    {"OstraBuildNumber", &RunSettings::ostraBuildNumber},
    {"OstraKorvanVersionNumber", &RunSettings::korvanVersionNumber},
    {"OstraKorvanBuildNumber", &RunSettings::korvanBuildNumber},
    {"ActiveProject", &RunSettings::activeProject},
    {"ActiveComponent", &RunSettings::activeComponent},
    {"ActiveConfiguration", &RunSettings::activeConfiguration},
};

}  // namespace

void parseInfoFile(LineReader& lines, RunSettings& settings) {
  std::string diagramName;  // survives from one "TESTCASE " line to the next
  std::string_view line;
  while (lines.next(line)) {
    if (startsWith(line, "TESTCASE ")) {
      readTestCaseLine(line, diagramName, settings);
    } else if (startsWith(line, "FILE")) {
      readFileLine(line, settings);
    } else {
      for (const ValueKey& key : kValueKeys) {
        if (startsWith(line, key.key)) {
          (settings.*key.setting).assign(afterFirstBlank(line));
          break;
        }
      }
    }
  }
}

bool readInfoFile() {
  LineReader lines(normalisePath(run().infoFile));
  if (!lines.isOpen()) return false;
  parseInfoFile(lines, run());
  return true;
}

}  // namespace qendor
