// Small helpers around libxml2 element trees.
#pragma once

#include <libxml/tree.h>
#include <libxml/xmlIO.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "report/file_output.h"

namespace qendor {

struct XmlNodeFree {
  void operator()(xmlNode* node) const { xmlFreeNode(node); }
};
// An element tree that is not attached to a document.
using XmlNodePtr = std::unique_ptr<xmlNode, XmlNodeFree>;

// The most bytes an attribute value may take in a saved file, references
// included. libxml2 reads back no start tag longer than ten million bytes
// with its default limits; this leaves room for a dozen long values in one
// element.
extern const size_t kMaxSavedAttributeBytes;

// A new element without namespace.
xmlNode* newElement(const char* name);

// A new element appended to `parent`; null (and nothing created) when
// `parent` is null.
xmlNode* addElement(xmlNode* parent, const char* name);

// Sets an attribute from a copy of `value`. When the copy cannot be made the
// attribute is left out and nothing else changes. The copy is always text an
// XML file may hold: well-formed UTF-8 stays as it is, any other byte is read
// as the Latin-1 character of its value, and characters XML forbids (C0
// controls but tab, line feed and carriage return; U+FFFE, U+FFFF) become
// U+FFFD. A value that would take more than kMaxSavedAttributeBytes in the
// saved file is cut after the last whole character that fits.
void setAttribute(xmlNode* node, const char* name, std::string_view value);

// The document whose top element is `root` as xmlDocDumpFormatMemory gives
// it: declaration, two-space indentation, UTF-8. The tree stays the
// caller's, unattached. Empty when libxml2 could not make the text.
std::string formattedDocumentText(xmlNode* root);

// Writes the document whose top element is `root` to `out` as
// xmlSaveFormatFileTo writes it: declaration, two-space indentation, every
// character past ASCII as a character reference. Closes `out` (nothing is
// written when it is null). The tree stays the caller's, unattached. False
// when `out` is null or not all of the document reached it.
bool writeFormattedDocument(xmlNode* root, xmlOutputBuffer* out);

// A libxml2 output buffer whose bytes go to `file` (open), converted by
// `encoder` when one is given; the buffer takes the encoder. Closing the
// buffer leaves `file` open: a failed write shows in file.error(). Null when
// the buffer cannot be made.
xmlOutputBuffer* outputTo(FileOutput& file, xmlCharEncodingHandler* encoder = nullptr);

}  // namespace qendor
