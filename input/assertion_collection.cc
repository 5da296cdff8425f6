#include "input/assertion_collection.h"

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"

namespace qendor {

namespace {

std::string_view stripLeadingBlanksAndTabs(std::string_view line) {
  size_t at = line.find_first_not_of(" \t");
  return at == std::string_view::npos ? std::string_view() : line.substr(at);
}

bool isCommentLine(std::string_view line) {
  return startsWith(line, "//") || startsWith(line, "/*");
}

// Line numbers count from 1 and wrap like the 32-bit keys they become.
int32_t lineKey(uint32_t count) {
  return static_cast<int32_t>(count);
}

}  // namespace

void collectStatements(LineReader& reader, LineStatements& statements) {
  uint32_t count = 0;
  std::string_view line;
  std::string statement;
  while (reader.next(line)) {
    ++count;
    if (!contains(line, "ZKR_ASSERT")) continue;
    line = stripLeadingBlanksAndTabs(line);
    if (isCommentLine(line)) continue;
    if (contains(line, ";")) {
      statements[lineKey(count)].assign(line);
      continue;
    }
    // The statement goes on until a line with a ";"; continuation lines are
    // joined without their leading blanks and are not tested for anything
    // else. A file that ends first drops the unfinished statement.
    statement.assign(line);
    bool finished = false;
    while (!finished && reader.next(line)) {
      ++count;
      line = stripLeadingBlanksAndTabs(line);
      statement.append(line);
      finished = contains(line, ";");
    }
    if (finished) statements[lineKey(count)] = statement;
  }
}

CollectedAssertions collectAssertions(const RunTable<std::string>& sourceFiles) {
  CollectedAssertions collected;
  for (const auto& [number, path] : sourceFiles) {
    LineStatements& statements = collected.statements[number];
    LineReader reader(normalisePath(path));
    if (!reader.isOpen()) continue;
    collectStatements(reader, statements);
    collected.anyFileRead = true;
  }
  return collected;
}

}  // namespace qendor
