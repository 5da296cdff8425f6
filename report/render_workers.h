// Threads that carry out renders beside the thread that builds the
// documents, one render at a time each.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "report/render_outcome.h"

namespace qendor {

class RenderWorkers {
 public:
  using Task = std::function<RenderOutcome()>;
  using Finished = std::pair<int64_t, RenderOutcome>;  // serial number, outcome

  // Starts `threads` threads (at least one).
  explicit RenderWorkers(size_t threads);
  // Lets the threads finish the tasks handed to them, then ends them.
  ~RenderWorkers();
  RenderWorkers(const RenderWorkers&) = delete;
  RenderWorkers& operator=(const RenderWorkers&) = delete;

  // Hands `task`, the render with the serial number `serial`, to the next
  // free thread; tasks wait in the order they were handed.
  void hand(int64_t serial, Task task);

  // The renders finished since the last call. With `block`, waits until
  // there is one: the caller has handed one that it has not taken back.
  std::vector<Finished> takeFinished(bool block);

 private:
  void work();

  std::mutex mutex_;
  std::condition_variable handed_;    // a task, or the end
  std::condition_variable finished_;  // a finished render
  std::deque<std::pair<int64_t, Task>> tasks_;
  std::vector<Finished> finishedRenders_;
  bool ending_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace qendor
