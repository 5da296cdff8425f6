// The index's streaming reader on any bytes. A context it reads must be
// written into an index that reads back as an index, not as a context.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "report/index_document.h"
#include "report/index_scan.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  IndexedContext context;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  if (readIndexedContext(bytes, context) != IndexRead::kContext) return 0;
  context.file = "Ctx.xml";
  IndexScan scan;
  scan.contexts.push_back(context);
  IndexedContext again;
  if (readIndexedContext(indexText(scan), again) != IndexRead::kOther) std::abort();
  return 0;
}
