// Writes a synthetic but valid scenario for the benchmarks: an info file, a
// result file in the full or the short record form, the source files of the
// short form and one sequence-diagram verification file per test case.
//
//   qendor_bench_generate DIR [options]
//     --cases N          test cases Bench.Ctx.T1 ... TN (numbers 1..N)
//     --records M        records per test case, start and finish included
//     --first-records K  records of test case 1 (a small one to report alone)
//     --form full|short  record form of the log
//     --files F          FILE entries of the info file
//     --used-files U     how many of them the records name (the first U)
//     --steps P          messages of the diagram; records cycle through them
//     --pad L            transparent marker lines before each message, so a
//                        diagram has about P * (L + 1) lines
//     --chart KIND       "state" or "flow": a statechart or flowchart test of
//                        the full form instead of a sequence diagram
//     --fan K            K transitions leave each state of a chart's ring: the
//                        one to the next state, tried first, and K - 1 that
//                        skip ahead (no assertion, so the verdict is the same)
//     --info NAME        write only the info file, under NAME
//     --progress yes     full-form diagram records carry their progress in
//                        the detail text too, where the sequence step reads
//                        it: the diagram is walked (else only the statement
//                        holds it, and the walk never starts)
//
// Each diagram is one loop whose operand holds the P messages; the records
// run through it as often as they last, so every test case passes when its
// record count less two is a multiple of P. A chart is a ring of P states,
// each asserting its own step on entry, entered from a start state and left
// for a top-level termination from the last state; the records run round
// the ring in the same way.
#include <sys/stat.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Options {
  std::string dir;
  long cases = 10;
  long records = 100;
  long firstRecords = -1;
  bool shortForm = false;
  long files = 10;
  long usedFiles = 10;
  long steps = 100;
  long pad = 0;
  std::string chart;  // empty for sequence diagrams
  long fan = 1;
  std::string infoOnly;
  bool progress = false;
};

[[noreturn]] void usage() {
  std::fprintf(
      stderr,
      "usage: qendor_bench_generate DIR [--cases N] [--records M] "
      "[--first-records K] [--form full|short] [--files F] [--used-files U] "
      "[--steps P] [--pad L] [--chart state|flow] [--fan K] [--info NAME] [--progress yes]\n");
  std::exit(2);
}

FILE* create(const std::string& path) {
  FILE* file = std::fopen(path.c_str(), "w");
  if (!file) {
    std::perror(path.c_str());
    std::exit(1);
  }
  // Large blocks: the generator should cost little next to what it feeds.
  std::setvbuf(file, nullptr, _IOFBF, 1 << 20);
  return file;
}

void close(FILE* file) {
  if (std::fclose(file) != 0) {
    std::perror("write");
    std::exit(1);
  }
}

// The FILE number of the k-th file that records name.
long fileNumber(const Options& o, long k) {
  return o.files - o.usedFiles + k;
}

void writeInfo(const Options& o, const std::string& name) {
  FILE* info = create(o.dir + "/" + name);
  std::fprintf(info,
               "OstraVersionNumber 7.5\nOstraBuildNumber 1\nOstraKorvanVersionNumber 3.1\n"
               "OstraKorvanBuildNumber 1\nActiveProject Bench\nActiveComponent Gen\n"
               "ActiveConfiguration Release\n");
  for (long i = 1; i <= o.cases; ++i) {
    std::fprintf(info, "TESTCASE Bench.Ctx.T%ld %ld Diagram\n", i, i);
  }
  // The files that records name come last, so that matching a record path
  // walks past every other entry first.
  for (long n = 1; n <= o.files - o.usedFiles; ++n) {
    std::fprintf(info, "FILE \"%s/src/other%ld.c\" %ld\n", o.dir.c_str(), n, n);
  }
  for (long k = 1; k <= o.usedFiles; ++k) {
    std::fprintf(info, "FILE \"%s/src/f%ld.c\" %ld\n", o.dir.c_str(), k, fileNumber(o, k));
  }
  close(info);
}

// Source files of the short form: line 1 starts, line 2 finishes, line p + 2
// holds the assertion of message p.
void writeSources(const Options& o) {
  mkdir((o.dir + "/src").c_str(), 0755);
  for (long k = 1; k <= o.usedFiles; ++k) {
    FILE* source = create(o.dir + "/src/f" + std::to_string(k) + ".c");
    std::fprintf(source, "ZKR_ASSERT_SD(\"D\", \"start\", \"Starting test case: f%ld\");\n", k);
    std::fprintf(source, "ZKR_ASSERT_SD(\"D\", \"end\", \"Finished test case: f%ld\");\n", k);
    for (long p = 1; p <= o.steps; ++p) {
      std::fprintf(source, "ZKR_ASSERT_SD(\"D\", \"m%ld\", \"step - progress %ld/%ld\");\n", p, p,
                   o.steps);
    }
    close(source);
  }
}

