// Saving a result document and rendering it into HTML.
#pragma once

#include <libxml/tree.h>

#include <string>

namespace qendor {

// The stylesheet file name of a report language.
const char* stylesheetName(int reportLanguage);

// Saves `root` as an indented XML file at `xmlPath` (normalised first). False
// when the file cannot be created. `root` stays owned by the caller.
bool saveXmlDocument(xmlNode* root, const std::string& xmlPath);

// Deletes a stale HTML file and runs xsltproc with the report language's
// stylesheet from `xmlPath` to `htmlPath`. Always true; a failed
// transformation leaves the HTML file absent and warns on standard error.
bool renderHtml(const std::string& xmlPath, const std::string& htmlPath);

}  // namespace qendor
