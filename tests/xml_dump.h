// The text of an element tree, for tests that compare documents exactly.
#pragma once

#include <libxml/tree.h>

#include <string>

namespace qendor {
namespace test {

// The element and its subtree as libxml2 writes them, without indentation;
// "(null)" for no element.
inline std::string dumpNode(xmlNode* node) {
  if (!node) return "(null)";
  xmlBuffer* buffer = xmlBufferCreate();
  xmlNodeDump(buffer, nullptr, node, 0, 0);
  std::string text(reinterpret_cast<const char*>(xmlBufferContent(buffer)),
                   xmlBufferLength(buffer));
  xmlBufferFree(buffer);
  return text;
}

}  // namespace test
}  // namespace qendor
