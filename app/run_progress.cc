#include "app/run_progress.h"

#include <cstdio>

#include "base/status_line.h"

namespace qendor {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kInterval = std::chrono::milliseconds(100);

}  // namespace

std::string progressText(size_t written, size_t total, size_t waiting,
                         std::chrono::seconds elapsed) {
  const long long seconds = elapsed.count() < 0 ? 0 : elapsed.count();
  char clock[32];
  std::snprintf(clock, sizeof clock, "%02lld:%02lld", seconds / 60, seconds % 60);
  return "judged and written " + std::to_string(written) + " of " + std::to_string(total) +
         " test cases, " + std::to_string(waiting) + " HTML renders waiting, " + clock + " elapsed";
}

bool progressDue(Clock::time_point last, Clock::time_point now) {
  return now - last >= kInterval;
}

RunProgress::RunProgress(size_t total)
    : active_(statusLineWanted()), total_(total), start_(Clock::now()) {
  if (active_) draw(0, start_);
}

RunProgress::~RunProgress() {
  finish();
}

void RunProgress::update(size_t written, size_t waiting) {
  written_ = written;
  if (!active_) return;
  const Clock::time_point now = Clock::now();
  if (progressDue(last_, now)) draw(waiting, now);
}

void RunProgress::finish() {
  if (!active_) return;
  clearStatusLine();
  active_ = false;
}

void RunProgress::draw(size_t waiting, Clock::time_point now) {
  drawStatusLine(progressText(written_, total_, waiting,
                              std::chrono::duration_cast<std::chrono::seconds>(now - start_)));
  last_ = now;
}

}  // namespace qendor
