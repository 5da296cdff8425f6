#include "base/line_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace qendor {

namespace {
// Small files (info and verification files) need little; a log's buffer
// grows to kLargeChunk, and further only for a line longer than that.
constexpr size_t kSmallestChunk = 256;
constexpr size_t kFirstChunk = size_t{64} << 10;
constexpr size_t kLargeChunk = 1 << 20;
}  // namespace

LineReader::LineReader(const std::string& path)
    : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC)), firstChunk_(kFirstChunk) {
  // A file read once per test case (a verification file of a few hundred
  // bytes) gets a buffer of its own size: thousands of them in a run then
  // cost no more than their text.
  struct stat status;
  if (fd_ >= 0 && fstat(fd_, &status) == 0 && S_ISREG(status.st_mode)) {
    const auto size = static_cast<size_t>(status.st_size);
    firstChunk_ = std::clamp(size + 1, kSmallestChunk, kFirstChunk);
  }
}

LineReader::LineReader(std::string_view text) : inMemory_(true), text_(text) {}

LineReader::~LineReader() {
  if (fd_ >= 0) close(fd_);
}

// Moves the unread text to the front, grows the buffer when it is full, and
// reads more. False when nothing more could be read.
bool LineReader::fill() {
  if (atEnd_ || fd_ < 0) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  // A file whose first read filled the small buffer is a log: give it the
  // large one.
  if (end_ == capacity_ || (capacity_ < kLargeChunk && lastReadFilled_)) {
    size_t grown = capacity_ == 0 ? firstChunk_ : std::max(capacity_ * 2, kLargeChunk);
    std::unique_ptr<char[]> larger(new char[grown]);
    if (end_ > 0) std::memcpy(larger.get(), buffer_.get(), end_);
    buffer_ = std::move(larger);
    capacity_ = grown;
  }
  ssize_t got;
  do {
    got = read(fd_, buffer_.get() + end_, capacity_ - end_);
  } while (got < 0 && errno == EINTR);
  if (got <= 0) {
    atEnd_ = true;  // end of file or a read error (a directory): both end the reading
    return false;
  }
  lastReadFilled_ = static_cast<size_t>(got) == capacity_ - end_;
  end_ += static_cast<size_t>(got);
  return true;
}

bool LineReader::nextInMemory(std::string_view& line) {
  if (text_.empty()) return false;
  const void* feed = std::memchr(text_.data(), '\n', text_.size());
  const size_t length =
      feed ? static_cast<size_t>(static_cast<const char*>(feed) - text_.data()) : text_.size();
  line = text_.substr(0, length);
  text_.remove_prefix(feed ? length + 1 : length);
  return true;
}

bool LineReader::next(std::string_view& line) {
  if (inMemory_) return nextInMemory(line);
  size_t searchFrom = begin_;
  for (;;) {
    const char* start = buffer_.get() + searchFrom;
    const void* feed = end_ > searchFrom ? std::memchr(start, '\n', end_ - searchFrom) : nullptr;
    if (feed) {
      size_t at = static_cast<const char*>(feed) - buffer_.get();
      line = std::string_view(buffer_.get() + begin_, at - begin_);
      begin_ = at + 1;
      return true;
    }
    size_t scanned = end_ - begin_;
    if (!fill()) {
      if (end_ == begin_) return false;
      line = std::string_view(buffer_.get() + begin_, end_ - begin_);
      begin_ = end_;
      return true;
    }
    searchFrom = begin_ + scanned;
  }
}

}  // namespace qendor
