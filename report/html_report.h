// Saving a result document, and what rendering it into HTML needs.
#pragma once

#include <libxml/tree.h>

#include <string>

#include "report/child_spool.h"

namespace qendor {

// The stylesheet file name of a report language.
const char* stylesheetName(int reportLanguage);

// Saves `root` as an indented XML file at `xmlPath` (normalised first), with
// the children spooled in `spool` (attached inside `root`) in their place
// when one is given. False when the file cannot be created or written
// completely; then it is gone and `error`, when given, receives the errno
// value that tells why. `root` stays owned by the caller.
bool saveXmlDocument(xmlNode* root, const std::string& xmlPath, int* error = nullptr,
                     ChildSpool* spool = nullptr);

// The number of xsltproc runs that may go on at once: one per core.
size_t renderSlots();

}  // namespace qendor
