#include "report/index_document.h"

#include <libxml/tree.h>

#include <memory>

#include "report/xml_node.h"

namespace qendor {

namespace {

// The HTML report beside a document: its name with ".xml" replaced.
std::string htmlNameOf(const std::string& xmlName) {
  return xmlName.substr(0, xmlName.size() - 4) + ".html";
}

void addContext(xmlNode* root, const IndexedContext& c) {
  xmlNode* element = addElement(root, "Context");
  setAttribute(element, "file", c.file);
  setAttribute(element, "href", relativeHref(htmlNameOf(c.file)));
  setAttribute(element, "name", c.name);
  setAttribute(element, "fullname", c.fullName);
  setAttribute(element, "status", c.status);
  setAttribute(element, "time", c.time);
  setAttribute(element, "projectName", c.projectName);
  setAttribute(element, "componentName", c.componentName);
  setAttribute(element, "configurationName", c.configurationName);
  setAttribute(element, "testCases", std::to_string(c.passed + c.failed + c.error + c.undefined));
  setAttribute(element, "passed", std::to_string(c.passed));
  setAttribute(element, "failed", std::to_string(c.failed));
  setAttribute(element, "error", std::to_string(c.error));
  setAttribute(element, "undefined", std::to_string(c.undefined));
  setAttribute(element, "assertions", std::to_string(c.assertions));
}

}  // namespace

std::string relativeHref(std::string_view fileName) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string href;
  for (const char c : fileName) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
        (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' || byte == '_' || byte == '~') {
      href += c;
    } else {
      href += '%';
      href += kHex[byte >> 4];
      href += kHex[byte & 15];
    }
  }
  return href;
}

std::string indexText(const IndexScan& scan) {
  XmlNodePtr root(newElement("TestIndex"));
  for (const IndexedContext& context : scan.contexts) addContext(root.get(), context);
  for (const SkippedFile& file : scan.skipped) {
    xmlNode* element = addElement(root.get(), "Skipped");
    setAttribute(element, "file", file.file);
    setAttribute(element, "reason", file.reason);
  }
  return formattedDocumentText(root.get());
}

}  // namespace qendor
