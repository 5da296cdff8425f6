// Runs the built program where its reports cannot be written completely: a
// file size limit, a full file system, a read-only folder, a folder standing
// in a report's place. The program must not end by a signal, must leave no
// empty or partial report, must tell each lost file once on standard error
// and must end with 25 exactly when the run's own report is lost; standard
// output stays empty.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/write_faults_support.h"

namespace qendor {
namespace {

// Each fault run is made with each renderer.
class WriteFaults : public ::testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Renderers, WriteFaults, ::testing::ValuesIn(kRenderers), rendererName);

TEST_P(WriteFaults, FileSizeLimitFallsInsideEachReport) {
  const Reference reference = healthyRun(kContextRun, GetParam());
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
    Workspace w(GetParam());
    w.writeVerificationFiles();
    const Outcome o = w.run(kContextRun, c.limit);
    EXPECT_EQ(o.status, c.status) << c.where;
    EXPECT_EQ(o.out, "") << c.where;
    EXPECT_EQ(o.err, c.err) << c.where;
    EXPECT_EQ(test::filesIn(w.out()), c.files) << c.where;
    expectWholeReports(w.out(), reference, c.where);
  }
}

TEST_P(WriteFaults, FileSizeLimitInASingleTestCaseRun) {
  const Reference reference = healthyRun(kLargeRun, GetParam());
  ASSERT_LT(reference.size.at("Large.xml"), reference.size.at("Large.html"));
  struct Case {
    const char* lostFile;  // the limit is one byte short of it
    Files files;
  };
  const Case cases[] = {{"Large.xml", {"Large.ver", "Small.ver"}},
                        {"Large.html", {"Large.ver", "Large.xml", "Small.ver"}}};
  for (const Case& c : cases) {
    Workspace w(GetParam());
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
TEST_P(WriteFaults, StaleHtmlGoesWithALostDocument) {
  const Reference reference = healthyRun(kLargeRun, GetParam());
  Workspace w(GetParam());
  w.writeVerificationFiles();
  std::ofstream(w.path("out/Large.html")) << "stale";
  const Outcome o = w.run(kLargeRun, reference.size.at("Large.xml") - 1);
  EXPECT_EQ(o.status, 25);
  EXPECT_EQ(o.err, lost("Large.xml", "File too large"));
  EXPECT_EQ(test::filesIn(w.out()), (Files{"Large.ver", "Small.ver"}));
}

// A folder where a report should go: only the context's own report decides
// the status.
TEST_P(WriteFaults, FolderInAReportsPlace) {
  const Reference reference = healthyRun(kContextRun, GetParam());
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
    Workspace w(GetParam());
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

}  // namespace
}  // namespace qendor
