#include "report/libxslt_render.h"

#include <libexslt/exslt.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <libxslt/extensions.h>
#include <libxslt/imports.h>
#include <libxslt/transform.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>

#include "report/file_output.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// Where libxml2 and libxslt put their messages on this thread while it
// reads a stylesheet or renders; null elsewhere, and they go to standard
// error as they would without us.
thread_local std::string* t_messages = nullptr;

void takeMessage(void* /*context*/, const char* format, ...) {
  va_list args;
  va_start(args, format);
  if (!t_messages) {
    std::vfprintf(stderr, format, args);
    va_end(args);
    return;
  }
  va_list again;
  va_copy(again, args);
  char text[512];
  const int length = std::vsnprintf(text, sizeof text, format, args);
  if (length >= static_cast<int>(sizeof text)) {
    std::string whole(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(whole.data(), whole.size(), format, again);
    t_messages->append(whole, 0, static_cast<size_t>(length));
  } else if (length > 0) {
    t_messages->append(text, static_cast<size_t>(length));
  }
  va_end(again);
  va_end(args);
}

// Collects the messages of this thread while it lives.
class Messages {
 public:
  Messages() : outer_(t_messages) {
    t_messages = &text_;
    // libxml2 keeps this handler per thread.
    xmlSetGenericErrorFunc(nullptr, takeMessage);
  }
  ~Messages() { t_messages = outer_; }
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  std::string take() { return std::move(text_); }

  // `what`, followed by ": " and the first line of the messages that says
  // something, when there is one: a failure told on one line.
  std::string told(std::string what) const {
    size_t start = 0;
    while (start < text_.size()) {
      size_t end = text_.find('\n', start);
      if (end == std::string::npos) end = text_.size();
      const size_t first = text_.find_first_not_of(" \t\r", start);
      if (first < end) return what + ": " + text_.substr(first, end - first);
      start = end + 1;
    }
    return what;
  }

 private:
  std::string* outer_;
  std::string text_;
};

// Set once, before any thread renders: libxml2's parser, libxslt's globals,
// the EXSLT functions and the test module xsltproc registers, and libxslt's
// message handler, which is one for the whole process.
void prepareLibraries() {
  static std::once_flag once;
  std::call_once(once, [] {
    xmlInitParser();
    xsltInit();
    exsltRegisterAll();
    xsltRegisterTestModule();
    xsltSetGenericErrorFunc(nullptr, takeMessage);
  });
}

struct XmlDocFree {
  void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};
using XmlDocPtr = std::unique_ptr<xmlDoc, XmlDocFree>;

// The encoder of the stylesheet's output encoding; null for UTF-8 or none,
// as xsltproc chooses it.
xmlCharEncodingHandler* outputEncoder(xsltStylesheet* style) {
  const xmlChar* encoding = nullptr;
  XSLT_GET_IMPORT_PTR(encoding, style, encoding)
  if (!encoding) return nullptr;
  xmlCharEncodingHandler* encoder =
      xmlFindCharEncodingHandler(reinterpret_cast<const char*>(encoding));
  if (encoder && std::strcmp(encoder->name, "UTF-8") == 0) return nullptr;
  return encoder;
}

}  // namespace

CompiledStylesheet::CompiledStylesheet(const std::string& path) : path_(path) {
  prepareLibraries();
  Messages messages;
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XSLT_PARSE_OPTIONS);
  if (!doc) {
    problem_ = messages.told("the stylesheet " + path + " could not be read");
    return;
  }
  style_ = xsltParseStylesheetDoc(doc);
  if (!style_) xmlFreeDoc(doc);
  if (style_ && style_->errors != 0) {
    xsltFreeStylesheet(style_);  // with its document
    style_ = nullptr;
  }
  if (!style_) {
    problem_ = messages.told("the stylesheet " + path + " could not be compiled");
    return;
  }
  warnings_ = messages.take();
}

CompiledStylesheet::~CompiledStylesheet() {
  if (style_) xsltFreeStylesheet(style_);
}

RenderOutcome CompiledStylesheet::render(const std::string& xmlPath, const std::string& htmlPath,
                                         FileOutput::Mode mode) const {
  RenderOutcome outcome;
  if (!style_) {
    outcome.problem = problem_;
    return outcome;
  }
  Messages messages;
  // A result document keeps its text in attributes; the stylesheets select
  // elements and attributes only. So the same page comes from a tree in
  // less memory than xsltproc's: short texts kept inside their nodes, and
  // without the indentation between elements.
  XmlDocPtr doc(xmlReadFile(xmlPath.c_str(), nullptr,
                            XSLT_PARSE_OPTIONS | XML_PARSE_COMPACT | XML_PARSE_NOBLANKS));
  if (!doc) {
    outcome.problem = messages.told("the document could not be read");
    return outcome;
  }
  // The compiled stylesheet is only read here: each render has its own
  // transformation context, document and result.
  xsltTransformContext* context = xsltNewTransformContext(style_, doc.get());
  if (!context) {
    outcome.problem = "the transformation could not be started";
    return outcome;
  }
  xsltSetCtxtParseOptions(context, XSLT_PARSE_OPTIONS);
  XmlDocPtr result(
      xsltApplyStylesheetUser(style_, doc.get(), nullptr, htmlPath.c_str(), nullptr, context));
  const bool failed = context->state != XSLT_STATE_OK;
  xsltFreeTransformContext(context);
  doc.reset();
  if (!result || failed) {
    // xsltproc cannot tell a transformation without a result from a report
    // it could not write: such a report is lost like one.
    outcome.unwritten = !result;
    (outcome.unwritten ? outcome.reason : outcome.problem) =
        messages.told("the transformation failed");
    return outcome;
  }
  // A result without content is no file, as xsltproc saves it.
  if (result->children) {
    FileOutput file(htmlPath, mode);
    if (!file.open()) {
      outcome.unwritten = true;
      outcome.reason = std::strerror(file.error());
      return outcome;
    }
    bool written = false;
    if (xmlOutputBuffer* out = outputTo(file, outputEncoder(style_))) {
      const bool serialised = xsltSaveResultTo(out, result.get(), style_) >= 0;
      const bool closed = xmlOutputBufferClose(out) >= 0;
      written = serialised && closed && file.finish();
    }
    if (!written) {
      outcome.unwritten = true;
      outcome.reason = std::strerror(file.error() != 0 ? file.error() : ENOMEM);
      return outcome;
    }
  }
  outcome.warnings = messages.take();
  return outcome;
}

}  // namespace qendor
