#include "app/line_reader.h"

#include <cstring>

namespace qendor {

namespace {
constexpr size_t kChunk = 1 << 20;
}  // namespace

LineReader::LineReader(const std::string& path) : file_(std::fopen(path.c_str(), "r")) {}

LineReader::~LineReader() {
  if (file_) std::fclose(file_);
}

// Moves the unread text to the front, grows the buffer when a line fills it,
// and reads more. False when nothing more could be read.
bool LineReader::fill() {
  if (atEnd_ || !file_) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (buffer_.size() - end_ < kChunk) buffer_.resize(end_ + kChunk + buffer_.size() / 2);
  size_t got = std::fread(buffer_.data() + end_, 1, buffer_.size() - end_, file_);
  if (got == 0) {
    atEnd_ = true;  // end of file or a read error: both end the reading
    return false;
  }
  end_ += got;
  return true;
}

bool LineReader::next(std::string_view& line) {
  size_t searchFrom = begin_;
  for (;;) {
    const char* start = buffer_.data() + searchFrom;
    const void* feed = end_ > searchFrom ? std::memchr(start, '\n', end_ - searchFrom) : nullptr;
    if (feed) {
      size_t at = static_cast<const char*>(feed) - buffer_.data();
      line = std::string_view(buffer_.data() + begin_, at - begin_);
      begin_ = at + 1;
      return true;
    }
    size_t scanned = end_ - begin_;
    if (!fill()) {
      if (end_ == begin_) return false;
      line = std::string_view(buffer_.data() + begin_, end_ - begin_);
      begin_ = end_;
      return true;
    }
    searchFrom = begin_ + scanned;
  }
}

}  // namespace qendor
