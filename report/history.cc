#include "report/history.h"

#include <libxml/parser.h>
#include <libxml/xmlmemory.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <unordered_map>
#include <utility>

#include "base/paths.h"
#include "base/run_settings.h"
#include "report/case_result.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

struct XmlDocFree {
  void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};
using XmlDocPtr = std::unique_ptr<xmlDoc, XmlDocFree>;

const xmlChar* xmlText(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

bool isElement(const xmlNode* node, const char* name) {
  return node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, xmlText(name));
}

// The value of an attribute; empty when it is missing.
std::string attribute(const xmlNode* node, const char* name) {
  xmlChar* value = xmlGetProp(node, xmlText(name));
  if (!value) return std::string();
  std::string text(reinterpret_cast<const char*>(value));
  xmlFree(value);
  return text;
}

// The status a word stands for; a word the program never writes is undefined.
Status statusOfText(std::string_view text) {
  for (Status status : {Status::kPassed, Status::kFailed, Status::kError, Status::kNotTerminated}) {
    if (text == statusText(status)) return status;
  }
  return Status::kUndefined;
}

// A run number as written: decimal digits only, anything else reads as 0.
uint64_t numberOfText(const std::string& text) {
  if (text.empty() || text.size() > 19) return 0;
  uint64_t number = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return 0;
    number = number * 10 + static_cast<uint64_t>(c - '0');
  }
  return number;
}

HistoryCase caseOfElement(const xmlNode* element) {
  HistoryCase entry;
  entry.name = attribute(element, "name");
  entry.fullName = attribute(element, "fullname");
  entry.status = statusOfText(attribute(element, "status"));
  entry.verificationResult = attribute(element, "verificationResult");
  return entry;
}

// The numbers of a "covered" list: separated by blanks, each a number or a
// range "first-last" of consecutive ones. A piece that is neither is passed
// over, and a list never grows past kMostCovered numbers, whatever a file
// says.
constexpr size_t kMostCovered = size_t{1} << 24;

std::vector<uint32_t> numbersOfText(const std::string& text) {
  std::vector<uint32_t> numbers;
  size_t at = 0;
  while (at < text.size() && numbers.size() < kMostCovered) {
    const size_t end = std::min(text.find(' ', at), text.size());
    const std::string piece = text.substr(at, end - at);
    at = end + 1;
    const size_t dash = piece.find('-');
    const uint64_t first = numberOfText(piece.substr(0, dash));
    const uint64_t last = dash == std::string::npos ? first : numberOfText(piece.substr(dash + 1));
    if (first == 0 || last < first || last > UINT32_MAX) continue;
    for (uint64_t n = first; n <= last && numbers.size() < kMostCovered; ++n) {
      numbers.push_back(static_cast<uint32_t>(n));
    }
  }
  return numbers;
}

// Ascending numbers, runs of three or more consecutive ones as a range:
// a chart reached whole is one range.
std::string textOfNumbers(const std::vector<uint32_t>& numbers) {
  std::string text;
  for (size_t i = 0; i < numbers.size();) {
    size_t j = i;
    while (j + 1 < numbers.size() && numbers[j + 1] == numbers[j] + 1) ++j;
    if (!text.empty()) text += ' ';
    text += std::to_string(numbers[i]);
    if (j >= i + 2) {
      text += '-' + std::to_string(numbers[j]);
      i = j + 1;
    } else {
      ++i;
    }
  }
  return text;
}

HistoryCoverage coverageOfElement(const xmlNode* element) {
  HistoryCoverage entry;
  entry.name = attribute(element, "name");
  entry.kind = attribute(element, "kind");
  entry.fingerprint = attribute(element, "fingerprint");
  entry.covered = numbersOfText(attribute(element, "covered"));
  return entry;
}

HistoryRun runOfElement(const xmlNode* element) {
  HistoryRun run;
  run.number = numberOfText(attribute(element, "number"));
  run.time = attribute(element, "time");
  run.status = statusOfText(attribute(element, "status"));
  for (const xmlNode* child = element->children; child; child = child->next) {
    if (isElement(child, "TestCaseRun")) run.cases.push_back(caseOfElement(child));
    if (isElement(child, "ModelRun")) run.coverage.push_back(coverageOfElement(child));
  }
  return run;
}

void setCaseAttributes(xmlNode* element, const HistoryCase& entry) {
  setAttribute(element, "name", entry.name);
  setAttribute(element, "fullname", entry.fullName);
  setAttribute(element, "status", statusText(entry.status));
  setAttribute(element, "verificationResult", entry.verificationResult);
}

// A "Run" element appended to `parent`, with the entries of `run` that
// `wanted` accepts.
template <class Wanted>
void addRunElement(xmlNode* parent, const HistoryRun& run, Wanted wanted) {
  xmlNode* element = addElement(parent, "Run");
  setAttribute(element, "number", std::to_string(run.number));
  setAttribute(element, "time", run.time);
  setAttribute(element, "status", statusText(run.status));
  for (const HistoryCase& entry : run.cases) {
    if (wanted(entry)) setCaseAttributes(addElement(element, "TestCaseRun"), entry);
  }
}

}  // namespace

