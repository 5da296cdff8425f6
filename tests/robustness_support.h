// The pieces of the tests that run the built program on hostile inputs and
// names: a workspace to run it in, its documented exit statuses, and checks
// of the files it leaves behind.
#pragma once

#include <gtest/gtest.h>

#include <libxml/parser.h>

#include <cstddef>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace test {

// Every exit status the program documents.
inline const std::set<int> kDocumentedStatuses = {0, 10, 11, 12, 13, 20, 21, 22, 24, 25, 30};

using Outcome = ProgramOutcome;

// Runs the program with `args` inside `workDir` under a fixed environment.
inline Outcome runQendor(const std::vector<std::string>& args, const std::string& workDir,
                         const std::string& path = "/usr/bin:/bin") {
  return runProgram(QENDOR_BINARY, args, workDir, path);
}

inline std::vector<std::string> args(const std::string& info, const std::string& result,
                                     const std::string& outDir, const std::string& which,
                                     const std::string& name) {
  return {"-infofile", info, "-resultfile", result, "-outdirectory", outDir, which, name};
}

// Parsed with libxml2's default limits, as xmllint --noout reads it.
inline bool wellFormed(const std::string& path) {
  xmlDoc* doc =
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) return false;
  xmlFreeDoc(doc);
  return true;
}

// Every XML file in `dir` is well-formed and, when `withHtml`, has its HTML
// file beside it. Returns how many XML files there are.
inline size_t checkReports(const std::string& dir, bool withHtml) {
  size_t count = 0;
  for (const std::string& name : filesIn(dir)) {
    if (name.size() < 4 || name.compare(name.size() - 4, 4, ".xml") != 0) continue;
    ++count;
    const std::string stem = dir + "/" + name.substr(0, name.size() - 4);
    EXPECT_TRUE(wellFormed(stem + ".xml")) << name;
    if (withHtml) {
      EXPECT_TRUE(fileExists(stem + ".html")) << name;
    }
  }
  return count;
}

// The attribute `name` of the root element of an XML file.
inline std::string rootAttribute(const std::string& path, const char* name) {
  xmlDoc* doc =
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) return "<unreadable>";
  xmlNode* root = xmlDocGetRootElement(doc);
  xmlNode* element = root;
  // The first TestCaseResult carries the test case's own attributes.
  for (xmlNode* child = root ? root->children : nullptr; child; child = child->next) {
    if (child->type == XML_ELEMENT_NODE &&
        std::string(reinterpret_cast<const char*>(child->name)) == "TestCaseResult") {
      element = child;
      break;
    }
  }
  xmlChar* value = element ? xmlGetProp(element, reinterpret_cast<const xmlChar*>(name)) : nullptr;
  std::string text = value ? reinterpret_cast<const char*>(value) : "<absent>";
  xmlFree(value);
  xmlFreeDoc(doc);
  return text;
}

// A folder holding the program's inputs and an output folder "out".
class Workspace {
 public:
  Workspace() { std::filesystem::create_directories(dir_.file("out")); }
  std::string path(const std::string& name) const { return dir_.file(name); }
  void write(const std::string& name, const std::string& content) const {
    dir_.write(name, content);
  }
  Outcome run(const std::vector<std::string>& arguments,
              const std::string& envPath = "/usr/bin:/bin") const {
    return runQendor(arguments, dir_.path(), envPath);
  }

 private:
  TempDir dir_;
};

inline std::string startRecord(int number, const std::string& name) {
  return "FULLASSERTION=a.c,1," + std::to_string(number) +
         ",-----ZKR_ASSERT_TRUE(\"Starting test case: " + name + "\");\n";
}
inline std::string finishRecord(const std::string& name, int result = 1) {
  return "FULLASSERTION=a.c,2," + std::to_string(result) +
         ",-----ZKR_ASSERT_TRUE(\"Finished test case: " + name + "\");\n";
}

inline std::string randomBytes(std::mt19937& engine, size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(engine() & 0xFF);
  return bytes;
}

}  // namespace test
}  // namespace qendor
