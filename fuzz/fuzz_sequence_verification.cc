// The sequence verification on a fuzzed diagram and a fuzzed message list
// (separated by a line "@@"). Only the range error that scans past the end of
// the diagram raise may escape. The step that also tells the loops on its way
// must take each message exactly as the plain one does.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "verify/sequence_verification.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto parts = fuzz::splitInput(data, size, 2);
  const SequenceLines diagram = fuzz::lines(parts[0]);
  size_t position = 0;
  try {
    for (const std::string& message : fuzz::lines(parts[1])) {
      size_t told = position;
      std::vector<LoopPass> loops;
      const bool toldAccepted = verifySdMessage(message, told, diagram, loops);
      const bool accepted = verifySdMessage(message, position, diagram);
      if (toldAccepted != accepted || told != position) std::abort();
      for (const LoopPass& pass : loops) {
        if (pass.begin >= diagram.size()) std::abort();
      }
      if (!accepted) break;
      if (position > diagram.size()) std::abort();
    }
    loopOperandContains(parts[1].empty() ? std::string() : std::string(parts[1].substr(0, 8)),
                        position, diagram);
  } catch (const std::out_of_range&) {
    // The documented range error of an unbalanced diagram.
  }
  return 0;
}
