#include "report/index_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/run_settings.h"
#include "tests/index_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// The index of a folder of two contexts, rendered with the stylesheets of
// the build folder.
class IndexFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    run().programDirectory = std::string(QENDOR_BINARY_DIR) + "/";
    dir_.write("Cart.xml", test::contextDocument("Cart", "PASSED", "PP"));
    dir_.write("Pay.xml", test::contextDocument("Pay", "FAILED", "PF"));
  }
  void TearDown() override { resetRun(); }

  bool rewrite(const std::string& directory, HtmlRenderer renderer) {
    testing::internal::CaptureStderr();
    const bool written = rewriteIndex(directory, renderer);
    stderr_ = testing::internal::GetCapturedStderr();
    return written;
  }

  test::TempDir dir_;
  std::string stderr_;
};

TEST_F(IndexFileTest, WritesTheIndexAndItsPage) {
  ASSERT_TRUE(rewrite(dir_.path(), HtmlRenderer::kBuiltin));
  EXPECT_EQ(stderr_, "");
  EXPECT_EQ(test::filesIn(dir_.path()),
            (std::vector<std::string>{"Cart.xml", "Pay.xml", "index.html", "index.xml",
                                      "index.xml.lock"}));
  const std::string xml = test::readFile(dir_.file("index.xml"));
  EXPECT_LT(xml.find("file=\"Pay.xml\""), xml.find("file=\"Cart.xml\""));
  const std::string html = test::readFile(dir_.file("index.html"));
  EXPECT_NE(html.find("<html lang=\"en\">"), std::string::npos);
  EXPECT_NE(html.find("1 of 2 test contexts did not pass"), std::string::npos);
  EXPECT_NE(html.find("<a class=\"name\" href=\"Pay.html\">Pay</a>"), std::string::npos);
}

TEST_F(IndexFileTest, BothRenderersWriteTheSameBytesInEveryLanguage) {
  for (int language : {kEnu, kChs, kCht, kKor, kJpn}) {
    run().reportLanguage = language;
    ASSERT_TRUE(rewrite(dir_.path(), HtmlRenderer::kXsltproc)) << stderr_;
    const std::string byXsltproc = test::readFile(dir_.file("index.html"));
    ASSERT_TRUE(rewrite(dir_.path(), HtmlRenderer::kBuiltin)) << stderr_;
    EXPECT_EQ(test::readFile(dir_.file("index.html")), byXsltproc) << language;
    EXPECT_GT(byXsltproc.size(), 1000u);
  }
}

TEST_F(IndexFileTest, ARewriteSeesTheFolderAsItIsNow) {
  ASSERT_TRUE(rewrite(dir_.path(), HtmlRenderer::kBuiltin));
  dir_.write("Ship.xml", test::contextDocument("Ship", "ERROR", "E"));
  ASSERT_TRUE(rewrite(dir_.path(), HtmlRenderer::kBuiltin));
  const std::string xml = test::readFile(dir_.file("index.xml"));
  EXPECT_NE(xml.find("file=\"Ship.xml\""), std::string::npos) << xml;
}

TEST_F(IndexFileTest, AFolderThatCannotBeWrittenIsOneLine) {
  const std::string missing = dir_.file("missing");
  EXPECT_FALSE(rewrite(missing, HtmlRenderer::kBuiltin));
  EXPECT_EQ(stderr_, "qendor: index " + missing +
                         "/index.xml not written: its lock file cannot be created\n");
}

TEST_F(IndexFileTest, AFolderInTheIndexsPlaceIsOneLine) {
  dir_.write("index.xml/x", "");
  EXPECT_FALSE(rewrite(dir_.path(), HtmlRenderer::kBuiltin));
  EXPECT_EQ(stderr_, "qendor: index " + dir_.file("index.xml") + " not written\n");
  EXPECT_FALSE(test::fileExists(dir_.file("index.html")));
}

}  // namespace
}  // namespace qendor