void writeDiagrams(const Options& o) {
  mkdir((o.dir + "/out").c_str(), 0755);
  std::string text = "SD_TEST\nLOOP_BEGIN(l)\nLOOP_OPERAND_BEGIN(l)\n";
  for (long p = 1; p <= o.steps; ++p) {
    for (long i = 0; i < o.pad; ++i) text += "STRICT_BEGIN(s)\n";
    text += std::to_string(p) + "\n";
  }
  text += "LOOP_OPERAND_END(l)\nLOOP_END(l)\n";
  for (long i = 1; i <= o.cases; ++i) {
    FILE* ver = create(o.dir + "/out/T" + std::to_string(i) + ".ver");
    std::fwrite(text.data(), 1, text.size(), ver);
    close(ver);
  }
}

// One chart record: a state (`name` set) or a transition (`name` empty).
void addState(std::string& text, const std::string& guid, const std::string& name, const char* type,
              const std::string& entry, const std::string& out) {
  text += "----------\nSTATE_NAME:\n" + name + "\nGUID:\n" + guid + "\nSTATE_TYPE:\n" + type +
          "\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n";
  if (!entry.empty()) text += "STATE_ACTION_ENTRY:\n" + entry + "\n";
  if (!out.empty()) text += "OUT_TRANSITIONS:\n" + out + "\n";
}

void addTransition(std::string& text, const std::string& guid, const std::string& target) {
  text += "----------\nTRANSITION_NAME:\n" + guid + "\nGUID:\n" + guid + "\nTRANSITION_TARGET:\n" +
          target + "\n";
}

std::string startAssertion(long testCase) {
  return "ZKR_ASSERT_TRUE(\"Starting test case: T" + std::to_string(testCase) + "\");";
}

std::string stepAssertion(long p) {
  return "ZKR_ASSERT_TRUE(step_" + std::to_string(p) + ");";
}

void writeCharts(const Options& o) {
  mkdir((o.dir + "/out").c_str(), 0755);
  // The ring and the end, the same for every test case.
  std::string ring;
  addTransition(ring, "t0", "s1");
  for (long p = 1; p <= o.steps; ++p) {
    const std::string id = std::to_string(p);
    const bool last = p == o.steps;
    std::string out = "t" + id;
    for (long k = 1; k < o.fan; ++k) out += "\nx" + id + "_" + std::to_string(k);
    addState(ring, "s" + id, "S" + id, "State", stepAssertion(p), last ? out + "\nend" : out);
    addTransition(ring, "t" + id, last ? "s1" : "s" + std::to_string(p + 1));
    for (long k = 1; k < o.fan; ++k) {
      addTransition(ring, "x" + id + "_" + std::to_string(k),
                    "s" + std::to_string((p + 1 + 3 * k) % o.steps + 1));
    }
  }
  addTransition(ring, "end", "s_end");
  addState(ring, "s_end", "End", "LocalTermination", "", "");
  for (long i = 1; i <= o.cases; ++i) {
    // The start state comes first, since the walk begins at the first
    // record, and asserts the test case's own start.
    std::string text = o.chart == "flow" ? "FLOWCHART_TEST\n" : "STATECHART_TEST\n";
    addState(text, "s0", "Start", "State", startAssertion(i), "t0");
    FILE* ver = create(o.dir + "/out/T" + std::to_string(i) + ".ver");
    std::fwrite(text.data(), 1, text.size(), ver);
    std::fwrite(ring.data(), 1, ring.size(), ver);
    close(ver);
  }
}

