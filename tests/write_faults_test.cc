// Runs the built program where its reports cannot be written completely: a
// file size limit, a full file system, a read-only folder, a folder standing
// in a report's place. The program must not end by a signal, must leave no
// empty or partial report, must tell each lost file once on standard error
// and must end with 25 exactly when the run's own report is lost; standard
// output stays empty.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

using Outcome = test::ProgramOutcome;
using Files = std::vector<std::string>;

// The reports of a run of context Pkg.Run, in the order they are written: a
// small test case, a large one, the context.
const char* const kReports[] = {"Small.xml",  "Small.html", "Large.xml",
                                "Large.html", "Run.xml",    "Run.html"};
// The same from the smallest to the largest: a file size limit between two
// sizes loses every file after.
const char* const kBySize[] = {"Small.xml",  "Large.xml",  "Run.xml",
                               "Small.html", "Large.html", "Run.html"};

std::string runLog() {
  std::string log =
      "FULLASSERTION=a.c,1,1,-----ZKR_ASSERT_TRUE(\"Starting test case: Small\");\n"
      "FULLASSERTION=a.c,2,1,-----ZKR_ASSERT_TRUE(\"Finished test case: Small\");\n"
      "FULLASSERTION=a.c,1,2,-----ZKR_ASSERT_TRUE(\"Starting test case: Large\");\n";
  for (int line = 3; line < 63; ++line) {
    log += "FULLASSERTION=a.c," + std::to_string(line) + ",1,-----ZKR_ASSERT_TRUE(\"check " +
           std::to_string(line) + "\");\n";
  }
  return log + "FULLASSERTION=a.c,90,1,-----ZKR_ASSERT_TRUE(\"Finished test case: Large\");\n";
}

const std::vector<std::string> kContextRun = {"-infofile", "run.info",      "-resultfile",
                                              "run.log",   "-outdirectory", "out",
                                              "-tcontext", "Pkg.Run"};
const std::vector<std::string> kLargeRun = {"-infofile", "run.info",      "-resultfile",
                                            "run.log",   "-outdirectory", "out",
                                            "-tcase",    "Pkg.Run.Large"};

// A folder with the inputs of the runs above and the output folder "out".
class Workspace {
 public:
  Workspace() {
    dir_.write("run.info", "TESTCASE Pkg.Run.Small 1\nTESTCASE Pkg.Run.Large 2\n");
    dir_.write("run.log", runLog());
    fs::create_directories(out());
  }
  std::string path(const std::string& name) const { return dir_.file(name); }
  std::string out() const { return dir_.file("out"); }
  void writeVerificationFiles() const {
    dir_.write("out/Small.ver", "CODE_TEST\n");
    dir_.write("out/Large.ver", "CODE_TEST\n");
  }

  // Runs the program; with a `sizeLimit` its files may grow to that many
  // bytes (the limit is set by prlimit, which then starts the program).
  Outcome run(const std::vector<std::string>& args, long sizeLimit = 0,
              const std::string& envPath = "/usr/bin:/bin") const {
    if (sizeLimit <= 0) return test::runProgram(QENDOR_BINARY, args, dir_.path(), envPath);
    std::vector<std::string> limited = {"--fsize=" + std::to_string(sizeLimit), QENDOR_BINARY};
    limited.insert(limited.end(), args.begin(), args.end());
    return test::runProgram("/usr/bin/prlimit", limited, dir_.path(), envPath);
  }

 private:
  test::TempDir dir_;
};

// A report's text with the time of the run masked.
std::string masked(const std::string& path) {
  static const std::regex time("[A-Z][a-z][a-z] [A-Z][a-z][a-z] [0-9][0-9] [0-9:]{8} [0-9]{4}");
  return std::regex_replace(test::readFile(path), time, "<time>");
}

// The reports of a run on a healthy disk: name, size and masked text.
struct Reference {
  std::map<std::string, long> size;
  std::map<std::string, std::string> text;
};

