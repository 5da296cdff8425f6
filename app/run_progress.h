// The progress of a context run on a terminal: one status line on standard
// error, "judged and written 120 of 4000 test cases, 35 HTML renders
// waiting, 00:12 elapsed", drawn at most ten times a second and erased at
// the end. Nothing at all when standard error is not a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace qendor {

// The status line's text; `elapsed` in whole seconds, shown as mm:ss
// (minutes past 99 as they come).
std::string progressText(size_t written, size_t total, size_t waiting,
                         std::chrono::seconds elapsed);

// Whether a line drawn at `last` may be drawn again at `now`: a tenth of a
// second later at the earliest.
bool progressDue(std::chrono::steady_clock::time_point last,
                 std::chrono::steady_clock::time_point now);

class RunProgress {
 public:
  // Draws "0 of `total`" at once, when standard error is a terminal.
  explicit RunProgress(size_t total);
  // Erases the line (finish()).
  ~RunProgress();
  RunProgress(const RunProgress&) = delete;
  RunProgress& operator=(const RunProgress&) = delete;

  // `written` test cases are judged and written, `waiting` HTML renders not
  // done; drawn when the last drawing is a tenth of a second old.
  void update(size_t written, size_t waiting);
  // The renders still going on, the written count as it stands.
  void updateWaiting(size_t waiting) { update(written_, waiting); }

  // Erases the line for good.
  void finish();

 private:
  void draw(size_t waiting, std::chrono::steady_clock::time_point now);

  bool active_;
  size_t total_;
  size_t written_ = 0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point last_;
};

}  // namespace qendor
