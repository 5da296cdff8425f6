// The short record form: records that name an assertion by file and line.
#pragma once

#include <cstdint>
#include <string>

namespace qendor {

// Reads short-form records into `run().testCaseAssertions`, taking the
// statements from `run().collectedAssertions`. 0 when the file cannot be
// opened, 1 otherwise.
int readShortAssertions();

// Copies the statement collected for the file and line into `statement`.
// False, with `statement` untouched, when either key is absent.
bool lookupCollectedAssertion(int32_t fileNumber, int32_t lineNumber, std::string& statement);

}  // namespace qendor
