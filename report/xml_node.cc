#include "report/xml_node.h"

#include <cstdlib>
#include <cstring>

namespace qendor {

namespace {

// Every attribute value goes through this copy before libxml2 sees it, so
// there is one place that decides what bytes a document may hold. The copy
// is NUL-terminated whatever `value` holds; null when memory runs out.
char* copyAttributeValue(std::string_view value) {
  char* copy = static_cast<char*>(std::malloc(value.size() + 1));
  if (!copy) return nullptr;
  if (!value.empty()) std::memcpy(copy, value.data(), value.size());
  copy[value.size()] = '\0';
  return copy;
}

}  // namespace

xmlNode* newElement(const char* name) {
  return xmlNewNode(nullptr, reinterpret_cast<const xmlChar*>(name));
}

xmlNode* addElement(xmlNode* parent, const char* name) {
  xmlNode* element = newElement(name);
  if (!element) return nullptr;
  // Without a parent nobody would own the element.
  if (!parent || !xmlAddChild(parent, element)) {
    xmlFreeNode(element);
    return nullptr;
  }
  return element;
}

void setAttribute(xmlNode* node, const char* name, std::string_view value) {
  if (!node) return;
  char* copy = copyAttributeValue(value);
  if (!copy) return;
  xmlSetProp(node, reinterpret_cast<const xmlChar*>(name), reinterpret_cast<const xmlChar*>(copy));
  std::free(copy);
}

}  // namespace qendor