std::string_view classificationText(Classification classification) {
  switch (classification) {
    case Classification::kNew:
      return "new";
    case Classification::kFixed:
      return "fixed";
    case Classification::kFlaky:
      return "flaky";
    case Classification::kStillFailing:
      return "still failing";
    case Classification::kStable:
      break;
  }
  return "stable";
}

Classification classify(const std::vector<Status>& newestFirst) {
  if (newestFirst.empty()) return Classification::kStable;
  auto passed = [&](size_t i) { return newestFirst[i] == Status::kPassed; };
  size_t changes = 0;
  for (size_t i = 1; i < newestFirst.size() && i < kFlakyWindow; ++i) {
    if (passed(i) != passed(i - 1)) ++changes;
  }
  if (changes >= 2) return Classification::kFlaky;
  const bool hasBefore = newestFirst.size() > 1;
  if (!passed(0)) {
    return !hasBefore || passed(1) ? Classification::kNew : Classification::kStillFailing;
  }
  return hasBefore && !passed(1) ? Classification::kFixed : Classification::kStable;
}

HistoryParse parseHistory(std::string_view text, const HistoryOwner& owner, History& history) {
  history.runs.clear();
  if (text.size() > static_cast<size_t>(INT_MAX)) return HistoryParse::kNotWellFormed;
  XmlDocPtr doc(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                              XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (!doc) return HistoryParse::kNotWellFormed;
  const xmlNode* root = xmlDocGetRootElement(doc.get());
  if (!root) return HistoryParse::kNotWellFormed;
  if (!isElement(root, "History") || attribute(root, "kind") != owner.kind ||
      attribute(root, "fullname") != owner.fullName) {
    return HistoryParse::kForeign;
  }
  for (const xmlNode* child = root->children; child; child = child->next) {
    if (isElement(child, "Run")) history.runs.push_back(runOfElement(child));
  }
  return HistoryParse::kRead;
}

std::string historyText(const History& history, const HistoryOwner& owner) {
  XmlNodePtr root(newElement("History"));
  setAttribute(root.get(), "kind", owner.kind);
  setAttribute(root.get(), "fullname", owner.fullName);
  for (const HistoryRun& run : history.runs) {
    addRunElement(root.get(), run, [](const HistoryCase&) { return true; });
    // What a run with "-coverage" reached of each model; only the file keeps it.
    for (const HistoryCoverage& model : run.coverage) {
      xmlNode* element = addElement(root->last, "ModelRun");
      setAttribute(element, "name", model.name);
      setAttribute(element, "kind", model.kind);
      setAttribute(element, "fingerprint", model.fingerprint);
      setAttribute(element, "covered", textOfNumbers(model.covered));
    }
  }
  return formattedDocumentText(root.get());
}

void addRun(History& history, HistoryRun run) {
  run.number = history.runs.empty() ? 1 : history.runs.front().number + 1;
  history.runs.insert(history.runs.begin(), std::move(run));
  if (history.runs.size() > kHistoryRuns) history.runs.resize(kHistoryRuns);
}

HistoryCase historyCase(const std::string& fullName, const TestCaseVerdict& verdict) {
  HistoryCase entry;
  entry.fullName = fullName;
  entry.name = std::string(afterLast(entry.fullName, '.'));
  entry.status = verdict.status;
  entry.verificationResult = std::string(verificationResultText(verdict.verification));
  return entry;
}

std::string historyTimeText() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  if (!gmtime_r(&now, &utc)) return std::string();
  char buffer[32] = {};
  const size_t length = std::strftime(buffer, sizeof buffer, "%Y-%m-%dT%H:%M:%SZ", &utc);
  return std::string(buffer, length);
}

void appendHistoryElement(xmlNode* root, const History& earlier,
                          const std::vector<HistoryCase>& current) {
  xmlNode* element = addElement(root, "History");
  if (!element) return;
  // The statuses of each test case of this run, newest first: one lookup per
  // entry of the earlier runs, however many test cases a context has.
  struct Statuses {
    std::vector<Status> newestFirst;
    size_t lastRun = SIZE_MAX;  // the earlier run that gave the last status
  };
  std::unordered_map<std::string_view, Statuses> byName;
  for (const HistoryCase& entry : current) {
    byName.emplace(entry.fullName, Statuses{{entry.status}, SIZE_MAX});
  }
  for (size_t i = 0; i < earlier.runs.size(); ++i) {
    for (const HistoryCase& entry : earlier.runs[i].cases) {
      const auto found = byName.find(entry.fullName);
      if (found == byName.end() || found->second.lastRun == i) continue;
      found->second.newestFirst.push_back(entry.status);
      found->second.lastRun = i;
    }
  }
  for (const HistoryCase& entry : current) {
    xmlNode* trend = addElement(element, "TestCaseTrend");
    setAttribute(trend, "name", entry.name);
    setAttribute(trend, "fullname", entry.fullName);
    const Classification classification = classify(byName[entry.fullName].newestFirst);
    setAttribute(trend, "classification", classificationText(classification));
  }
  auto reportedNow = [&](const HistoryCase& entry) { return byName.count(entry.fullName) != 0; };
  for (const HistoryRun& run : earlier.runs) addRunElement(element, run, reportedNow);
}

}  // namespace qendor