Reference healthyRun(const std::vector<std::string>& args) {
  Workspace w;
  w.writeVerificationFiles();
  const Outcome o = w.run(args);
  EXPECT_EQ(o.err, "");
  Reference reference;
  for (const std::string& name : test::filesIn(w.out())) {
    if (name.size() > 4 && name.compare(name.size() - 4, 4, ".ver") == 0) continue;
    reference.size[name] = static_cast<long>(fs::file_size(w.path("out/" + name)));
    reference.text[name] = masked(w.path("out/" + name));
  }
  return reference;
}

// Every report left in `dir` is the whole report of the healthy run.
void expectWholeReports(const std::string& dir, const Reference& reference,
                        const std::string& label) {
  for (const std::string& name : test::filesIn(dir)) {
    const auto whole = reference.text.find(name);
    if (whole == reference.text.end()) continue;
    if (!fs::is_regular_file(dir + "/" + name)) continue;
    EXPECT_EQ(masked(dir + "/" + name), whole->second) << label << ": " << name;
  }
}

// The stderr line of a lost report.
std::string lost(const std::string& name, const std::string& reason) {
  return "qendor: out/" + name + ": " + reason + "\n";
}

TEST(WriteFaults, FileSizeLimitFallsInsideEachReport) {
  const Reference reference = healthyRun(kContextRun);
  ASSERT_EQ(reference.size.size(), 6u);
  for (size_t i = 1; i < 6; ++i) {
    ASSERT_LT(reference.size.at(kBySize[i - 1]), reference.size.at(kBySize[i])) << kBySize[i];
  }
  // A limit between the size of the next smaller report and that of `name`.
  auto inside = [&](const char* name) {
    const size_t at = static_cast<size_t>(
        std::find(std::begin(kBySize), std::end(kBySize), std::string(name)) - std::begin(kBySize));
    const long before = at == 0 ? 0 : reference.size.at(kBySize[at - 1]);
    return (before + reference.size.at(name)) / 2;
  };
  const std::string tooLarge = "File too large";
  struct Case {
    const char* where;
    long limit;
    int status;
    std::string err;
    Files files;
  };
  const Case cases[] = {
      {"the first test case's document",
       inside("Small.xml"),
       25,
       lost("Small.xml", tooLarge) + lost("Large.xml", tooLarge) + lost("Run.xml", tooLarge),
       {"Large.ver", "Small.ver"}},
      {"a later test case's document",
       inside("Large.xml"),
       25,
       lost("Small.html", tooLarge) + lost("Large.xml", tooLarge) + lost("Run.xml", tooLarge),
       {"Large.ver", "Small.ver", "Small.xml"}},
      {"the context's document",
       inside("Run.xml"),
       25,
       lost("Small.html", tooLarge) + lost("Large.html", tooLarge) + lost("Run.xml", tooLarge),
       {"Large.ver", "Large.xml", "Small.ver", "Small.xml"}},
      {"a test case's HTML file",
       inside("Large.html"),
       25,
       lost("Large.html", tooLarge) + lost("Run.html", tooLarge),
       {"Large.ver", "Large.xml", "Run.xml", "Small.html", "Small.ver", "Small.xml"}},
      {"the context's HTML file",
       inside("Run.html"),
       25,
       lost("Run.html", tooLarge),
       {"Large.html", "Large.ver", "Large.xml", "Run.xml", "Small.html", "Small.ver", "Small.xml"}},
      {"no file",
       reference.size.at("Run.html"),
       0,
       "",
       {"Large.html", "Large.ver", "Large.xml", "Run.html", "Run.xml", "Small.html", "Small.ver",
        "Small.xml"}},
  };
  for (const Case& c : cases) {
    Workspace w;
    w.writeVerificationFiles();
    const Outcome o = w.run(kContextRun, c.limit);
    EXPECT_EQ(o.status, c.status) << c.where;
    EXPECT_EQ(o.out, "") << c.where;
    EXPECT_EQ(o.err, c.err) << c.where;
    EXPECT_EQ(test::filesIn(w.out()), c.files) << c.where;
    expectWholeReports(w.out(), reference, c.where);
  }
}

