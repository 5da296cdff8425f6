#include "base/chart_record.h"

#include <functional>

namespace qendor {

ChartRecord* ChartList::add(std::unique_ptr<ChartRecord> record) {
  records.push_back(std::move(record));
  return records.back().get();
}

const ChartRecord* ChartList::lookUp(std::string_view guid, size_t hash) const {
  if (slots_.empty()) return nullptr;
  size_t mask = slots_.size() - 1;
  for (size_t i = hash & mask;; i = (i + 1) & mask) {
    const Slot& slot = slots_[i];
    if (!slot.record) return nullptr;
    if (slot.hash == hash && slot.record->guid == guid) return slot.record;
  }
}

// Adds `record` unless an earlier record has its guid: the first one wins.
void ChartList::insert(const ChartRecord* record) const {
  if (2 * (used_ + 1) > slots_.size()) {
    std::vector<Slot> old;
    old.swap(slots_);
    slots_.assign(old.empty() ? 16 : 2 * old.size(), Slot{});
    size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
      if (!slot.record) continue;
      size_t i = slot.hash & mask;
      while (slots_[i].record) i = (i + 1) & mask;
      slots_[i] = slot;
    }
  }
  size_t hash = std::hash<std::string_view>()(record->guid);
  size_t mask = slots_.size() - 1;
  size_t i = hash & mask;
  for (; slots_[i].record; i = (i + 1) & mask) {
    if (slots_[i].hash == hash && slots_[i].record->guid == record->guid) return;
  }
  slots_[i] = Slot{hash, record};
  ++used_;
}

const ChartRecord* ChartList::find(std::string_view guid) const {
  if (indexed_ > records.size()) {  // records were taken away: start over
    slots_.clear();
    used_ = 0;
    indexed_ = 0;
  }
  for (; indexed_ < records.size(); ++indexed_) {
    if (records[indexed_]) insert(records[indexed_].get());
  }
  return lookUp(guid, std::hash<std::string_view>()(guid));
}

}  // namespace qendor
