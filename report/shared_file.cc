#include "report/shared_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "report/file_output.h"

namespace qendor {

FileLock::FileLock(const std::string& path) {
  fd_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (fd_ < 0) return;
  while (flock(fd_, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    close(fd_);
    fd_ = -1;
    return;
  }
}

FileLock::~FileLock() {
  if (fd_ >= 0) close(fd_);  // closing releases the lock
}

void makeDirectories(const std::string& directory) {
  for (size_t slash = directory.find('/', 1); slash != std::string::npos;
       slash = directory.find('/', slash + 1)) {
    mkdir(directory.substr(0, slash).c_str(), 0777);
  }
  mkdir(directory.c_str(), 0777);
}

bool readAll(int fd, std::string& text) {
  char buffer[65536];
  for (;;) {
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) return true;
    text.append(buffer, static_cast<size_t>(got));
  }
}

bool replaceFile(const std::string& path, const std::string& directory, const std::string& text) {
  // A new file beside the old one, renamed over it once every byte is on
  // the disk: a reader never sees half a file.
  FileOutput file(path, FileOutput::Mode::kReplace);
  if (!file.open() || !file.write(text) || !file.finish()) return false;
  // The rename itself reaches the disk with the directory.
  const int folder = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    fsync(folder);
    close(folder);
  }
  return true;
}

}  // namespace qendor
