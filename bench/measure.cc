// Runs a command and prints its wall time in seconds and its peak resident
// memory in kilobytes: "SECONDS KB STATUS". The command's own output goes
// to /dev/null unless QENDOR_BENCH_KEEP_OUTPUT is set.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: qendor_bench_measure COMMAND [ARGS...]\n");
    return 2;
  }
  const auto begin = std::chrono::steady_clock::now();
  pid_t child = fork();
  if (child < 0) return 2;
  if (child == 0) {
    if (!std::getenv("QENDOR_BENCH_KEEP_OUTPUT")) {
      int null = open("/dev/null", O_WRONLY);
      dup2(null, 1);
      dup2(null, 2);
    }
    execvp(argv[1], argv + 1);
    _exit(127);
  }
  int status = 0;
  struct rusage usage {};
  if (wait4(child, &status, 0, &usage) < 0) return 2;
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  std::printf("%.4f %ld %d\n", seconds, usage.ru_maxrss,
              WIFEXITED(status) ? WEXITSTATUS(status) : 128);
  return 0;
}
