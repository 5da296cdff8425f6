// Runs the built program with "-render builtin" beside the default
// "-render xsltproc": the same statuses, output and files, and HTML equal
// byte for byte to what xsltproc makes of the same documents.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

struct Scenario {
  const char* source;  // below the source tree
  const char* info;
  const char* context;
  const char* member;        // a test case of the context
  const char* verification;  // folder of .ver files below `source`
};

const Scenario kScenarios[] = {
    {"examples", "shop.info", "Shop.Checkout", "Shop.Checkout.CartStates", "verification"},
    {"examples/short", "short.info", "Shop.Cart", "Shop.Cart.AddItem", "verification"},
    {"tests/scenarios/shop", "shop.info", "Pkg.Ctx", "Pkg.Ctx.SdPass", "out"},
    {"tests/scenarios/halfedit", "half.info", "Pkg.Half", "Pkg.Half.HalfFlow", "out"},
};

const char* const kLanguages[] = {"ENU", "CHS", "CHT", "KOR", "JPN"};

// A copy of a scenario with its verification files in "out".
class Workplace {
 public:
  explicit Workplace(const Scenario& scenario) {
    fs::copy(std::string(QENDOR_SOURCE_DIR) + "/" + scenario.source, dir_.path(),
             fs::copy_options::recursive);
    fs::create_directories(dir_.file("out"));
    if (std::string(scenario.verification) == "out") return;
    for (const auto& entry : fs::directory_iterator(dir_.file(scenario.verification))) {
      if (entry.path().extension() != ".ver") continue;
      fs::copy_file(entry.path(), dir_.file("out/" + entry.path().filename().string()),
                    fs::copy_options::overwrite_existing);
    }
  }
  std::string file(const std::string& name) const { return dir_.file(name); }

  // Runs `program` (the built one by default) here with PATH as a shell has it.
  test::ProgramOutcome run(const std::vector<std::string>& args,
                           const std::string& program = QENDOR_BINARY) const {
    return test::runProgram(program, args, dir_.path());
  }

 private:
  test::TempDir dir_;
};

std::vector<std::string> withRenderer(std::vector<std::string> args, const char* renderer) {
  args.insert(args.end(), {"-render", renderer});
  return args;
}

// The HTML files of `dir`/out that differ from what xsltproc writes for
// their documents with `sheet`; every document must have its page.
std::string pagesNotAsXsltproc(const Workplace& place, const std::string& sheet) {
  std::string differing;
  for (const std::string& name : test::filesIn(place.file("out"))) {
    if (fs::path(name).extension() != ".xml") continue;
    const std::string stem = fs::path(name).stem().string();
    const std::string page = place.file("out/" + stem + ".html");
    const std::string expected = place.file("expected.html");
    const test::ProgramOutcome o = test::runProgram(
        "/usr/bin/xsltproc", {"-o", expected, sheet, place.file("out/" + name)}, place.file(""));
    if (o.status != 0 || !test::fileExists(page) ||
        test::readFile(page) != test::readFile(expected)) {
      differing += stem + " ";
    }
  }
  return differing;
}

// Each scenario in each language, plain, explained and with a history of
// two runs: the builtin renderer's pages are xsltproc's, and everything
// else the run does is what the default run does.
TEST(RenderChoice, BuiltinWritesWhatXsltprocWrites) {
  const std::string sheets = std::string(QENDOR_BINARY_DIR) + "/TestResult2";
  for (const Scenario& scenario : kScenarios) {
    for (const char* language : kLanguages) {
      for (const char* variant : {"plain", "-explain", "-history"}) {
        const std::string label = std::string(scenario.source) + " " + language + " " + variant;
        std::vector<std::string> args = {
            "-infofile", scenario.info, "-resultfile",    "results.log", "-outdirectory",
            "out",       "-tcontext",   scenario.context, "-language",   language};
        if (std::string(variant) == "-explain") args.push_back("-explain");
        if (std::string(variant) == "-history") args.insert(args.end(), {"-history", "hist"});
        const Workplace builtin(scenario);
        const Workplace xsltproc(scenario);
        const int rounds = std::string(variant) == "-history" ? 2 : 1;
        for (int round = 0; round < rounds; ++round) {
          const test::ProgramOutcome b = builtin.run(withRenderer(args, "builtin"));
          const test::ProgramOutcome x = xsltproc.run(args);
          EXPECT_EQ(b.status, x.status) << label;
          EXPECT_EQ(b.out, x.out) << label;
          EXPECT_EQ(b.err, "") << label;
          EXPECT_EQ(x.err, "") << label;
        }
        EXPECT_EQ(test::filesIn(builtin.file("out")), test::filesIn(xsltproc.file("out"))) << label;
        EXPECT_EQ(pagesNotAsXsltproc(builtin, sheets + language + ".xslt"), "") << label;
      }
    }
  }
}

