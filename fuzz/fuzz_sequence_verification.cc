// The sequence verification on a fuzzed diagram and a fuzzed message list
// (separated by a line "@@"). Only the range error that scans past the end of
// the diagram raise may escape.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"
#include "verify/sequence_verification.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  resetRun();
  const auto parts = fuzz::splitInput(data, size, 2);
  auto diagram = std::make_unique<SequenceLines>(fuzz::lines(parts[0]));
  const size_t lineCount = diagram->size();
  run().sequenceLines[1] = std::move(diagram);
  size_t position = 0;
  try {
    for (const std::string& message : fuzz::lines(parts[1])) {
      if (!verifySdMessage(message, position, 1)) break;
      if (position > lineCount) std::abort();
    }
    loopOperandContains(parts[1].empty() ? std::string() : std::string(parts[1].substr(0, 8)),
                        position, 1);
  } catch (const std::out_of_range&) {
    // The documented range error of an unbalanced diagram.
  }
  resetRun();
  return 0;
}
