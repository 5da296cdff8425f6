#include "report/xml_node.h"

#include <libxml/xmlmemory.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <libxml/xmlsave.h>

namespace qendor {

namespace {

// Appends the UTF-8 form of `code` (a scalar value XML allows) at `out`;
// returns the position behind it.
char* appendUtf8(char* out, uint32_t code) {
  if (code < 0x80) {
    *out++ = static_cast<char>(code);
  } else if (code < 0x800) {
    *out++ = static_cast<char>(0xC0 | (code >> 6));
    *out++ = static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    *out++ = static_cast<char>(0xE0 | (code >> 12));
    *out++ = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    *out++ = static_cast<char>(0x80 | (code & 0x3F));
  } else {
    *out++ = static_cast<char>(0xF0 | (code >> 18));
    *out++ = static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    *out++ = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    *out++ = static_cast<char>(0x80 | (code & 0x3F));
  }
  return out;
}

// Length of the well-formed UTF-8 sequence at the front of `bytes` (at most
// `size` long), 0 when there is none: overlong forms, surrogates, values past
// U+10FFFF, stray continuation bytes and cut-off sequences all count as
// malformed. `code` receives the decoded value.
size_t decodeUtf8(const unsigned char* bytes, size_t size, uint32_t& code) {
  const unsigned char lead = bytes[0];
  if (lead < 0x80) {
    code = lead;
    return 1;
  }
  size_t length = 0;
  unsigned char low = 0x80;  // bounds of the second byte
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    code = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    code = lead & 0x0F;
    if (lead == 0xE0) low = 0xA0;   // no overlong forms
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    code = lead & 0x07;
    if (lead == 0xF0) low = 0x90;   // no overlong forms
    if (lead == 0xF4) high = 0x8F;  // nothing past U+10FFFF
  } else {
    return 0;  // continuation byte, C0, C1 or F5..FF as a lead
  }
  if (size < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    const unsigned char next = bytes[i];
    const unsigned char min = i == 1 ? low : 0x80;
    const unsigned char max = i == 1 ? high : 0xBF;
    if (next < min || next > max) return 0;
    code = (code << 6) | (next & 0x3F);
  }
  return length;
}

// Bytes that `code` takes in a saved attribute value: libxml2 writes markup
// characters, tab, line feed and carriage return as references, and every
// character past ASCII as a hexadecimal character reference, since the
// documents name no encoding.
size_t savedSize(uint32_t code) {
  switch (code) {
    case '<':
    case '>':
    case '\t':
      return 4;
    case '&':
    case '\n':
    case '\r':
      return 5;
    case '"':
      return 6;
    default:
      break;
  }
  if (code < 0x80) return 1;
  size_t digits = 0;
  for (uint32_t rest = code; rest != 0; rest >>= 4) ++digits;
  return 4 + digits;  // "&#x" digits ";"
}

// Whether XML 1.0 lets `code` stand in a document.
bool allowedInXml(uint32_t code) {
  if (code < 0x20) return code == 0x09 || code == 0x0A || code == 0x0D;
  return code != 0xFFFE && code != 0xFFFF;
}

// Every attribute value goes through this copy before libxml2 sees it, so
// there is one place that decides what bytes a document may hold. Logs come
// from crashed programs and sources in any encoding, while libxml2 writes
// control characters raw and drops bytes after a broken UTF-8 sequence; so
// the copy is always well-formed UTF-8 that XML allows:
// - well-formed UTF-8 is copied unchanged;
// - a byte that is not part of a well-formed sequence stands for the
//   Latin-1 character of its value (a Latin-1 log still reads right);
// - characters XML forbids (C0 controls other than tab, line feed and
//   carriage return, among them NUL; U+FFFE, U+FFFF) become U+FFFD.
// A value that would take more than kMaxSavedAttributeBytes in the saved
// file (a log line of many megabytes) is cut after the last whole character
// that fits: libxml2 reads no start tag longer than ten million bytes
// without its "huge" option, and neither xmllint nor xsltproc set it.
// The copy is NUL-terminated; null when memory runs out.
char* copyAttributeValue(std::string_view value) {
  // Each character takes at least as many bytes of the file as of the
  // value, so no more than the limit of input bytes is read; each of them
  // grows to at most three (U+FFFD).
  const size_t room = std::min(value.size(), kMaxSavedAttributeBytes) * 3;
  char* copy = static_cast<char*>(std::malloc(room + 1));
  if (!copy) return nullptr;
  const auto* bytes = reinterpret_cast<const unsigned char*>(value.data());
  const size_t size = value.size();
  char* out = copy;
  size_t i = 0;
  size_t saved = 0;
  while (i < size) {
    uint32_t code = 0;
    size_t length = decodeUtf8(bytes + i, size - i, code);
    if (length == 0) {
      code = bytes[i];  // Latin-1: the byte's value is its code point
      length = 1;
    }
    const bool allowed = allowedInXml(code);
    if (!allowed) code = 0xFFFD;
    saved += savedSize(code);
    if (saved > kMaxSavedAttributeBytes) break;
    if (allowed && length > 1) {
      std::memcpy(out, bytes + i, length);  // well-formed UTF-8 as it stands
      out += length;
    } else {
      out = appendUtf8(out, code);
    }
    i += length;
  }
  *out = '\0';
  return copy;
}

int writeToFile(void* context, const char* bytes, int length) {
  return static_cast<FileOutput*>(context)->write(
             std::string_view(bytes, static_cast<size_t>(length)))
             ? length
             : -1;
}

}  // namespace

const size_t kMaxSavedAttributeBytes = 500000;

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

xmlOutputBuffer* outputTo(FileOutput& file, xmlCharEncodingHandler* encoder) {
  return xmlOutputBufferCreateIO(writeToFile, nullptr, &file, encoder);
}

bool writeFormattedDocument(xmlNode* root, xmlOutputBuffer* out) {
  if (!out) return false;
  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  if (!doc) {
    xmlOutputBufferClose(out);
    return false;
  }
  xmlDocSetRootElement(doc, root);
  const bool written = xmlSaveFormatFileTo(out, doc, nullptr, 1) >= 0;
  // Hand the tree back free-standing: out of the document and no longer
  // pointing at it, so that freeing the shell leaves the tree intact.
  xmlUnlinkNode(root);
  xmlSetTreeDoc(root, nullptr);
  xmlFreeDoc(doc);
  return written;
}

std::string formattedDocumentText(xmlNode* root) {
  std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> doc(
      xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0")), xmlFreeDoc);
  if (!doc) return std::string();
  xmlDocSetRootElement(doc.get(), root);
  xmlChar* bytes = nullptr;
  int size = 0;
  xmlDocDumpFormatMemory(doc.get(), &bytes, &size, 1);
  // The tree stays the caller's: out of the document before the document goes.
  xmlUnlinkNode(root);
  xmlSetTreeDoc(root, nullptr);
  std::string text;
  if (bytes) {
    text.assign(reinterpret_cast<const char*>(bytes), static_cast<size_t>(size));
    xmlFree(bytes);
  }
  return text;
}

}  // namespace qendor
