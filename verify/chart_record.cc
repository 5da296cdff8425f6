#include "verify/chart_record.h"

namespace qendor {

ChartRecord* ChartList::add(std::unique_ptr<ChartRecord> record) {
  records.push_back(std::move(record));
  return records.back().get();
}

const ChartRecord* ChartList::find(std::string_view guid) const {
  if (indexed_ > records.size()) {  // records were taken away: start over
    index_.clear();
    indexed_ = 0;
  }
  // emplace keeps an existing entry, so the earliest record with a guid wins.
  for (; indexed_ < records.size(); ++indexed_) {
    const ChartRecord* record = records[indexed_].get();
    if (record) index_.emplace(record->guid, record);
  }
  auto found = index_.find(guid);
  return found == index_.end() ? nullptr : found->second;
}

}  // namespace qendor
