#include "verify/verification_file.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"

namespace qendor {

namespace {

// The clean-up every line gets before it is looked at: the first carriage
// return anywhere goes, then leading blanks and tabs, then every blank (tabs
// inside the line stay).
std::string cleanLine(std::string_view raw) {
  std::string line(raw);
  size_t cr = line.find('\r');
  if (cr != std::string::npos) line.erase(cr, 1);
  size_t start = 0;
  while (start < line.size() && (line[start] == ' ' || line[start] == '\t')) ++start;
  std::string cleaned;
  cleaned.reserve(line.size() - start);
  for (size_t i = start; i < line.size(); ++i) {
    if (line[i] != ' ') cleaned += line[i];
  }
  return cleaned;
}

// Keys that select the section of the value lines that follow, tried in this
// order ("PARENT_GUID:" comes before "GUID:", though neither is a prefix of
// the other).
struct SectionKey {
  const char* key;
  const char* section;
};
constexpr SectionKey kSectionKeys[] = {
    {"STATE_NAME:", "STATE_NAME"},
    {"STATE_TYPE:", "STATE_TYPE"},
    {"PARENT_NAME:", "PARENT_NAME"},
    {"PARENT_GUID:", "PARENT_GUID"},
    {"STATE_ACTION_ENTRY:", "STATE_ACTION_ENTRY"},
    {"STATE_ACTION_EXIT:", "STATE_ACTION_EXIT"},
    {"STATE_ACTION_INTERNAL:", "STATE_ACTION_INTERNAL"},
    {"DEFAULT_TRANSITION:", "DEFAULT_TRANSITION"},
    {"OUT_TRANSITIONS:", "OUT_TRANSITIONS"},
    {"TRANSITION_NAME:", "TRANSITION_NAME"},
    {"TRANSITION_ACTION:", "TRANSITION_ACTION"},
    {"TRANSITION_TARGET:", "TRANSITION_TARGET"},
    {"GUID:", "GUID"},
};

// State types a chart verification cannot follow.
bool unsupportedStateType(std::string_view type) {
  return startsWith(type, "Diagram") || startsWith(type, "And") || startsWith(type, "History") ||
         startsWith(type, "Stub");
}

class Reader {
 public:
  explicit Reader(int32_t testCase) : testCase_(testCase) {}

  // Handles one cleaned line; false when the reading ends here.
  bool line(const std::string& text) {
    if (currentSection_ == "SD_TEST" && lines_) {
      if (startsWith(text, "PAR_BEGIN")) return finish(kParallelSd);
      lines_->push_back(text);
      return true;
    }
    if (startsWith(text, "SD_TEST")) {
      auto lines = std::make_unique<SequenceLines>();
      lines_ = lines.get();
      run().sequenceLines[testCase_] = std::move(lines);
      currentSection_ = "SD_TEST";
      kind_ = kSdTest;
      return true;
    }
    if (startsWith(text, "FLOWCHART_TEST")) return newChart(kFlowchartTest);
    if (startsWith(text, "STATECHART_TEST")) return newChart(kStatechartTest);
    if (startsWith(text, "CODE_TEST")) {
      kind_ = kCodeTest;
      return true;
    }
    for (const SectionKey& key : kSectionKeys) {
      if (startsWith(text, key.key)) {
        currentSection_ = key.section;
        return true;
      }
    }
    if (startsWith(text, "SUB_STATECHART")) return finish(kUnsupportedChart);
    if (startsWith(text, "----------")) {
      currentSection_.clear();
      return true;
    }
    return value(text);
  }

  int kind() const { return kind_; }

 private:
  bool finish(int kind) {
    kind_ = kind;
    return false;
  }

  // A further chart line starts a new list; the current record stays the
  // one of the earlier list, so value lines may still go to it. The earlier
  // list is kept alive until the reading ends for that reason.
  bool newChart(int kind) {
    auto chart = std::make_unique<ChartList>();
    chart_ = chart.get();
    std::unique_ptr<ChartList>& slot = run().chartSteps[testCase_];
    if (slot) replaced_.push_back(std::move(slot));
    slot = std::move(chart);
    kind_ = kind;
    return true;
  }

  bool value(const std::string& text) {
    const std::string& section = currentSection_;
    if (section == "STATE_NAME" || section == "TRANSITION_NAME") {
      if (!chart_) return true;
      auto created = std::make_unique<ChartRecord>();
      if (section == "STATE_NAME") {
        created->stateName = text;
      } else {
        created->transitionName = text;
      }
      record_ = chart_->add(std::move(created));
      return true;
    }
    if (!record_) return true;
    if (section == "STATE_TYPE") {
      record_->stateType = text;
      if (unsupportedStateType(text)) return finish(kUnsupportedChart);
    } else if (section == "PARENT_NAME") {
      record_->parentName = text;
    } else if (section == "PARENT_GUID") {
      record_->parentGuid = text;
    } else if (section == "DEFAULT_TRANSITION") {
      record_->defaultTransition = text;
    } else if (section == "TRANSITION_TARGET") {
      record_->transitionTarget = text;
    } else if (section == "GUID") {
      record_->guid = text;
    } else if (section == "STATE_ACTION_ENTRY") {
      record_->entryAction += text;
    } else if (section == "STATE_ACTION_EXIT") {
      record_->exitAction += text;
    } else if (section == "STATE_ACTION_INTERNAL") {
      record_->internalAction += text;
    } else if (section == "TRANSITION_ACTION") {
      record_->transitionAction += text;
    } else if (section == "OUT_TRANSITIONS") {
      record_->outTransitions.push_back(text);
    }
    return true;
  }

  int32_t testCase_;
  int kind_ = kNoKind;
  std::string currentSection_;
  SequenceLines* lines_ = nullptr;
  ChartList* chart_ = nullptr;
  ChartRecord* record_ = nullptr;
  std::vector<std::unique_ptr<ChartList>> replaced_;
};

}  // namespace

int readVerificationFile(int32_t testCase) {
  const char* outDirectory = run().outDirectory ? run().outDirectory : "";
  std::string name =
      std::string(outDirectory) + "\\" + baseReportName(run().testCaseNames[testCase]) + ".ver";
  LineReader file(normalisePath(name, ""));
  if (!file.isOpen()) return kNoVerificationFile;
  Reader reader(testCase);
  std::string_view raw;
  while (file.next(raw)) {
    if (!reader.line(cleanLine(raw))) break;
  }
  return reader.kind();
}

}  // namespace qendor
