#include "report/history_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "base/paths.h"
#include "report/shared_file.h"

namespace qendor {

namespace {

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
  return replaceFile(path_, directory_, text);
}

}  // namespace qendor
