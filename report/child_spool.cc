#include "report/child_spool.h"

#include <libxml/globals.h>
#include <libxml/xmlstring.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace qendor {

namespace {

// The marker as libxml2 writes it: a comment is the one piece of markup that
// can stand nowhere else in a result document, whose texts are all
// attribute values.
const std::string_view kMarker = "<!---->";

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

// What an indented save writes before an element at `depth`: the indent
// string once per level, but never more than 60 bytes of it.
std::string indentation(int depth) {
  if (!xmlIndentTreeOutput || !xmlTreeIndentString) return std::string();
  const std::string unit(xmlTreeIndentString);
  if (unit.empty()) return std::string();
  const int levels = std::min(depth, static_cast<int>(60 / unit.size()));
  std::string text;
  for (int i = 0; i < levels; ++i) text += unit;
  return text;
}

// Where the marker's line starts and where the line after it starts, or
// npos when `text` holds no marker.
std::pair<size_t, size_t> markerLine(std::string_view text) {
  const size_t at = text.find(kMarker);
  if (at == std::string_view::npos) return {at, at};
  const size_t lineStart = text.rfind('\n', at) + 1;  // npos + 1 is the start
  const size_t next = std::min(text.size(), at + kMarker.size() + 1);
  return {lineStart, next};
}

}  // namespace

ChildSpool::ChildSpool(ChildSpool&& other) noexcept
    : marker_(std::exchange(other.marker_, nullptr)),
      depth_(other.depth_),
      children_(std::move(other.children_)) {}

void ChildSpool::attach(xmlNode* holder) {
  if (!holder || marker_) return;
  xmlNode* marker = xmlNewComment(reinterpret_cast<const xmlChar*>(""));
  if (!marker) return;
  if (!xmlAddChild(holder, marker)) {
    xmlFreeNode(marker);
    return;
  }
  marker_ = marker;
  depth_ = 0;
  for (xmlNode* up = holder; up; up = up->parent) ++depth_;
}

void ChildSpool::add(XmlNodePtr child, ChildSpool* inner) {
  if (!marker_ || !child) return;
  if (inner) inner->dropUnusedMarker();
  std::string text;
  if (xmlOutputBuffer* out = outputInto(text)) {
    // The level makes libxml2 indent the child's inner lines as deep as they
    // stand in the whole tree; its first line is indented here.
    xmlNodeDumpOutput(out, nullptr, child.get(), depth_, 1, nullptr);
    xmlOutputBufferClose(out);
  }
  child.reset();
  children_ += indentation(depth_);
  if (inner) {
    inner->splice(text, children_);
  } else {
    children_ += text;
  }
  children_ += '\n';
}

void ChildSpool::dropUnusedMarker() {
  if (marker_ && children_.empty()) {
    xmlUnlinkNode(marker_);
    xmlFreeNode(marker_);
    marker_ = nullptr;
  }
}

void ChildSpool::splice(std::string_view text, std::string& out) const {
  const auto [lineStart, next] = markerLine(text);
  if (lineStart == std::string_view::npos || !marker_) {
    out += text;
    return;
  }
  out += text.substr(0, lineStart);
  out += children_;
  out += text.substr(next);
}

void ChildSpool::splice(std::string_view text, FileOutput& file) const {
  const auto [lineStart, next] = markerLine(text);
  if (lineStart == std::string_view::npos || !marker_) {
    file.write(text);
    return;
  }
  file.write(text.substr(0, lineStart));
  file.write(children_);
  file.write(text.substr(next));
}

bool ChildSpool::writeDocument(xmlNode* root, FileOutput& file) {
  dropUnusedMarker();
  std::string shell;
  if (!writeFormattedDocument(root, outputInto(shell))) return false;
  splice(shell, file);
  return true;
}

}  // namespace qendor
