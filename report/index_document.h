// The index document of an output folder (index.xml): one "Context" element
// per test context document found there, problems first, and one "Skipped"
// element per file that could not be read.
#pragma once

#include <string>
#include <string_view>

#include "report/index_scan.h"

namespace qendor {

// `fileName` as a relative URL: every byte but letters, digits and "-._~"
// percent-encoded, so that a name with "#", "%" or spaces links to itself.
std::string relativeHref(std::string_view fileName);

// The text of index.xml listing `scan` in its order.
std::string indexText(const IndexScan& scan);

}  // namespace qendor