TEST(WriteFaults, FileSizeLimitInASingleTestCaseRun) {
  const Reference reference = healthyRun(kLargeRun);
  ASSERT_LT(reference.size.at("Large.xml"), reference.size.at("Large.html"));
  struct Case {
    const char* lostFile;  // the limit is one byte short of it
    Files files;
  };
  const Case cases[] = {{"Large.xml", {"Large.ver", "Small.ver"}},
                        {"Large.html", {"Large.ver", "Large.xml", "Small.ver"}}};
  for (const Case& c : cases) {
    Workspace w;
    w.writeVerificationFiles();
    const Outcome o = w.run(kLargeRun, reference.size.at(c.lostFile) - 1);
    EXPECT_EQ(o.status, 25) << c.lostFile;
    EXPECT_EQ(o.out, "") << c.lostFile;
    EXPECT_EQ(o.err, lost(c.lostFile, "File too large"));
    EXPECT_EQ(test::filesIn(w.out()), c.files) << c.lostFile;
    expectWholeReports(w.out(), reference, c.lostFile);
  }
}

// A stale report of an earlier run goes with the document that was lost.
TEST(WriteFaults, StaleHtmlGoesWithALostDocument) {
  const Reference reference = healthyRun(kLargeRun);
  Workspace w;
  w.writeVerificationFiles();
  std::ofstream(w.path("out/Large.html")) << "stale";
  const Outcome o = w.run(kLargeRun, reference.size.at("Large.xml") - 1);
  EXPECT_EQ(o.status, 25);
  EXPECT_EQ(o.err, lost("Large.xml", "File too large"));
  EXPECT_EQ(test::filesIn(w.out()), (Files{"Large.ver", "Small.ver"}));
}

// A folder where a report should go: only the context's own report decides
// the status.
TEST(WriteFaults, FolderInAReportsPlace) {
  const Reference reference = healthyRun(kContextRun);
  struct Case {
    const char* folder;
    int status;
    Files files;
  };
  const Case cases[] = {
      {"Small.xml",
       0,
       {"Large.html", "Large.ver", "Large.xml", "Run.html", "Run.xml", "Small.ver", "Small.xml"}},
      {"Small.html",
       0,
       {"Large.html", "Large.ver", "Large.xml", "Run.html", "Run.xml", "Small.html", "Small.ver",
        "Small.xml"}},
      {"Run.xml",
       25,
       {"Large.html", "Large.ver", "Large.xml", "Run.xml", "Small.html", "Small.ver", "Small.xml"}},
      {"Run.html",
       25,
       {"Large.html", "Large.ver", "Large.xml", "Run.html", "Run.xml", "Small.html", "Small.ver",
        "Small.xml"}},
  };
  for (const Case& c : cases) {
    Workspace w;
    w.writeVerificationFiles();
    fs::create_directories(w.path("out/" + std::string(c.folder)));
    const Outcome o = w.run(kContextRun);
    EXPECT_EQ(o.status, c.status) << c.folder;
    EXPECT_EQ(o.out, "") << c.folder;
    EXPECT_EQ(o.err, lost(c.folder, "Is a directory")) << c.folder;
    EXPECT_EQ(test::filesIn(w.out()), c.files) << c.folder;
    EXPECT_TRUE(fs::is_directory(w.path("out/" + std::string(c.folder)))) << c.folder;
    expectWholeReports(w.out(), reference, c.folder);
  }
}

// ---------------------------------------------------------------------------
// Read-only folders and full file systems. As root, permission bits do not
// stop a write: the folder is made read-only by a mount then, and such tests
// are skipped, with the reason, where mounting is not permitted.

// Why no mount can be made here; empty when one can.
std::string mountRefusal() {
  if (geteuid() != 0) return "mounting needs root";
  test::TempDir probe;
  if (mount("tmpfs", probe.path().c_str(), "tmpfs", 0, "size=64k") != 0) {
    return std::string("mounting is not permitted here: ") + std::strerror(errno);
  }
  umount2(probe.path().c_str(), MNT_DETACH);
  return "";
}