void writeLog(const Options& o) {
  FILE* log = create(o.dir + "/run.log");
  std::fprintf(log, "Test run started\n");
  // Short records carry ignored words so that both forms have about the
  // same bytes per record.
  const char* words = "time 2026-01-01T00:00:00.000 thread main component Gen note bench";
  long file = 0;
  for (long i = 1; i <= o.cases; ++i) {
    const long records = i == 1 && o.firstRecords >= 2 ? o.firstRecords : o.records;
    const long used = o.usedFiles > 0 ? o.usedFiles : 1;
    const long k = i % used + 1;
    if (o.shortForm) {
      std::fprintf(log, "ASSERTION=%ld,1,%ld %s\n", fileNumber(o, k), i, words);
    } else if (!o.chart.empty()) {
      std::fprintf(log, "FULLASSERTION=src\\f%ld.c,1,%ld,-----%s\n", k, i,
                   startAssertion(i).c_str());
    } else {
      std::fprintf(log,
                   "FULLASSERTION=src\\f%ld.c,1,%ld,-----ZKR_ASSERT_SD(\"D\", \"start\", "
                   "\"Starting test case: T%ld\");\n",
                   k, i, i);
    }
    for (long j = 0; j < records - 2; ++j) {
      const long p = j % o.steps + 1;
      file = file % used + 1;
      const int result = j % 97 == 96 ? 0 : 1;
      if (o.shortForm) {
        std::fprintf(log, "ASSERTION=%ld,%ld,%d %s\n", fileNumber(o, file), p + 2, result, words);
      } else if (!o.chart.empty()) {
        std::fprintf(log, "FULLASSERTION=src\\f%ld.c,%ld,%d,detail %ld-----%s\n", file, p + 2,
                     result, j, stepAssertion(p).c_str());
      } else if (o.progress) {
        std::fprintf(log,
                     "FULLASSERTION=src\\f%ld.c,%ld,%d,detail %ld - progress %ld/%ld-----"
                     "ZKR_ASSERT_SD(\"D\", \"m%ld\", \"step - progress %ld/%ld\");\n",
                     file, p + 2, result, j, p, o.steps, p, p, o.steps);
      } else {
        std::fprintf(log,
                     "FULLASSERTION=src\\f%ld.c,%ld,%d,detail %ld-----ZKR_ASSERT_SD(\"D\", "
                     "\"m%ld\", \"step - progress %ld/%ld\");\n",
                     file, p + 2, result, j, p, p, o.steps);
      }
      if (j % 1000 == 999) std::fprintf(log, "- progress line that no reader keeps\n");
    }
    if (o.shortForm) {
      std::fprintf(log, "ASSERTION=%ld,2,1 %s\n", fileNumber(o, k), words);
    } else if (!o.chart.empty()) {
      std::fprintf(log,
                   "FULLASSERTION=src\\f%ld.c,2,1,-----ZKR_ASSERT_TRUE(\"Finished test case: "
                   "T%ld\");\n",
                   k, i);
    } else {
      std::fprintf(log,
                   "FULLASSERTION=src\\f%ld.c,2,1,-----ZKR_ASSERT_SD(\"D\", \"end\", "
                   "\"Finished test case: T%ld\");\n",
                   k, i);
    }
  }
  close(log);
}

long number(const char* text) {
  char* end = nullptr;
  long value = std::strtol(text, &end, 10);
  if (!end || *end || value < 0) usage();
  return value;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) usage();
  Options o;
  o.dir = argv[1];
  for (int i = 2; i < argc; ++i) {
    const std::string key = argv[i];
    if (i + 1 >= argc) usage();
    const char* value = argv[++i];
    if (key == "--cases") {
      o.cases = number(value);
    } else if (key == "--records") {
      o.records = number(value);
    } else if (key == "--first-records") {
      o.firstRecords = number(value);
    } else if (key == "--form") {
      o.shortForm = std::strcmp(value, "short") == 0;
    } else if (key == "--files") {
      o.files = number(value);
    } else if (key == "--used-files") {
      o.usedFiles = number(value);
    } else if (key == "--steps") {
      o.steps = number(value);
    } else if (key == "--pad") {
      o.pad = number(value);
    } else if (key == "--chart") {
      o.chart = value;
      if (o.chart != "state" && o.chart != "flow") usage();
    } else if (key == "--fan") {
      o.fan = number(value);
    } else if (key == "--info") {
      o.infoOnly = value;
    } else if (key == "--progress") {
      o.progress = std::strcmp(value, "yes") == 0;
    } else {
      usage();
    }
  }
  if (o.records < 2 || o.steps < 1) usage();
  if (o.usedFiles > o.files) o.usedFiles = o.files;
  mkdir(o.dir.c_str(), 0755);
  if (!o.infoOnly.empty()) {
    writeInfo(o, o.infoOnly);
    return 0;
  }
  writeInfo(o, "run.info");
  if (o.shortForm) writeSources(o);
  if (o.chart.empty()) {
    writeDiagrams(o);
  } else {
    writeCharts(o);
  }
  writeLog(o);
  return 0;
}
