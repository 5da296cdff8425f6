// What the index of an output folder lists: the test context documents
// found there, each read only as far as its header and its test cases'
// statuses, streaming, so that a folder of hundreds of large documents is
// indexed without building any of their trees.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qendor {

// One test context document, as the index lists it.
struct IndexedContext {
  std::string file;  // the document's file name in the folder
  std::string name;  // the header's "name" and "fullname"
  std::string fullName;
  std::string status;  // the TestContextResult's "status", as written
  std::string time;    // the header's "time", as written
  std::string projectName;
  std::string componentName;
  std::string configurationName;
  // Its test cases by status; "undefined" counts every other status.
  uint64_t passed = 0;
  uint64_t failed = 0;
  uint64_t error = 0;
  uint64_t undefined = 0;
  uint64_t assertions = 0;  // AssertionInfo elements of its test cases
};

// A file named like a document that could not be indexed.
struct SkippedFile {
  std::string file;
  std::string reason;  // "could not be read" or "is not well-formed"
};

enum class IndexRead { kContext, kOther, kUnreadable, kNotWellFormed };

// Reads `bytes` (a whole file's content) as a document: kContext, with
// `context` filled in but for its file name, when its top element is
// TestResult of kind "rk_testcontext"; kOther for any other well-formed
// document (a test case report, a history file, the index itself);
// kNotWellFormed otherwise.
IndexRead readIndexedContext(const std::string& bytes, IndexedContext& context);

// The same for the file at `path`; kUnreadable when it cannot be opened or
// is not a regular file.
IndexRead readIndexedContextFile(const std::string& path, IndexedContext& context);

struct IndexScan {
  std::vector<IndexedContext> contexts;  // problems first, see sortIndex()
  std::vector<SkippedFile> skipped;      // by file name
};

// The name of the index document in an output folder; it is never indexed.
extern const char kIndexFileName[];

// Every "*.xml" file of `directory` (normalised) but the index: the test
// context documents and the files that could not be read. Other documents
// are passed over in silence. An unreadable folder gives an empty scan.
IndexScan scanIndexDirectory(const std::string& directory);

// Orders the contexts problems first: FAILED, then ERROR, then any other
// status but PASSED, then PASSED; by name within a status, then by file
// name. Skipped files are ordered by name.
void sortIndex(IndexScan& scan);

}  // namespace qendor
