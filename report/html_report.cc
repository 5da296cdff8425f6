#include "report/html_report.h"

#include <libxml/xmlIO.h>
#include <sched.h>
#include <unistd.h>

#include <cstdio>

#include "base/paths.h"
#include "base/run_settings.h"
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

bool saveXmlDocument(xmlNode* root, const std::string& xmlPath) {
  // Going through our own FILE keeps libxml2 from reading "%XX" in the name
  // as an escaped URI.
  FILE* file = std::fopen(normalisePathCopy(xmlPath.c_str()).c_str(), "w");
  if (!file) return false;
  writeFormattedDocument(root, xmlOutputBufferCreateFile(file, nullptr));
  std::fclose(file);
  return true;
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
