#include "report/render_workers.h"

namespace qendor {

RenderWorkers::RenderWorkers(size_t threads) {
  if (threads == 0) threads = 1;
  threads_.reserve(threads);
  for (size_t i = 0; i < threads; ++i) threads_.emplace_back([this] { work(); });
}

RenderWorkers::~RenderWorkers() {
  {
    // Told under the lock, as every change the threads wait for.
    std::lock_guard<std::mutex> lock(mutex_);
    ending_ = true;
    handed_.notify_all();
  }
  for (std::thread& thread : threads_) thread.join();
}

void RenderWorkers::hand(int64_t serial, Task task) {
  std::lock_guard<std::mutex> lock(mutex_);
  tasks_.emplace_back(serial, std::move(task));
  handed_.notify_one();
}

std::vector<RenderWorkers::Finished> RenderWorkers::takeFinished(bool block) {
  std::unique_lock<std::mutex> lock(mutex_);
  if (block) finished_.wait(lock, [this] { return !finishedRenders_.empty(); });
  std::vector<Finished> taken;
  taken.swap(finishedRenders_);
  return taken;
}

void RenderWorkers::work() {
  std::unique_lock<std::mutex> lock(mutex_);
  for (;;) {
    handed_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
    if (tasks_.empty()) return;
    std::pair<int64_t, Task> task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    RenderOutcome outcome;
    try {
      outcome = task.second();
    } catch (...) {
      // No memory for a render's texts: the render is lost, the run goes on.
      outcome = RenderOutcome();
      outcome.problem = "the render ran out of memory";
    }
    task.second = nullptr;
    lock.lock();
    finishedRenders_.emplace_back(task.first, std::move(outcome));
    finished_.notify_one();
  }
}

}  // namespace qendor