// Undoes a mount on `path` when it goes.
class Mounted {
 public:
  explicit Mounted(std::string path) : path_(std::move(path)) {}
  ~Mounted() { umount2(path_.c_str(), MNT_DETACH); }
  Mounted(const Mounted&) = delete;
  Mounted& operator=(const Mounted&) = delete;

 private:
  std::string path_;
};

// Makes `dir` writable again when it goes, after chmod made it read-only.
class Writable {
 public:
  explicit Writable(std::string dir) : dir_(std::move(dir)) {}
  ~Writable() { chmod(dir_.c_str(), 0755); }
  Writable(const Writable&) = delete;
  Writable& operator=(const Writable&) = delete;

 private:
  std::string dir_;
};

// The shell command that makes `dir` read-only, and the reason a write there
// then fails with. As root `dir` must be a mount point (see Mounted); else
// the files in it lose their write permission too, since a file may be
// emptied and written in a folder that cannot be written.
std::string readOnlyCommand(const std::string& dir) {
  return geteuid() == 0 ? "mount -o remount,bind,ro '" + dir + "'"
                        : "chmod a-w '" + dir + "' '" + dir + "'/*";
}
std::string readOnlyReason() {
  return geteuid() == 0 ? "Read-only file system" : "Permission denied";
}

TEST(WriteFaults, FolderMadeReadOnlyAfterTheFirstReport) {
  const std::string refusal = geteuid() == 0 ? mountRefusal() : "";
  if (!refusal.empty()) GTEST_SKIP() << refusal;
  const Reference reference = healthyRun(kLargeRun);
  Workspace w;
  w.writeVerificationFiles();
  Writable writable(w.out());
  std::unique_ptr<Mounted> bound;
  if (geteuid() == 0) {
    ASSERT_EQ(mount(w.out().c_str(), w.out().c_str(), nullptr, MS_BIND, nullptr), 0)
        << std::strerror(errno);
    bound = std::make_unique<Mounted>(w.out());
  }
  // The XML report is written; the folder turns read-only before xsltproc
  // writes the HTML report.
  fs::create_directories(w.path("bin"));
  const std::string fake = w.path("bin/xsltproc");
  std::ofstream(fake) << "#!/bin/sh\n"
                      << readOnlyCommand(w.out()) << "\nexec /usr/bin/xsltproc \"$@\"\n";
  chmod(fake.c_str(), 0755);
  const Outcome o = w.run(kLargeRun, 0, w.path("bin") + ":/usr/bin:/bin:/usr/sbin:/sbin");
  EXPECT_EQ(o.status, 25);
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err, lost("Large.html", readOnlyReason()));
  EXPECT_EQ(test::filesIn(w.out()), (Files{"Large.ver", "Large.xml", "Small.ver"}));
  expectWholeReports(w.out(), reference, "read-only");
}

TEST(WriteFaults, ReadOnlyFolderKeepsTheEarlierReports) {
  const std::string refusal = geteuid() == 0 ? mountRefusal() : "";
  if (!refusal.empty()) GTEST_SKIP() << refusal;
  Workspace w;
  w.writeVerificationFiles();
  ASSERT_EQ(w.run(kContextRun).status, 0);
  std::map<std::string, std::string> before;
  for (const std::string& name : test::filesIn(w.out())) {
    before[name] = test::readFile(w.path("out/" + name));
  }
  Writable writable(w.out());
  std::unique_ptr<Mounted> bound;
  if (geteuid() == 0) {
    ASSERT_EQ(mount(w.out().c_str(), w.out().c_str(), nullptr, MS_BIND, nullptr), 0);
    bound = std::make_unique<Mounted>(w.out());
  }
  ASSERT_EQ(std::system(readOnlyCommand(w.out()).c_str()), 0);
  const Outcome o = w.run(kContextRun);
  EXPECT_EQ(o.status, 25);
  EXPECT_EQ(o.out, "");
  const std::string reason = readOnlyReason();
  EXPECT_EQ(o.err, lost("Small.xml", reason) + lost("Large.xml", reason) + lost("Run.xml", reason));
  ASSERT_EQ(before.size(), 8u);
  for (const auto& [name, text] : before) {
    EXPECT_EQ(test::readFile(w.path("out/" + name)), text) << name;
  }
  EXPECT_EQ(test::filesIn(w.out()).size(), 8u);
}

