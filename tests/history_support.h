// Helpers of the tests that run the program with "-history" on the bundled
// example.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace test {

// A history file that cannot be used, as a test puts it in place, and the
// words of the warning it must give.
struct UnusableHistoryFile {
  const char* what;
  std::string content;  // empty: a folder stands in the file's place
  const char* warning;
};

// A file that is not well-formed, one of another context than `fullName`,
// and one that cannot be read: a folder, which fails even for root, whom
// permission bits do not stop.
inline std::vector<UnusableHistoryFile> unusableHistoryFiles(const std::string& fullName) {
  return {
      {"corrupt",
       "<History kind=\"rk_testcontext\" fullname=\"" + fullName + "\"><Run number=\"1\">",
       "is not well-formed"},
      {"foreign", "<History kind=\"rk_testcontext\" fullname=\"Other." + fullName + "\"/>",
       "belongs to another test context or test case"},
      {"unreadable", "", "could not be read"},
  };
}

// Puts `file` in place at `path`.
inline void placeUnusableHistoryFile(const UnusableHistoryFile& file, const std::string& path) {
  namespace fs = std::filesystem;
  fs::create_directories(fs::path(path).parent_path());
  if (file.content.empty()) {
    fs::create_directories(path);
  } else {
    std::ofstream(path, std::ios::binary) << file.content;
  }
}

// The bundled example copied into a fresh temporary folder: the info file,
// the log, the sources, and the verification files in each output folder.
class ExampleRun {
 public:
  ExampleRun() {
    namespace fs = std::filesystem;
    const std::string examples = std::string(QENDOR_SOURCE_DIR) + "/examples";
    fs::copy(examples + "/shop.info", dir_.path());
    fs::copy(examples + "/results.log", dir_.path());
    fs::copy(examples + "/src", dir_.file("src"), fs::copy_options::recursive);
  }
  const TempDir& dir() const { return dir_; }
  std::string path(const std::string& name) const { return dir_.file(name); }

  // The verification files copied into `outDir`, the arguments of a report
  // of the context (or of `testCase`) into it, with "-history" when
  // `historyDir` is not empty.
  std::vector<std::string> prepare(const std::string& outDir, const std::string& historyDir = "",
                                   const std::string& testCase = "") const {
    namespace fs = std::filesystem;
    fs::create_directories(dir_.file(outDir));
    fs::copy(std::string(QENDOR_SOURCE_DIR) + "/examples/verification", dir_.file(outDir),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    std::vector<std::string> args = {"-infofile",   "shop.info",     "-resultfile",
                                     "results.log", "-outdirectory", outDir};
    if (testCase.empty()) {
      args.insert(args.end(), {"-tcontext", "Shop.Checkout"});
    } else {
      args.insert(args.end(), {"-tcase", testCase});
    }
    if (!historyDir.empty()) args.insert(args.end(), {"-history", historyDir});
    return args;
  }

  ProgramOutcome run(const std::string& outDir, const std::string& historyDir = "",
                     const std::string& testCase = "") const {
    return runProgram(QENDOR_BINARY, prepare(outDir, historyDir, testCase), dir_.path());
  }

 private:
  TempDir dir_;
};

// The lines of the "History" element of a saved document, from "  <History"
// to "  </History>" (or its one line when it is empty); empty without one.
inline std::string historyElement(const std::string& document) {
  const size_t start = document.find("  <History");
  if (start == std::string::npos) return std::string();
  const std::string closing = "  </History>\n";
  size_t end = document.find(closing, start);
  end = end == std::string::npos ? document.find('\n', start) + 1 : end + closing.size();
  return document.substr(start, end - start);
}

// The document without its "History" element and with the header's time
// masked: what a run without "-history" writes, when nothing else differs.
inline std::string withoutHistory(const std::string& document) {
  std::string text = document;
  const std::string element = historyElement(text);
  if (!element.empty()) text.erase(text.find(element), element.size());
  static const std::regex time(" time=\"[^\"]*\"");
  return std::regex_replace(text, time, " time=\"*\"");
}

// The "number" of each "Run" in `text`, in order.
inline std::vector<int> runNumbers(const std::string& text) {
  static const std::regex run("<Run number=\"([0-9]+)\"");
  std::vector<int> numbers;
  for (std::sregex_iterator it(text.begin(), text.end(), run), end; it != end; ++it) {
    numbers.push_back(std::stoi((*it)[1]));
  }
  return numbers;
}

// True when xmllint finds `path` valid against the schema of the documents
// (which also describes the history file).
inline bool validates(const std::string& path) {
  const ProgramOutcome o = runProgram(
      "/usr/bin/xmllint",
      {"--noout", "--schema", std::string(QENDOR_SOURCE_DIR) + "/schema/TestResult.xsd", path},
      "/");
  return o.status == 0;
}

// The names of the XML documents of `dir` that differ from those of
// `reference` once their "History" elements and times are left out, or that
// only one of them has; empty when all agree.
inline std::string differingDocuments(const std::string& reference, const std::string& dir) {
  std::string differing;
  std::vector<std::string> names = filesIn(reference);
  for (const std::string& name : filesIn(dir)) names.push_back(name);
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  for (const std::string& name : names) {
    if (name.size() < 4 || name.compare(name.size() - 4, 4, ".xml") != 0) continue;
    const std::string a = reference + "/" + name, b = dir + "/" + name;
    if (!fileExists(a) || !fileExists(b) ||
        withoutHistory(readFile(a)) != withoutHistory(readFile(b))) {
      differing += name + " ";
    }
  }
  return differing;
}

}  // namespace test
}  // namespace qendor
