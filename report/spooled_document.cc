#include "report/spooled_document.h"

#include <cstdio>
#include <new>
#include <string_view>
#include <utility>

#include "app/paths.h"
#include "report/html_report.h"

namespace qendor {

namespace {

int appendToString(void* context, const char* bytes, int length) {
  // libxml2 is C: nothing may be thrown through it.
  try {
    static_cast<std::string*>(context)->append(bytes, static_cast<size_t>(length));
  } catch (const std::bad_alloc&) {
    return -1;
  }
  return length;
}

xmlOutputBuffer* outputInto(std::string& text) {
  return xmlOutputBufferCreateIO(appendToString, nullptr, &text, nullptr);
}

// Where the children go in the saved shell: a comment is the only markup
// that can stand nowhere else in a result document, whose texts are all
// attribute values.
const std::string_view kMarker = "<!---->";

}  // namespace

SpooledDocument::SpooledDocument(XmlNodePtr root, xmlNode* holder)
    : root_(std::move(root)), holder_(holder), depth_(1) {
  for (xmlNode* up = holder_; up && up != root_.get(); up = up->parent) ++depth_;
}

void SpooledDocument::add(XmlNodePtr child) {
  if (!child) return;
  // One string per child: appending to one big string would copy the whole
  // context's text over and over as it grows.
  children_.emplace_back();
  // The level makes libxml2 indent the child's inner lines as deep as they
  // stand in the whole tree; the line of its start tag is indented on save.
  if (xmlOutputBuffer* out = outputInto(children_.back())) {
    xmlNodeDumpOutput(out, nullptr, child.get(), depth_, 1, nullptr);
    xmlOutputBufferClose(out);
  }
}

bool SpooledDocument::save(const std::string& xmlPath) {
  if (children_.empty()) return saveXmlDocument(root_.get(), xmlPath);
  FILE* file = std::fopen(normalisePathCopy(xmlPath.c_str()).c_str(), "w");
  if (!file) return false;

  std::string shell;
  xmlNode* marker = xmlNewComment(reinterpret_cast<const xmlChar*>(""));
  if (marker && xmlAddChild(holder_, marker)) {
    writeFormattedDocument(root_.get(), outputInto(shell));
    xmlUnlinkNode(marker);
  }
  xmlFreeNode(marker);

  const size_t at = shell.find(kMarker);
  if (at != std::string::npos) {
    // The marker's line: its indentation is the children's, and its line
    // end stands behind each of them.
    const size_t lineStart = shell.rfind('\n', at) + 1;
    const std::string_view indent(shell.data() + lineStart, at - lineStart);
    std::fwrite(shell.data(), 1, lineStart, file);
    for (const std::string& child : children_) {
      std::fwrite(indent.data(), 1, indent.size(), file);
      std::fwrite(child.data(), 1, child.size(), file);
      std::fputc('\n', file);
    }
    const size_t rest = at + kMarker.size() + 1;
    if (rest < shell.size()) std::fwrite(shell.data() + rest, 1, shell.size() - rest, file);
  }
  std::fclose(file);
  return true;
}

}  // namespace qendor
