// Fault runs on folders made read-only and on full file systems (see
// write_faults_test.cc for what every fault run must show).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/write_faults_support.h"

namespace qendor {
namespace {

class WriteFaultsMounted : public ::testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Renderers, WriteFaultsMounted, ::testing::ValuesIn(kRenderers),
                         rendererName);

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

// Runs the single test case with a fake xsltproc that makes the output
// folder read-only and then runs the real one.
Outcome readOnlyBeforeXsltproc(const Workspace& w) {
  fs::create_directories(w.path("bin"));
  const std::string fake = w.path("bin/xsltproc");
  std::ofstream(fake) << "#!/bin/sh\n"
                      << readOnlyCommand(w.out()) << "\nexec /usr/bin/xsltproc \"$@\"\n";
  chmod(fake.c_str(), 0755);
  return w.run(kLargeRun, 0, w.path("bin") + ":/usr/bin:/bin:/usr/sbin:/sbin");
}

// Runs the single test case with the builtin renderer, from a copy of the
// program beside a stylesheet that reads the FIFO "gate" before it renders
// the page of the real one; the folder is made read-only while the render
// waits for it.
Outcome readOnlyWhileBuiltinRenders(const Workspace& w) {
  fs::copy_file(QENDOR_BINARY, w.path("qendor"));
  for (const auto& entry : fs::directory_iterator(QENDOR_BINARY_DIR)) {
    if (entry.path().extension() != ".xslt") continue;
    const std::string name = entry.path().filename().string();
    fs::copy_file(entry.path(), w.path(name == "TestResult2ENU.xslt" ? "Shown.xslt" : name));
  }
  std::ofstream(w.path("TestResult2ENU.xslt"))
      << "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
         "<xsl:import href=\"Shown.xslt\"/><xsl:template match=\"/\">"
         "<xsl:if test=\"document('gate')\"/><xsl:apply-imports/></xsl:template>"
         "</xsl:stylesheet>";
  mkfifo(w.path("gate").c_str(), 0600);
  test::RunningProgram running = test::startProgram("./qendor", w.rendered(kLargeRun), w.path(""),
                                                    "/usr/bin:/bin:/usr/sbin:/sbin");
  // Opened once the render has opened it.
  std::ofstream gate(w.path("gate"));
  EXPECT_EQ(std::system(readOnlyCommand(w.out()).c_str()), 0);
  gate << "<g/>";
  gate.close();
  return running.finish();
}

TEST_P(WriteFaultsMounted, FolderMadeReadOnlyAfterTheFirstReport) {
  const std::string refusal = geteuid() == 0 ? mountRefusal() : "";
  if (!refusal.empty()) GTEST_SKIP() << refusal;
  const Reference reference = healthyRun(kLargeRun, GetParam());
  Workspace w(GetParam());
  w.writeVerificationFiles();
  Writable writable(w.out());
  std::unique_ptr<Mounted> bound;
  if (geteuid() == 0) {
    ASSERT_EQ(mount(w.out().c_str(), w.out().c_str(), nullptr, MS_BIND, nullptr), 0)
        << std::strerror(errno);
    bound = std::make_unique<Mounted>(w.out());
  }
  // The XML report is written; the folder turns read-only before the HTML
  // report is: a fake xsltproc does it before it runs the real one, and
  // the builtin renderer reads a FIFO through the stylesheet first, which
  // holds it until the test has done it.
  const Outcome o = std::string(GetParam()) == "builtin" ? readOnlyWhileBuiltinRenders(w)
                                                         : readOnlyBeforeXsltproc(w);
  EXPECT_EQ(o.status, 25);
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err, lost("Large.html", readOnlyReason()));
  EXPECT_EQ(test::filesIn(w.out()), (Files{"Large.ver", "Large.xml", "Small.ver"}));
  expectWholeReports(w.out(), reference, "read-only");
}

TEST_P(WriteFaultsMounted, ReadOnlyFolderKeepsTheEarlierReports) {
  const std::string refusal = geteuid() == 0 ? mountRefusal() : "";
  if (!refusal.empty()) GTEST_SKIP() << refusal;
  Workspace w(GetParam());
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
  FullDisk(const std::string& renderer, long freeBytes) : Workspace(renderer), mounted_(out()) {
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

TEST_P(WriteFaultsMounted, FullTmpfs) {
  const std::string refusal = mountRefusal();
  if (!refusal.empty()) GTEST_SKIP() << refusal;
  const std::string noSpace = "No space left on device";
  {
    // No room at all: no document can be written.
    FullDisk w(GetParam(), 0);
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
    const Reference single = healthyRun(kLargeRun, GetParam());
    FullDisk w(GetParam(), roomForOneOf(single, "Large.xml", "Large.html"));
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
    const Reference context = healthyRun(kContextRun, GetParam());
    FullDisk w(GetParam(), roomForOneOf(context, "Run.xml", "Run.html"));
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
