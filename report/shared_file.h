// A file that several qendor processes change at the same time, such as a
// history file or the index of an output folder: each change is made while
// an advisory lock on a lock file beside it is held, and the file is
// replaced in one rename, so that no change is lost and no reader ever sees
// half a file.
#pragma once

#include <string>

namespace qendor {

// An exclusive advisory lock (flock) on the file `path`, created when
// missing, held while the object lives. The lock file itself stays:
// removing it would let two processes lock two different files of the same
// name.
class FileLock {
 public:
  // Blocks until the lock is held; held() is false when the lock file cannot
  // be created or locked.
  explicit FileLock(const std::string& path);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  bool held() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

// Creates `directory` (normalised) and the missing folders above it.
// Failures show later, when a file in it cannot be created.
void makeDirectories(const std::string& directory);

// The whole content of the open file `fd`, appended to `text`; false on a
// read error (a directory, an I/O error).
bool readAll(int fd, std::string& text);

// Writes `text` to a temporary file beside `path`, flushes it to the disk
// and renames it over `path`, then flushes `directory` (the folder of
// `path`) so that the rename reaches the disk too. False, with nothing
// printed and the old file as it was, when the file cannot be written.
bool replaceFile(const std::string& path, const std::string& directory, const std::string& text);

}  // namespace qendor
