// The earlier runs in the HTML reports: the sample context with a History
// element rendered by each language's stylesheet.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

std::string render(const std::string& language, const std::string& sample) {
  test::TempDir dir;
  const std::string html = dir.file("page.html");
  const test::ProgramOutcome o = test::runProgram(
      "/usr/bin/xsltproc",
      {"-o", html, std::string(QENDOR_SOURCE_DIR) + "/stylesheets/TestResult2" + language + ".xslt",
       std::string(QENDOR_SOURCE_DIR) + "/tests/stylesheet_samples/" + sample},
      dir.path());
  EXPECT_EQ(o.status, 0) << language << " " << o.err;
  EXPECT_EQ(o.err, "") << language;
  return test::readFile(html);
}

bool has(const std::string& html, const std::string& piece) {
  return html.find(piece) != std::string::npos;
}

struct Words {
  const char* language;
  std::vector<const char*> labels;  // new, fixed, flaky, still failing
  const char* trend;
  const char* strip;
};

TEST(HistoryStylesheet, EveryLanguageShowsStripsLabelsTrendAndNewFailuresFirst) {
  const Words words[] = {
      {"ENU",
       {"New failure", "Fixed", "Flaky", "Still failing"},
       "Trend of the last runs",
       "Last runs, oldest first"},
      {"CHS",
       {"新失败", "已修复", "不稳定", "仍然失败"},
       "最近运行的趋势",
       "最近的运行（从旧到新）"},
      {"CHT",
       {"新失敗", "已修復", "不穩定", "仍然失敗"},
       "最近執行的趨勢",
       "最近的執行（由舊到新）"},
      {"KOR",
       {"새 실패", "수정됨", "불안정", "계속 실패"},
       "최근 실행 추이",
       "최근 실행(오래된 순)"},
      {"JPN",
       {"新しい失敗", "修正済み", "不安定", "失敗が継続"},
       "直近の実行の推移",
       "直近の実行（古い順）"},
  };
  for (const Words& w : words) {
    const std::string html = render(w.language, "context_history.xml");
    const std::string& l = w.language;
    EXPECT_TRUE(has(html, std::string("<span class=\"hist-label hl-new\">") + w.labels[0])) << l;
    EXPECT_TRUE(has(html, std::string("<span class=\"hist-label hl-fixed\">") + w.labels[1])) << l;
    EXPECT_TRUE(has(html, std::string("<span class=\"hist-label hl-flaky\">") + w.labels[2])) << l;
    EXPECT_TRUE(
        has(html, std::string("<span class=\"hist-label hl-still-failing\">") + w.labels[3]))
        << l;
    EXPECT_TRUE(has(html, std::string("<h3 id=\"hist-trend-title\">") + w.trend)) << l;
    EXPECT_TRUE(has(html, std::string("<span class=\"vh\">") + w.strip)) << l;
    // The strip of Bounce: run 1 failed, run 2 passed, this run failed.
    EXPECT_TRUE(has(html,
                    "<span class=\"hist-strip\" aria-hidden=\"true\"><span class=\"hm st-fail\" "
                    "title=\""))
        << l;
    EXPECT_TRUE(has(html, "<span class=\"hm st-pass now\" title=\"")) << l;
    // Hang did not terminate in this run and in run 2 and ended in ERROR in
    // run 1: each mark shows the document's status, ERROR.
    EXPECT_TRUE(has(html, "<span class=\"hm st-error\" title=\"")) << l;
    EXPECT_TRUE(has(html, "<span class=\"hm st-error now\" title=\"")) << l;
    EXPECT_FALSE(has(html, "hm st-nt")) << l;
    // Three runs, oldest first, passed above the line and the others below
    // it, each bar with its count and each run with its number as text.
    EXPECT_TRUE(has(html,
                    "<span class=\"hb\"><span class=\"hb-up\"><span class=\"hb-n\">0</span>"
                    "<span class=\"hb-bar st-pass\" style=\"height:0%\"></span></span>"
                    "<span class=\"hb-down\"><span class=\"hb-bar st-fail\" "
                    "style=\"height:75%\"></span><span class=\"hb-n\">3</span></span>"
                    "<span class=\"hb-run\">#1</span></span>"))
        << l;
    EXPECT_TRUE(has(html,
                    "<span class=\"hb now\"><span class=\"hb-up\"><span class=\"hb-n\">1</span>"
                    "<span class=\"hb-bar st-pass\" style=\"height:25%\"></span></span>"))
        << l;
    // The banner counts what changed, each count a link to the first of its
    // kind; the first problem is the new failure.
    EXPECT_TRUE(has(html,
                    "<a id=\"hist-first-new\" class=\"hist-label hl-new\" "
                    "href=\"#tc-Broken\">"))
        << l;
    EXPECT_TRUE(has(html,
                    "<a id=\"hist-first-fixed\" class=\"hist-label hl-fixed\" "
                    "href=\"#tc-Mended\">"))
        << l;
    EXPECT_TRUE(has(html,
                    "<a id=\"hist-first-flaky\" class=\"hist-label hl-flaky\" "
                    "href=\"#tc-Bounce\">"))
        << l;
    EXPECT_TRUE(has(html, "<a id=\"first-problem\" href=\"#tc-Broken\">")) << l;
    // The Problems table lists the new failure Broken first, then the rest
    // in execution order, each with its label.
    const size_t table = html.find("<table class=\"grid problems\">");
    ASSERT_NE(table, std::string::npos) << l;
    const size_t broken = html.find("href=\"#tc-Broken\"", table);
    const size_t bounce = html.find("href=\"#tc-Bounce\"", table);
    const size_t hang = html.find("href=\"#tc-Hang\"", table);
    EXPECT_LT(broken, bounce) << l;
    EXPECT_LT(bounce, hang) << l;
    EXPECT_TRUE(has(html, std::string("href=\"#tc-Broken\">Broken</a> <span class=\"hist-label "
                                      "hl-new\">") +
                              w.labels[0]))
        << l;
    EXPECT_FALSE(has(html, "<span class=\"hist-note\">")) << l;
  }
  const std::string english = render("ENU", "context_history.xml");
  EXPECT_TRUE(has(english,
                  "<span class=\"vh\">Last runs, oldest first: Run 1: Failed; Run 2: Passed; This "
                  "run: Failed. </span>"));
  // Every time in one form: the history's UTC times like the header's.
  EXPECT_TRUE(has(english, "title=\"Run 2 (Fri Nov 21 09:00:00 2025 UTC): Passed\""));
  EXPECT_TRUE(has(english, "<td>Sat Nov 22 10:15:42 2025</td>"));
  EXPECT_TRUE(has(english, "<td>Thu Nov 20 09:00:00 2025 UTC</td>"));
  EXPECT_TRUE(
      has(render("JPN", "context_history.xml"), "<td>2025年11月21日(金) 09:00:00 UTC</td>"));
  EXPECT_TRUE(has(english,
                  "<p id=\"hist-banner\"><span class=\"vh\">Since the run before: </span>"
                  "<a id=\"hist-first-new\" class=\"hist-label hl-new\" href=\"#tc-Broken\">"
                  "New failures: 1</a> <a id=\"hist-first-fixed\" class=\"hist-label "
                  "hl-fixed\" href=\"#tc-Mended\">Fixed: 1</a> <a id=\"hist-first-flaky\" "
                  "class=\"hist-label hl-flaky\" href=\"#tc-Bounce\">Flaky: 1</a></p>"));
  EXPECT_TRUE(has(english,
                  "<caption>Test cases that did not pass: new failures first, then in "
                  "execution order</caption>"));
  EXPECT_TRUE(has(english, "<caption>Newest first</caption>"));
  EXPECT_TRUE(has(english,
                  "aria-label=\"Trend of the last runs: Run 1: Passed 0/3; Run 2: Passed 2/4; "
                  "This run: Passed 1/4\""));
}

TEST(HistoryStylesheet, WithoutHistoryNothingIsShown) {
  for (const char* language : {"ENU", "JPN"}) {
    const std::string html = render(language, "context.xml");
    EXPECT_FALSE(has(html, "<span class=\"hist")) << language;
    EXPECT_FALSE(has(html, "class=\"hist-chart\"")) << language;
    EXPECT_FALSE(has(html, "id=\"hist-banner\"")) << language;
    EXPECT_FALSE(has(html, "<span class=\"hm ")) << language;
  }
}

}  // namespace
}  // namespace qendor
