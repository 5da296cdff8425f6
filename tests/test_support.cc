#include "tests/test_support.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>

namespace qendor {
namespace test {

namespace fs = std::filesystem;

std::string inQuotes(std::string_view text) {
  static const char kHex[] = "0123456789abcdef";
  std::string out = "\"";
  for (const char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\0':
        out += "\\0";
        break;
      default:
        if (byte < 0x20 || byte >= 0x7f) {
          out += "\\x";
          out += kHex[byte >> 4];
          out += kHex[byte & 0xf];
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

TempDir::TempDir() {
  std::string pattern = (fs::temp_directory_path() / "qendor-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TempDir::file(const std::string& name) const {
  return path_ + "/" + name;
}

std::string TempDir::write(const std::string& name, const std::string& content) const {
  std::string path = file(name);
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << content;
  return path;
}

ScopedEnv::ScopedEnv(const char* name) : name_(name) {
  if (const char* old = getenv(name)) old_ = old;
}

ScopedEnv::ScopedEnv(const char* name, const char* value) : ScopedEnv(name) {
  if (value) {
    setenv(name, value, 1);
  } else {
    unsetenv(name);
  }
}

ScopedEnv::~ScopedEnv() {
  if (old_) {
    setenv(name_, old_->c_str(), 1);
  } else {
    unsetenv(name_);
  }
}

size_t overlapIn(const std::string& log) {
  size_t now = 0, most = 0;
  for (size_t at = 0; at < log.size();) {
    size_t end = log.find('\n', at);
    if (log.compare(at, 6, "start ") == 0) most = std::max(most, ++now);
    if (log.compare(at, 4, "end ") == 0) --now;
    if (end == std::string::npos) break;
    at = end + 1;
  }
  return most;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

bool fileExists(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

std::vector<std::string> filesIn(const std::string& dir) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(dir)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

pid_t spawnProgram(const std::string& program, const std::vector<std::string>& args,
                   const std::string& workDir, const std::string& path,
                   const posix_spawn_file_actions_t* actions) {
  std::vector<std::string> env = {"PATH=" + path, "USERNAME=tester", "HOSTNAME=testhost", "TZ=UTC",
                                  "LC_ALL=C"};
  std::vector<std::string> words = args;
  words.insert(words.begin(), program);
  std::vector<char*> argv, envp;
  for (std::string& w : words) argv.push_back(w.data());
  argv.push_back(nullptr);
  for (std::string& e : env) envp.push_back(e.data());
  envp.push_back(nullptr);
  // Relative paths in the arguments are relative to workDir.
  const fs::path previous = fs::current_path();
  fs::current_path(workDir);
  pid_t pid = -1;
  const int spawned = posix_spawn(&pid, argv[0], actions, nullptr, argv.data(), envp.data());
  fs::current_path(previous);
  return spawned == 0 ? pid : -1;
}

RunningProgram startProgram(const std::string& program, const std::vector<std::string>& args,
                            const std::string& workDir, const std::string& path) {
  RunningProgram running;
  running.capture_ = std::make_unique<TempDir>();
  const std::string outFile = running.capture_->file("stdout");
  const std::string errFile = running.capture_->file("stderr");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);
  posix_spawn_file_actions_addopen(&actions, 2, errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);
  running.pid_ = spawnProgram(program, args, workDir, path, &actions);
  posix_spawn_file_actions_destroy(&actions);
  return running;
}

ProgramOutcome RunningProgram::finish() {
  ProgramOutcome outcome;
  if (pid_ < 0) return outcome;
  int wstatus = 0;
  while (waitpid(pid_, &wstatus, 0) < 0 && errno == EINTR) {
  }
  pid_ = -1;
  outcome.status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : 128 + WTERMSIG(wstatus);
  outcome.out = readFile(capture_->file("stdout"));
  outcome.err = readFile(capture_->file("stderr"));
  return outcome;
}

ProgramOutcome runProgram(const std::string& program, const std::vector<std::string>& args,
                          const std::string& workDir, const std::string& path) {
  return startProgram(program, args, workDir, path).finish();
}

}  // namespace test
}  // namespace qendor
