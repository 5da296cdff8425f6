// Helpers shared by the tests: a fresh run, temporary folders and files.
#pragma once

#include <spawn.h>
#include <sys/types.h>

#include "base/status.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qendor {
namespace test {

// The status of a record written as the log reader would file it.
inline Status recordStatus(std::string_view text) {
  return text == "FAILED" ? Status::kFailed : Status::kPassed;
}

// `text` in double quotes, readable whatever it holds: a double quote and a
// backslash get a backslash, \n \r \t \0 stand for their bytes, and any other
// byte below 0x20 or from 0x7f up is written \xNN.
std::string inQuotes(std::string_view text);

// A temporary folder removed with its contents when the object goes.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // path() + "/" + name
  std::string file(const std::string& name) const;
  // Writes `content` byte for byte to path() + "/" + name, creating folders.
  std::string write(const std::string& name, const std::string& content) const;

 private:
  std::string path_;
};

// Restores an environment variable when it goes: to its value when the
// object was made, or unset. The second form also sets it (unsets on null).
class ScopedEnv {
 public:
  explicit ScopedEnv(const char* name);
  ScopedEnv(const char* name, const char* value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  const char* name_;
  std::optional<std::string> old_;
};

// The largest number of runs going on at once in a log of "start ..." and
// "end ..." lines.
size_t overlapIn(const std::string& log);

// The whole content of a file; empty when it cannot be read.
std::string readFile(const std::string& path);

bool fileExists(const std::string& path);

// The names in a folder, sorted.
std::vector<std::string> filesIn(const std::string& dir);

struct ProgramOutcome {
  std::string out;
  std::string err;
  int status = -1;  // exit status; 128 + signal when killed; -1 when not started
};

// Runs `program` with `args` inside `workDir`, under a fixed environment
// (PATH = `path`, USERNAME, HOSTNAME, TZ=UTC, LC_ALL=C), and keeps what it
// wrote on standard output and standard error.
ProgramOutcome runProgram(const std::string& program, const std::vector<std::string>& args,
                          const std::string& workDir, const std::string& path = "/usr/bin:/bin");

// Starts `program` as runProgram does, its files set up by `actions`; the
// process id, or -1 when it could not be started.
pid_t spawnProgram(const std::string& program, const std::vector<std::string>& args,
                   const std::string& workDir, const std::string& path,
                   const posix_spawn_file_actions_t* actions);

// The same in two steps, so that several programs can run at once: started
// by startProgram, waited for by finish().
class RunningProgram {
 public:
  RunningProgram() = default;
  RunningProgram(RunningProgram&&) = default;
  RunningProgram& operator=(RunningProgram&&) = default;
  // Waits for the program (when it was started) and returns what it did.
  ProgramOutcome finish();

 private:
  friend RunningProgram startProgram(const std::string&, const std::vector<std::string>&,
                                     const std::string&, const std::string&);
  std::unique_ptr<TempDir> capture_;
  int pid_ = -1;
};

RunningProgram startProgram(const std::string& program, const std::vector<std::string>& args,
                            const std::string& workDir, const std::string& path = "/usr/bin:/bin");

}  // namespace test
}  // namespace qendor
