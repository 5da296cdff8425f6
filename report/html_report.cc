#include "report/html_report.h"

#include <libxml/xmlIO.h>
#include <libxml/xmlsave.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "app/paths.h"
#include "app/run_settings.h"

extern char** environ;

namespace qendor {

namespace {

// Writes `doc` to the literal file `fileName` with indentation, byte for byte
// what xmlSaveFormatFile with format 1 writes. Going through our own FILE
// keeps libxml2 from reading "%XX" in the name as an escaped URI.
void saveFormatted(xmlDoc* doc, const std::string& fileName) {
  FILE* file = std::fopen(fileName.c_str(), "w");
  if (!file) return;
  xmlOutputBuffer* buffer = xmlOutputBufferCreateFile(file, nullptr);
  if (buffer) xmlSaveFormatFileTo(buffer, doc, nullptr, 1);  // closes the buffer, not the file
  std::fclose(file);
}

// Runs xsltproc with exactly these arguments, without a shell, and waits for
// it. Returns a short reason when it could not run or did not succeed.
const char* runXsltproc(const std::string& htmlPath, const std::string& stylesheet,
                        const std::string& xmlPath) {
  std::string command = "xsltproc";
  std::string outputOption = "-o";
  std::string html = htmlPath;
  std::string sheet = stylesheet;
  std::string xml = xmlPath;
  char* argv[] = {command.data(), outputOption.data(), html.data(),
                  sheet.data(),   xml.data(),          nullptr};

  // Whatever stdout still buffers must not be written twice.
  std::fflush(stdout);
  pid_t child = 0;
  if (posix_spawnp(&child, "xsltproc", nullptr, nullptr, argv, environ) != 0) {
    return "xsltproc could not be started";
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return "xsltproc could not be waited for";
  }
  if (WIFSIGNALED(status)) return "xsltproc was ended by a signal";
  if (!WIFEXITED(status)) return "xsltproc did not exit";
  if (WEXITSTATUS(status) == 127) return "xsltproc could not be started";
  if (WEXITSTATUS(status) != 0) return "xsltproc failed";
  return nullptr;
}

}  // namespace

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
  const std::string fileName = normalisePathCopy(xmlPath.c_str());
  FILE* probe = std::fopen(fileName.c_str(), "w");
  if (!probe) return false;
  std::fclose(probe);

  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  if (!doc) return true;
  xmlDocSetRootElement(doc, root);
  saveFormatted(doc, fileName);
  // Hand the tree back free-standing: out of the document and no longer
  // pointing at it, so that freeing the shell leaves the tree intact.
  xmlUnlinkNode(root);
  xmlSetTreeDoc(root, nullptr);
  xmlFreeDoc(doc);
  return true;
}

bool renderHtml(const std::string& xmlPath, const std::string& htmlPath) {
  const RunSettings& r = run();
  const std::string html = normalisePathCopy(htmlPath.c_str());
  const std::string xml = normalisePathCopy(xmlPath.c_str());
  const std::string stylesheet = r.programDirectory + stylesheetName(r.reportLanguage);

  // A stale report must not survive a failed transformation.
  unlink(html.c_str());
  if (const char* problem = runXsltproc(html, stylesheet, xml)) {
    std::fprintf(stderr, "qendor: HTML report %s not written: %s\n", html.c_str(), problem);
  }
  return true;
}

}  // namespace qendor