// A workspace whose output folder is a small tmpfs holding the verification
// files and a filler file that leaves `freeBytes` free.
class FullDisk : public Workspace {
 public:
  explicit FullDisk(long freeBytes) : mounted_(out()) {
    ok_ = mount("tmpfs", out().c_str(), "tmpfs", 0, "size=1m") == 0;
    if (!ok_) return;
    writeVerificationFiles();
    struct statvfs disk;
    ok_ = statvfs(out().c_str(), &disk) == 0;
    const long available = static_cast<long>(disk.f_bavail * disk.f_bsize);
    ok_ = ok_ && available >= freeBytes;
    if (!ok_) return;
    std::ofstream(path("out/filler"))
        << std::string(static_cast<size_t>(available - freeBytes), 'f');
    ok_ = statvfs(out().c_str(), &disk) == 0 &&
          static_cast<long>(disk.f_bavail * disk.f_bsize) == freeBytes;
  }
  bool ok() const { return ok_; }

 private:
  Mounted mounted_;
  bool ok_ = false;
};

// Bytes for the pages that `first` and `second` of `reference` take on a
// tmpfs, less one page: room for one of them but not for both.
long roomForOneOf(const Reference& reference, const char* first, const char* second) {
  const long page = sysconf(_SC_PAGESIZE);
  long pages = -1;
  for (const char* name : {first, second}) pages += (reference.size.at(name) + page - 1) / page;
  return pages * page;
}

TEST(WriteFaults, FullTmpfs) {
  const std::string refusal = mountRefusal();
  if (!refusal.empty()) GTEST_SKIP() << refusal;
  const std::string noSpace = "No space left on device";
  {
    // No room at all: no document can be written.
    FullDisk w(0);
    ASSERT_TRUE(w.ok());
    const Outcome o = w.run(kContextRun);
    EXPECT_EQ(o.status, 25);
    EXPECT_EQ(o.out, "");
    EXPECT_EQ(o.err,
              lost("Small.xml", noSpace) + lost("Large.xml", noSpace) + lost("Run.xml", noSpace));
    EXPECT_EQ(test::filesIn(w.out()), (Files{"Large.ver", "Small.ver", "filler"}));
  }
  {
    // Room for the XML report of a single test case, not for its HTML.
    const Reference single = healthyRun(kLargeRun);
    FullDisk w(roomForOneOf(single, "Large.xml", "Large.html"));
    ASSERT_TRUE(w.ok());
    const Outcome o = w.run(kLargeRun);
    EXPECT_EQ(o.status, 25);
    EXPECT_EQ(o.err, lost("Large.html", noSpace));
    EXPECT_EQ(test::filesIn(w.out()), (Files{"Large.ver", "Large.xml", "Small.ver", "filler"}));
    expectWholeReports(w.out(), single, "tmpfs, single");
  }
  {
    // Too little room for the context's two reports together: which member
    // reports fit depends on how the renders overlap the writing, but every
    // file left is whole and every lost one is told, in the order of a run
    // that writes them one after the other.
    const Reference context = healthyRun(kContextRun);
    FullDisk w(roomForOneOf(context, "Run.xml", "Run.html"));
    ASSERT_TRUE(w.ok());
    const Outcome o = w.run(kContextRun);
    EXPECT_EQ(o.status, 25);
    EXPECT_EQ(o.out, "");
    const Files left = test::filesIn(w.out());
    auto has = [&](const std::string& name) {
      return std::find(left.begin(), left.end(), name) != left.end();
    };
    std::string expected;
    for (const std::string name : kReports) {
      const std::string xml = name.substr(0, name.find('.')) + ".xml";
      if (!has(name) && (name == xml || has(xml))) expected += lost(name, noSpace);
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(o.err, expected);
    expectWholeReports(w.out(), context, "tmpfs, context");
  }
}

}  // namespace
}  // namespace qendor
