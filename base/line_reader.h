// Cuts text into lines up to each line feed: a file read in large chunks, so
// that a huge log streams through a small buffer, or bytes already in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace qendor {

class LineReader {
 public:
  // Opens `path` for reading; check isOpen(). A directory opens but reads as
  // empty, as fopen and a read give on Linux.
  explicit LineReader(const std::string& path);
  // Reads `text`, which must outlive the reader. Always open.
  explicit LineReader(std::string_view text);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  bool isOpen() const { return fd_ >= 0 || inMemory_; }

  // The next line without its line feed; nothing else is trimmed (a carriage
  // return stays). A last line without a line feed is returned too, unless it
  // is empty. The view is valid until the next call. False at the end of the
  // file or at the first read error.
  bool next(std::string_view& line);

 private:
  bool fill();

  bool nextInMemory(std::string_view& line);

  int fd_ = -1;
  bool inMemory_ = false;
  std::string_view text_;           // the unread rest, in memory
  size_t firstChunk_ = 0;           // the first buffer: the file's size, within bounds
  std::unique_ptr<char[]> buffer_;  // not zero-filled: only read text is looked at
  size_t capacity_ = 0;
  size_t begin_ = 0;  // start of the unread text in buffer_
  size_t end_ = 0;    // end of the text read into buffer_
  bool atEnd_ = false;
  bool lastReadFilled_ = false;
};

}  // namespace qendor
