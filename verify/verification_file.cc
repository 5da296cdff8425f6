#include "verify/verification_file.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/text.h"

namespace qendor {

namespace {

// The clean-up every line gets before it is looked at: the first carriage
// return anywhere goes, then leading blanks and tabs, then every blank (tabs
// inside the line stay). Written into `cleaned`, whose room is reused.
void cleanLine(std::string_view raw, std::string& cleaned) {
  cleaned.clear();
  const size_t cr = raw.find('\r');
  bool leading = true;
  for (size_t i = 0; i < raw.size(); ++i) {
    const char c = raw[i];
    if (i == cr) continue;
    if (leading && (c == ' ' || c == '\t')) continue;
    leading = false;
    if (c != ' ') cleaned += c;
  }
}

// Whether a line may begin with a marker or a key: each begins with one of
// these characters, so most value lines are told apart at once.
bool mayBeMarker(std::string_view line) {
  return !line.empty() && std::string_view("SFCPDOTG-").find(line[0]) != std::string_view::npos;
}

// The part of a chart record that the value lines after a key fill.
enum class Section {
  kNone,
  kStateName,
  kStateType,
  kParentName,
  kParentGuid,
  kEntryAction,
  kExitAction,
  kInternalAction,
  kDefaultTransition,
  kOutTransitions,
  kTransitionName,
  kTransitionAction,
  kTransitionTarget,
  kGuid,
};

// Keys that select the section of the value lines that follow, tried in this
// order ("PARENT_GUID:" comes before "GUID:", though neither is a prefix of
// the other).
struct SectionKey {
  std::string_view key;
  Section section;
};
constexpr SectionKey kSectionKeys[] = {
    {"STATE_NAME:", Section::kStateName},
    {"STATE_TYPE:", Section::kStateType},
    {"PARENT_NAME:", Section::kParentName},
    {"PARENT_GUID:", Section::kParentGuid},
    {"STATE_ACTION_ENTRY:", Section::kEntryAction},
    {"STATE_ACTION_EXIT:", Section::kExitAction},
    {"STATE_ACTION_INTERNAL:", Section::kInternalAction},
    {"DEFAULT_TRANSITION:", Section::kDefaultTransition},
    {"OUT_TRANSITIONS:", Section::kOutTransitions},
    {"TRANSITION_NAME:", Section::kTransitionName},
    {"TRANSITION_ACTION:", Section::kTransitionAction},
    {"TRANSITION_TARGET:", Section::kTransitionTarget},
    {"GUID:", Section::kGuid},
};

// State types a chart verification cannot follow.
bool unsupportedStateType(std::string_view type) {
  return startsWith(type, "Diagram") || startsWith(type, "And") || startsWith(type, "History") ||
         startsWith(type, "Stub");
}

class Reader {
 public:
  // Handles one cleaned line; false when the reading ends here.
  bool line(const std::string& text) {
    if (inSequence_) {
      if (startsWith(text, "PAR_BEGIN")) return finish(VerificationKind::kParallelSd);
      result_.sequenceLines->push_back(text);
      return true;
    }
    if (!mayBeMarker(text)) return value(text);
    if (startsWith(text, "SD_TEST")) {
      result_.sequenceLines = std::make_unique<SequenceLines>();
      inSequence_ = true;
      result_.kind = VerificationKind::kSdTest;
      return true;
    }
    if (startsWith(text, "FLOWCHART_TEST")) return newChart(VerificationKind::kFlowchartTest);
    if (startsWith(text, "STATECHART_TEST")) return newChart(VerificationKind::kStatechartTest);
    if (startsWith(text, "CODE_TEST")) {
      result_.kind = VerificationKind::kCodeTest;
      return true;
    }
    for (const SectionKey& key : kSectionKeys) {
      if (startsWith(text, key.key)) {
        section_ = key.section;
        return true;
      }
    }
    if (startsWith(text, "SUB_STATECHART")) return finish(VerificationKind::kUnsupportedChart);
    if (startsWith(text, "----------")) {
      section_ = Section::kNone;
      return true;
    }
    return value(text);
  }

  Verification take() { return std::move(result_); }

 private:
  bool finish(VerificationKind kind) {
    result_.kind = kind;
    return false;
  }

  // A further chart line starts a new list; the current record stays the
  // one of the earlier list, so value lines may still go to it. The earlier
  // list is kept alive until the reading ends for that reason.
  bool newChart(VerificationKind kind) {
    if (result_.chart) replaced_.push_back(std::move(result_.chart));
    result_.chart = std::make_unique<ChartList>();
    result_.kind = kind;
    return true;
  }

  bool value(const std::string& text) {
    if (section_ == Section::kStateName || section_ == Section::kTransitionName) {
      if (!result_.chart) return true;
      auto created = std::make_unique<ChartRecord>();
      if (section_ == Section::kStateName) {
        created->stateName = text;
      } else {
        created->transitionName = text;
      }
      record_ = result_.chart->add(std::move(created));
      return true;
    }
    if (!record_) return true;
    switch (section_) {
      case Section::kStateType:
        record_->stateType = text;
        if (unsupportedStateType(text)) return finish(VerificationKind::kUnsupportedChart);
        break;
      case Section::kParentName:
        record_->parentName = text;
        break;
      case Section::kParentGuid:
        record_->parentGuid = text;
        break;
      case Section::kDefaultTransition:
        record_->defaultTransition = text;
        break;
      case Section::kTransitionTarget:
        record_->transitionTarget = text;
        break;
      case Section::kGuid:
        record_->guid = text;
        break;
      case Section::kEntryAction:
        record_->entryAction += text;
        break;
      case Section::kExitAction:
        record_->exitAction += text;
        break;
      case Section::kInternalAction:
        record_->internalAction += text;
        break;
      case Section::kTransitionAction:
        record_->transitionAction += text;
        break;
      case Section::kOutTransitions:
        record_->outTransitions.push_back(text);
        break;
      case Section::kNone:
      case Section::kStateName:
      case Section::kTransitionName:
        break;
    }
    return true;
  }

  Verification result_;
  Section section_ = Section::kNone;
  bool inSequence_ = false;  // every further line is a sequence line
  ChartRecord* record_ = nullptr;
  std::vector<std::unique_ptr<ChartList>> replaced_;
};

}  // namespace

Verification parseVerificationFile(LineReader& lines) {
  Reader reader;
  std::string_view raw;
  std::string cleaned;
  while (lines.next(raw)) {
    cleanLine(raw, cleaned);
    if (!reader.line(cleaned)) break;
  }
  return reader.take();
}

Verification readVerificationFile(const char* outDirectory, std::string_view fullName) {
  std::string name =
      std::string(outDirectory ? outDirectory : "") + "\\" + baseReportName(fullName) + ".ver";
  LineReader lines(normalisePath(name, ""));
  if (!lines.isOpen()) {
    Verification none;
    none.kind = VerificationKind::kNoVerificationFile;
    return none;
  }
  return parseVerificationFile(lines);
}

}  // namespace qendor
