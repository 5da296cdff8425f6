#include "report/index_scan.h"

#include <dirent.h>
#include <fcntl.h>
#include <libxml/xmlreader.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <tuple>

namespace qendor {

const char kIndexFileName[] = "index.xml";

namespace {

struct ReaderFree {
  void operator()(xmlTextReader* reader) const { xmlFreeTextReader(reader); }
};
using ReaderPtr = std::unique_ptr<xmlTextReader, ReaderFree>;

// Documents are read without a word on standard error: one that is not
// well-formed is a note in the index, not a warning.
void quiet(void*, const char*, xmlParserSeverities, xmlTextReaderLocatorPtr) {}

// HUGE: a context document may hold attribute values and text far longer
// than libxml2's default limits allow.
constexpr int kReadOptions =
    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;

bool named(xmlTextReader* reader, const char* name) {
  const xmlChar* local = xmlTextReaderConstName(reader);
  return local && std::strcmp(reinterpret_cast<const char*>(local), name) == 0;
}

// The value of an attribute of the current element; empty when missing.
std::string attribute(xmlTextReader* reader, const char* name) {
  xmlChar* value = xmlTextReaderGetAttribute(reader, reinterpret_cast<const xmlChar*>(name));
  if (!value) return std::string();
  std::string text(reinterpret_cast<const char*>(value));
  xmlFree(value);
  return text;
}

void countCase(IndexedContext& context, const std::string& status) {
  if (status == "PASSED") {
    ++context.passed;
  } else if (status == "FAILED") {
    ++context.failed;
  } else if (status == "ERROR") {
    ++context.error;
  } else {
    ++context.undefined;
  }
}

// Walks the document forward once. Only the top element, the header, its
// configuration, the context result and its test cases' start tags are
// looked at; the assertions are counted as they pass.
IndexRead readWith(xmlTextReader* reader, IndexedContext& context) {
  if (!reader) return IndexRead::kNotWellFormed;
  xmlTextReaderSetErrorHandler(reader, quiet, nullptr);
  int got;
  // The top element.
  while ((got = xmlTextReaderRead(reader)) == 1 &&
         xmlTextReaderNodeType(reader) != XML_READER_TYPE_ELEMENT) {
  }
  if (got != 1) return IndexRead::kNotWellFormed;
  if (!named(reader, "TestResult") || attribute(reader, "kind") != "rk_testcontext") {
    return IndexRead::kOther;
  }
  enum class Section { kNone, kHeader, kContext } section = Section::kNone;
  while ((got = xmlTextReaderRead(reader)) == 1) {
    if (xmlTextReaderNodeType(reader) != XML_READER_TYPE_ELEMENT) continue;
    const int depth = xmlTextReaderDepth(reader);
    if (depth == 1) {
      section = Section::kNone;
      if (named(reader, "ResultHeader")) {
        section = Section::kHeader;
        context.name = attribute(reader, "name");
        context.fullName = attribute(reader, "fullname");
        context.time = attribute(reader, "time");
      } else if (named(reader, "TestContextResult")) {
        section = Section::kContext;
        context.status = attribute(reader, "status");
      }
    } else if (section == Section::kHeader && depth == 2 && named(reader, "ConfigurationInfo")) {
      context.projectName = attribute(reader, "projectName");
      context.componentName = attribute(reader, "componentName");
      context.configurationName = attribute(reader, "configurationName");
    } else if (section == Section::kContext) {
      if (depth == 2 && named(reader, "TestCaseResult")) {
        countCase(context, attribute(reader, "status"));
      } else if (depth > 2 && named(reader, "AssertionInfo")) {
        ++context.assertions;
      }
    }
  }
  return got == 0 ? IndexRead::kContext : IndexRead::kNotWellFormed;
}

bool endsWith(const std::string& text, const char* tail) {
  const size_t n = std::strlen(tail);
  return text.size() >= n && text.compare(text.size() - n, n, tail) == 0;
}

// FAILED first, PASSED last.
int statusRank(const std::string& status) {
  if (status == "FAILED") return 0;
  if (status == "ERROR") return 1;
  if (status == "PASSED") return 3;
  return 2;
}

}  // namespace

IndexRead readIndexedContext(const std::string& bytes, IndexedContext& context) {
  if (bytes.size() > static_cast<size_t>(INT_MAX)) return IndexRead::kNotWellFormed;
  ReaderPtr reader(xmlReaderForMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                      nullptr, kReadOptions));
  return readWith(reader.get(), context);
}

IndexRead readIndexedContextFile(const std::string& path, IndexedContext& context) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return IndexRead::kUnreadable;
  struct stat file;
  if (fstat(fd, &file) != 0 || !S_ISREG(file.st_mode)) {
    close(fd);
    return IndexRead::kUnreadable;
  }
  IndexRead read;
  {
    ReaderPtr reader(xmlReaderForFd(fd, path.c_str(), nullptr, kReadOptions));
    read = readWith(reader.get(), context);
  }
  close(fd);
  return read;
}

IndexScan scanIndexDirectory(const std::string& directory) {
  IndexScan scan;
  DIR* folder = opendir(directory.c_str());
  if (!folder) return scan;
  std::vector<std::string> names;
  while (const dirent* entry = readdir(folder)) {
    const std::string name = entry->d_name;
    if (endsWith(name, ".xml") && name != kIndexFileName) names.push_back(name);
  }
  closedir(folder);
  for (const std::string& name : names) {
    IndexedContext context;
    std::string path = directory;
    path.append("/").append(name);
    switch (readIndexedContextFile(path, context)) {
      case IndexRead::kContext:
        context.file = name;
        scan.contexts.push_back(std::move(context));
        break;
      case IndexRead::kOther:
        break;
      case IndexRead::kUnreadable:
        scan.skipped.push_back({name, "could not be read"});
        break;
      case IndexRead::kNotWellFormed:
        scan.skipped.push_back({name, "is not well-formed"});
        break;
    }
  }
  sortIndex(scan);
  return scan;
}

void sortIndex(IndexScan& scan) {
  std::sort(scan.contexts.begin(), scan.contexts.end(),
            [](const IndexedContext& a, const IndexedContext& b) {
              return std::make_tuple(statusRank(a.status), std::cref(a.name), std::cref(a.file)) <
                     std::make_tuple(statusRank(b.status), std::cref(b.name), std::cref(b.file));
            });
  std::sort(scan.skipped.begin(), scan.skipped.end(),
            [](const SkippedFile& a, const SkippedFile& b) { return a.file < b.file; });
}

}  // namespace qendor
