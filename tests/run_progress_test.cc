// The progress line of a context run: its text, how often it is drawn, and
// a run on a pseudo-terminal against one on a pipe.
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <spawn.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "app/run_progress.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(ProgressText, Table) {
  struct Case {
    size_t written, total, waiting;
    long long elapsed;
    const char* text;
  };
  const Case cases[] = {
      {0, 5, 0, 0, "judged and written 0 of 5 test cases, 0 HTML renders waiting, 00:00 elapsed"},
      {120, 4000, 35, 12,
       "judged and written 120 of 4000 test cases, 35 HTML renders waiting, 00:12 elapsed"},
      {4000, 4000, 1, 61,
       "judged and written 4000 of 4000 test cases, 1 HTML renders waiting, 01:01 elapsed"},
      {1, 1, 0, 6000,
       "judged and written 1 of 1 test cases, 0 HTML renders waiting, 100:00 elapsed"},
      {0, 0, 0, -3, "judged and written 0 of 0 test cases, 0 HTML renders waiting, 00:00 elapsed"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(progressText(c.written, c.total, c.waiting, seconds(c.elapsed)), c.text);
  }
}

TEST(ProgressText, AtMostTenDrawingsASecond) {
  const auto start = std::chrono::steady_clock::time_point() + seconds(5);
  EXPECT_FALSE(progressDue(start, start));
  EXPECT_FALSE(progressDue(start, start + milliseconds(99)));
  EXPECT_TRUE(progressDue(start, start + milliseconds(100)));
  EXPECT_TRUE(progressDue(start, start + seconds(3)));
}

struct TerminalOutcome {
  int status = -1;
  std::string out;       // standard output, a file
  std::string terminal;  // what reached the terminal on standard error
};

// Runs the program in `dir` with standard error on a pseudo-terminal in raw
// mode (so that its bytes arrive as written) and standard output in a file.
TerminalOutcome runOnTerminal(const std::vector<std::string>& args, const std::string& dir,
                              const std::string& path) {
  TerminalOutcome outcome;
  int master = -1, slave = -1;
  if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) return outcome;
  termios raw{};
  tcgetattr(slave, &raw);
  cfmakeraw(&raw);
  tcsetattr(slave, TCSANOW, &raw);
  const std::string outFile = dir + "/stdout.txt";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);
  posix_spawn_file_actions_adddup2(&actions, slave, 2);
  posix_spawn_file_actions_addclose(&actions, master);
  const pid_t pid = test::spawnProgram(QENDOR_BINARY, args, dir, path, &actions);
  posix_spawn_file_actions_destroy(&actions);
  close(slave);
  if (pid < 0) {
    close(master);
    return outcome;
  }
  // Read until the last holder of the terminal's other side closes it
  // (EIO), so that nothing stays in the terminal's buffer.
  char buffer[4096];
  for (;;) {
    const ssize_t got = read(master, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    outcome.terminal.append(buffer, static_cast<size_t>(got));
  }
  close(master);
  int wstatus = 0;
  while (waitpid(pid, &wstatus, 0) < 0 && errno == EINTR) {
  }
  outcome.status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
  outcome.out = test::readFile(outFile);
  fs::remove(outFile);
  return outcome;
}

std::vector<std::string> contextArgs() {
  return {"-infofile",     "shop.info", "-resultfile", "results.log",
          "-outdirectory", "out",       "-tcontext",   "Pkg.Ctx"};
}

// Every drawing of the line in `terminal`, in order, from its start up to
// `rest` (what follows the last erasure).
std::vector<std::string> drawings(const std::string& terminal, std::string* rest) {
  std::vector<std::string> lines;
  static const std::regex drawing("\r([^\r\x1b]*)\x1b\\[K");
  auto it = std::sregex_iterator(terminal.begin(), terminal.end(), drawing);
  size_t end = 0;
  for (; it != std::sregex_iterator(); ++it) {
    if (static_cast<size_t>(it->position()) != end) break;  // something between drawings
    lines.push_back((*it)[1]);
    end = static_cast<size_t>(it->position() + it->length());
  }
  *rest = terminal.substr(end);
  return lines;
}

class ProgressRun : public testing::Test {
 protected:
  ProgressRun() {
    fs::copy(std::string(QENDOR_SOURCE_DIR) + "/tests/scenarios/shop", dir_.path(),
             fs::copy_options::recursive);
  }
  test::TempDir dir_;
};

TEST_F(ProgressRun, OneLineOnATerminalErasedAtTheEnd) {
  const TerminalOutcome o = runOnTerminal(contextArgs(), dir_.path(), "/usr/bin:/bin");
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.out, "");
  std::string rest;
  const std::vector<std::string> lines = drawings(o.terminal, &rest);
  EXPECT_EQ(rest, "") << test::inQuotes(o.terminal);
  ASSERT_GE(lines.size(), 2u) << test::inQuotes(o.terminal);
  EXPECT_EQ(lines.front(),
            "judged and written 0 of 5 test cases, 0 HTML renders waiting, 00:00 elapsed");
  EXPECT_EQ(lines.back(), "");  // erased
  static const std::regex line(
      "judged and written [0-5] of 5 test cases, [0-9]+ HTML renders waiting, [0-9]{2}:[0-9]{2} "
      "elapsed");
  for (size_t i = 1; i + 1 < lines.size(); ++i) {
    EXPECT_TRUE(std::regex_match(lines[i], line)) << test::inQuotes(lines[i]);
  }
  EXPECT_TRUE(test::fileExists(dir_.file("out/Ctx.html")));
}

// A message of the run starts on an empty line: the progress line is erased
// before it.
TEST_F(ProgressRun, AMessageErasesTheLineFirst) {
  test::TempDir emptyPath;
  const TerminalOutcome o = runOnTerminal(contextArgs(), dir_.path(), emptyPath.path());
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.out, "");
  std::string rest;
  const std::vector<std::string> lines = drawings(o.terminal, &rest);
  ASSERT_FALSE(lines.empty()) << test::inQuotes(o.terminal);
  EXPECT_EQ(lines.back(), "");
  EXPECT_EQ(rest, "qendor: xsltproc not found: 6 HTML reports not written\n");
}

TEST_F(ProgressRun, ATestCaseRunShowsNone) {
  const TerminalOutcome o = runOnTerminal({"-infofile", "shop.info", "-resultfile", "results.log",
                                           "-outdirectory", "out", "-tcase", "Pkg.Ctx.SdPass"},
                                          dir_.path(), "/usr/bin:/bin");
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.terminal, "");
}

// Standard error on a pipe gets nothing new.
TEST_F(ProgressRun, APipeGetsNothing) {
  int fds[2];
  ASSERT_EQ(pipe(fds), 0);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, fds[1], 2);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addclose(&actions, fds[0]);
  const pid_t pid =
      test::spawnProgram(QENDOR_BINARY, contextArgs(), dir_.path(), "/usr/bin:/bin", &actions);
  posix_spawn_file_actions_destroy(&actions);
  ASSERT_GE(pid, 0);
  close(fds[1]);
  std::string err;
  char buffer[4096];
  ssize_t got;
  while ((got = read(fds[0], buffer, sizeof buffer)) != 0) {
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) break;
    err.append(buffer, static_cast<size_t>(got));
  }
  close(fds[0]);
  int wstatus = 0;
  while (waitpid(pid, &wstatus, 0) < 0 && errno == EINTR) {
  }
  EXPECT_EQ(WEXITSTATUS(wstatus), 10);
  EXPECT_EQ(err, "");
}

}  // namespace
}  // namespace qendor
