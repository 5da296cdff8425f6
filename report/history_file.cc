#include "report/history_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "base/paths.h"
#include "report/file_output.h"

namespace qendor {

namespace {

// An exclusive advisory lock on a lock file, held while the object lives.
// The lock file itself stays: removing it would let two processes lock two
// different files of the same name.
class FileLock {
 public:
  explicit FileLock(const std::string& path) {
    fd_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd_ < 0) return;
    while (flock(fd_, LOCK_EX) != 0) {
      if (errno == EINTR) continue;
      close(fd_);
      fd_ = -1;
      return;
    }
  }
  ~FileLock() {
    if (fd_ >= 0) close(fd_);  // closing releases the lock
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  bool held() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

// Creates `directory` and the missing folders above it. Failures show later,
// when the lock file cannot be created.
void makeDirectories(const std::string& directory) {
  for (size_t slash = directory.find('/', 1); slash != std::string::npos;
       slash = directory.find('/', slash + 1)) {
    mkdir(directory.substr(0, slash).c_str(), 0777);
  }
  mkdir(directory.c_str(), 0777);
}

// The whole content of the open file `fd`; false on a read error (a
// directory, an I/O error).
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

void warnUnwritable(const std::string& directory) {
  std::fprintf(stderr,
               "qendor: history directory %s cannot be created or written; no history kept\n",
               directory.c_str());
}

}  // namespace

HistoryFile::HistoryFile(const std::string& directory, const std::string& shortName,
                         HistoryOwner owner)
    : directory_(normalisePath(directory)),
      path_(normalisePath(directory + "\\" + shortName + ".history.xml")),
      lockPath_(path_ + ".lock"),
      owner_(std::move(owner)) {}

bool HistoryFile::read(History& history) {
  history.runs.clear();
  makeDirectories(directory_);
  FileLock lock(lockPath_);
  usable_ = lock.held();
  if (!usable_) {
    warnUnwritable(directory_);
    return false;
  }
  load(history);
  return true;
}

bool HistoryFile::add(HistoryRun run) {
  if (!usable_) return false;
  FileLock lock(lockPath_);
  if (!lock.held()) {
    warnUnwritable(directory_);
    return false;
  }
  History history;
  load(history);
  addRun(history, std::move(run));
  if (!replace(historyText(history, owner_))) {
    std::fprintf(stderr, "qendor: history file %s could not be written; this run is not kept\n",
                 path_.c_str());
    return false;
  }
  return true;
}

void HistoryFile::load(History& history) {
  history.runs.clear();
  const int fd = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    if (errno != ENOENT) moveAside("could not be read");
    return;
  }
  std::string text;
  const bool readWhole = readAll(fd, text);
  close(fd);
  if (!readWhole) {
    moveAside("could not be read");
    return;
  }
  switch (parseHistory(text, owner_, history)) {
    case HistoryParse::kRead:
      break;
    case HistoryParse::kNotWellFormed:
      moveAside("is not well-formed");
      break;
    case HistoryParse::kForeign:
      moveAside("belongs to another test context or test case");
      break;
  }
}

void HistoryFile::moveAside(const char* why) {
  const std::string aside = path_ + ".bad";
  if (std::rename(path_.c_str(), aside.c_str()) == 0) {
    std::fprintf(stderr, "qendor: history file %s %s; moved aside to %s\n", path_.c_str(), why,
                 aside.c_str());
  } else {
    std::fprintf(stderr, "qendor: history file %s %s and could not be moved aside\n", path_.c_str(),
                 why);
  }
}

bool HistoryFile::replace(const std::string& text) {
  // A new file beside the old one, renamed over it once every byte is on
  // the disk: a reader never sees half a history.
  FileOutput file(path_, FileOutput::Mode::kReplace);
  if (!file.open() || !file.write(text) || !file.finish()) return false;
  // The rename itself reaches the disk with the directory.
  const int folder = open(directory_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    fsync(folder);
    close(folder);
  }
  return true;
}

}  // namespace qendor
