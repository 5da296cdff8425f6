#include "report/html_report.h"

#include <libxml/xmlIO.h>
#include <sched.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "base/paths.h"
#include "base/run_settings.h"
#include "report/file_output.h"
#include "report/xml_node.h"

namespace qendor {

const char* stylesheetName(int reportLanguage) {
  switch (reportLanguage) {
    case kChs:
      return "TestResult2CHS.xslt";
    case kCht:
      return "TestResult2CHT.xslt";
    case kKor:
      return "TestResult2KOR.xslt";
    case kJpn:
      return "TestResult2JPN.xslt";
    default:
      return "TestResult2ENU.xslt";
  }
}

namespace {

int writeToFile(void* context, const char* bytes, int length) {
  return static_cast<FileOutput*>(context)->write(
             std::string_view(bytes, static_cast<size_t>(length)))
             ? length
             : -1;
}

}  // namespace

bool saveXmlDocument(xmlNode* root, const std::string& xmlPath, int* error, ChildSpool* spool) {
  // Writing through our own file keeps libxml2 from reading "%XX" in the
  // name as an escaped URI.
  FileOutput file(normalisePath(xmlPath.c_str()));
  if (!file.open()) {
    if (error) *error = file.error();
    return false;
  }
  // A document that could not be serialised (no memory) is lost like one
  // that could not be written; the file goes with `file`.
  const bool serialised =
      spool ? spool->writeDocument(root, file)
            : writeFormattedDocument(root,
                                     xmlOutputBufferCreateIO(writeToFile, nullptr, &file, nullptr));
  if (serialised && file.finish()) return true;
  if (error) *error = file.error() != 0 ? file.error() : ENOMEM;
  return false;
}

size_t renderSlots() {
  // The cores this process may run on: a harness that pins it to some of
  // the machine's cores gets no more renders than those at once.
  cpu_set_t allowed;
  CPU_ZERO(&allowed);
  long cores = sched_getaffinity(0, sizeof allowed, &allowed) == 0 ? CPU_COUNT(&allowed)
                                                                   : sysconf(_SC_NPROCESSORS_ONLN);
  return cores > 1 ? static_cast<size_t>(cores) : 1;
}

}  // namespace qendor