TEST(RenderChoice, SingleTestCaseRun) {
  for (const Scenario& scenario : kScenarios) {
    const std::vector<std::string> args = {"-infofile",   scenario.info,   "-resultfile",
                                           "results.log", "-outdirectory", "out",
                                           "-tcase",      scenario.member};
    const Workplace builtin(scenario);
    const Workplace xsltproc(scenario);
    const test::ProgramOutcome b = builtin.run(withRenderer(args, "builtin"));
    const test::ProgramOutcome x = xsltproc.run(withRenderer(args, "xsltproc"));
    EXPECT_EQ(b.status, x.status) << scenario.source;
    EXPECT_EQ(b.out, x.out) << scenario.source;
    EXPECT_EQ(test::filesIn(builtin.file("out")), test::filesIn(xsltproc.file("out")));
    EXPECT_EQ(pagesNotAsXsltproc(builtin, std::string(QENDOR_BINARY_DIR) + "/TestResult2ENU.xslt"),
              "")
        << scenario.source;
  }
}

// A value the option does not know leaves the default, as an unknown
// language does.
TEST(RenderChoice, UnknownRendererIsTheDefault) {
  const Scenario& shop = kScenarios[2];
  const std::vector<std::string> args = {"-infofile",     shop.info, "-resultfile", "results.log",
                                         "-outdirectory", "out",     "-tcase",      shop.member};
  const Workplace place(shop);
  // Without xsltproc the default renderer leaves no page and says so.
  const test::ProgramOutcome o =
      test::runProgram(QENDOR_BINARY, withRenderer(args, "inprocess"), place.file(""), "/none");
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.err, "qendor: xsltproc not found: 1 HTML report not written\n");
  EXPECT_FALSE(test::fileExists(place.file("out/SdPass.html")));
}

// The program beside a stylesheet of the test's making, and a context run
// of the shop scenario with each renderer.
class RunPair {
 public:
  RunPair() {
    for (Workplace* place : {&builtin_, &xsltproc_}) {
      fs::copy_file(QENDOR_BINARY, place->file("qendor"));
      for (const auto& entry : fs::directory_iterator(QENDOR_BINARY_DIR)) {
        if (entry.path().extension() != ".xslt") continue;
        fs::copy_file(entry.path(), place->file(entry.path().filename().string()));
      }
    }
  }
  // Writes the English stylesheet of both places; null removes it.
  void stylesheet(const char* text) {
    for (Workplace* place : {&builtin_, &xsltproc_}) {
      fs::remove(place->file("TestResult2ENU.xslt"));
      if (text) std::ofstream(place->file("TestResult2ENU.xslt")) << text;
    }
  }
  void folder(const std::string& name) {
    for (Workplace* place : {&builtin_, &xsltproc_}) fs::create_directories(place->file(name));
  }
  // Runs both; expects the same status, output and files, and returns the
  // status.
  int runBoth(const std::string& label) {
    const std::vector<std::string> args = {"-infofile",   "shop.info",     "-resultfile",
                                           "results.log", "-outdirectory", "out",
                                           "-tcontext",   "Pkg.Ctx"};
    const test::ProgramOutcome b = builtin_.run(withRenderer(args, "builtin"), "./qendor");
    const test::ProgramOutcome x = xsltproc_.run(args, "./qendor");
    EXPECT_EQ(b.status, x.status) << label;
    EXPECT_EQ(b.out, x.out) << label;
    EXPECT_EQ(test::filesIn(builtin_.file("out")), test::filesIn(xsltproc_.file("out"))) << label;
    builtinErr_ = b.err;
    return b.status;
  }
  const std::string& builtinErr() const { return builtinErr_; }
  std::vector<std::string> builtinFiles() const { return test::filesIn(builtin_.file("out")); }

 private:
  Workplace builtin_{kScenarios[2]};
  Workplace xsltproc_{kScenarios[2]};
  std::string builtinErr_;
};

// A stylesheet whose root template holds `body`.
std::string rootTemplate(const std::string& body) {
  return "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
         "<xsl:template match=\"/\">" +
         body + "</xsl:template></xsl:stylesheet>";
}

// A stylesheet missing, not XML, or not XSLT that compiles: no page, one
// line for each report, the verdict as it is.
TEST(BrokenRender, UnusableStylesheet) {
  const std::string noXml = rootTemplate("").substr(0, 40);
  const std::string notCompiled = rootTemplate("<xsl:value-of select=\"1 div\"/>");
  const char* const sheets[] = {nullptr, noXml.c_str(), notCompiled.c_str()};
  for (const char* sheet : sheets) {
    const std::string label = sheet ? sheet : "missing";
    RunPair pair;
    pair.stylesheet(sheet);
    EXPECT_EQ(pair.runBoth(label), 10);
    // The XML and .ver files only.
    EXPECT_EQ(pair.builtinFiles().size(), 10u) << label;
    const std::string& err = pair.builtinErr();
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 6) << label << err;
  }
}

TEST(BrokenRender, TransformationThatFailsLosesTheReport) {
  RunPair pair;
  pair.stylesheet(rootTemplate("<xsl:message terminate=\"yes\">stop</xsl:message>").c_str());
  EXPECT_EQ(pair.runBoth("terminated"), 25);
  const std::string& err = pair.builtinErr();
  EXPECT_EQ(err.substr(err.rfind("qendor: ")),
            "qendor: out/Ctx.html: the transformation failed: stop\n");
}

TEST(BrokenRender, FolderInTheHtmlReportsPlace) {
  RunPair pair;
  pair.folder("out/Ctx.html");
  EXPECT_EQ(pair.runBoth("folder"), 25);
  EXPECT_EQ(pair.builtinErr(), "qendor: out/Ctx.html: Is a directory\n");
}

}  // namespace
}  // namespace qendor
