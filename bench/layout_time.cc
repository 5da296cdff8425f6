// Lays out the chart of a verification file with Graphviz dot, as -explain
// draws it, and prints the seconds the layout took and what it drew:
//
//   qendor_bench_layout FILE.ver MOST_STATES
//
// MOST_STATES lifts (or lowers) the cap above which only a neighbourhood is
// laid out, so that the time of a whole chart can be measured.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/line_reader.h"
#include "report/chart_layout.h"
#include "verify/verification_file.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: qendor_bench_layout FILE.ver MOST_STATES\n");
    return 2;
  }
  qendor::LineReader lines{std::string(argv[1])};
  qendor::Verification verification = qendor::parseVerificationFile(lines);
  if (!verification.chart) {
    std::fprintf(stderr, "qendor_bench_layout: %s holds no chart\n", argv[1]);
    return 1;
  }
  qendor::LayoutLimits limits;
  limits.mostStates = std::strtoul(argv[2], nullptr, 10);
  limits.mostTransitions = 3 * limits.mostStates;
  limits.focus = {"s1"};
  const auto start = std::chrono::steady_clock::now();
  const qendor::ChartLayout layout = qendor::layoutChart(*verification.chart, limits);
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf("%.3f %zu %zu %s\n", seconds, layout.nodes.size(), layout.lines.size(),
              layout.laidOut ? "laid-out" : "failed");
  return layout.laidOut ? 0 : 1;
}
