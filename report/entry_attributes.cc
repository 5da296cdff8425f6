#include "report/entry_attributes.h"

#include <string_view>

#include "base/text.h"
#include "report/case_result.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// Splits a source path at its last "/". Without one both halves are the whole
// path: the not-found position plus one wraps round to the start.
struct SourcePath {
  std::string_view dir;
  std::string_view filename;
};
SourcePath splitSourcePath(std::string_view path) {
  const size_t slash = path.rfind('/');
  return SourcePath{path.substr(0, slash), path.substr(slash + 1)};
}

// Where an entry's assertion stands in the sources.
void setSourceAttributes(xmlNode* info, const AssertionRecord& record, const SourcePath& source) {
  setAttribute(info, "dir", source.dir);
  setAttribute(info, "filename", source.filename);
  setAttribute(info, "fnr", record.fileNumber);
  setAttribute(info, "lnr", record.lineNumber);
}

// The attributes of a sequence diagram test case's entry.
void writeSdEntry(xmlNode* info, const AssertionEntry& entry, const SourcePath& source) {
  const AssertionRecord& record = *entry.record;
  setAttribute(info, "sdiname", entry.sdiName);
  setAttribute(info, "msgid", entry.msgId);
  setAttribute(info, "guid", entry.guid);
  setAttribute(info, "status", statusText(record.status));
  setAttribute(info, "usermsg", entry.userMessage);
  setAttribute(info, "inr", entry.inr);
  setAttribute(info, "onr", entry.onr);
  setSourceAttributes(info, record, source);
  if (!entry.arbiterKind.empty()) setAttribute(info, "arbiterAssert", entry.arbiterKind);
}

// The attributes of any other entry.
void writeCodeEntry(xmlNode* info, const AssertionEntry& entry, const SourcePath& source) {
  const AssertionRecord& record = *entry.record;
  setAttribute(info, "name", entry.message);
  setAttribute(info, "status", statusText(record.status));
  setSourceAttributes(info, record, source);
}

}  // namespace

void writeEntryAttributes(xmlNode* element, const AssertionEntry& entry, TestType type,
                          const RunTable<std::string>& sourceFiles) {
  const SourcePath source =
      splitSourcePath(tableEntry(sourceFiles, readInt32(entry.record->fileNumber)));
  if (type == TestType::kSequenceDiagram) {
    writeSdEntry(element, entry, source);
  } else {
    writeCodeEntry(element, entry, source);
  }
}

}  // namespace qendor
