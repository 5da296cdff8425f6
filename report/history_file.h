// The history file of one test context or test case in the "-history"
// directory, <directory>/<short name>.history.xml, shared by every qendor
// process that reports the same name there at the same time. Each change
// is made under an advisory lock on <short name>.history.xml.lock beside it
// and replaces the file in one rename, so that no run is lost and no reader
// ever sees half a file.
#pragma once

#include <string>

#include "report/history.h"

namespace qendor {

class HistoryFile {
 public:
  // `directory` as given on the command line; it is normalised here.
  HistoryFile(const std::string& directory, const std::string& shortName, HistoryOwner owner);

  // Creates the directory when it is missing and reads the history into
  // `history`. A file that cannot be read, is not well-formed or belongs to
  // another owner is moved aside to <name>.history.xml.bad with one warning
  // on standard error and reads as empty; so does a missing file, silently.
  // Returns false, with one warning, when the directory cannot be created or
  // written: the run then keeps no history and add() does nothing.
  bool read(History& history);

  // Adds `run` to the history as it stands in the file now (other processes
  // may have added runs since read()), keeping the newest kHistoryRuns, and
  // replaces the file. Returns false, with one warning, when the file cannot
  // be written; false without a warning after a failed read().
  bool add(HistoryRun run);

  const std::string& path() const { return path_; }

 private:
  // Reads the file while the lock is held; see read().
  void load(History& history);
  void moveAside(const char* why);
  // Writes `text` to a temporary file beside the history file, flushes it to
  // the disk and renames it over the history file.
  bool replace(const std::string& text);

  std::string directory_;
  std::string path_;
  std::string lockPath_;
  HistoryOwner owner_;
  bool usable_ = false;
};

}  // namespace qendor
