// The attributes of one listed entry, as the assertion table shows them:
// written on an "AssertionInfo" element and on the entries a diagnosis lists
// as not judged.
#pragma once

#include <libxml/tree.h>

#include <string>

#include "base/run_settings.h"
#include "verify/assertion_entries.h"
#include "verify/judgement.h"

namespace qendor {

// Sets the attributes of `entry` of a test case of `type` on `element`; its
// directory and file name come from `sourceFiles` by the record's file number.
void writeEntryAttributes(xmlNode* element, const AssertionEntry& entry, TestType type,
                          const RunTable<std::string>& sourceFiles);

}  // namespace qendor
