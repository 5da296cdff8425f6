// Saving a result document as an indented XML file.
#pragma once

#include <libxml/tree.h>

#include <string>

#include "report/child_spool.h"

namespace qendor {

// Saves `root` as an indented XML file at `xmlPath` (normalised first), with
// the children spooled in `spool` (attached inside `root`) in their place
// when one is given. False when the file cannot be created or written
// completely; then it is gone and `error`, when given, receives the errno
// value that tells why. `root` stays owned by the caller.
bool saveXmlDocument(xmlNode* root, const std::string& xmlPath, int* error = nullptr,
                     ChildSpool* spool = nullptr);

}  // namespace qendor
