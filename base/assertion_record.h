// One executed assertion as read from the result file.
#pragma once

#include <string>
#include <vector>

#include "base/status.h"

namespace qendor {

struct AssertionRecord {
  std::string assertionText;        // statement text, beginning "ZKR_ASSERT" in the full form
  Status status = Status::kPassed;  // kPassed or kFailed
  std::string fileNumber;           // decimal text of the matching FILE entry, may be empty
  std::string lineNumber;           // as written in the log
  std::string detailText;           // full form only: the free text before the marker
};

// One test case's records in log order.
using AssertionList = std::vector<AssertionRecord>;

}  // namespace qendor
