#include "report/xml_save.h"

#include <libxml/xmlIO.h>

#include <cerrno>
#include <cstdio>

#include "base/paths.h"
#include "report/file_output.h"
#include "report/xml_node.h"

namespace qendor {

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
      spool ? spool->writeDocument(root, file) : writeFormattedDocument(root, outputTo(file));
  if (serialised && file.finish()) return true;
  if (error) *error = file.error() != 0 ? file.error() : ENOMEM;
  return false;
}

}  // namespace qendor
