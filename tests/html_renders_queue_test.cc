// Renders in the background: slots, order, waiting for a path. The fake
// xsltproc runs only as far as the test lets it, so each order below is the
// only one the queue allows.
#include "report/html_renders.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/render_fixture.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

TEST_F(HtmlRendersTest, RunsOverlapUpToTheSlotsAndFinishInOrder) {
  // Each run waits for the start of the next: two run at once, and the
  // third can only take the first's slot.
  fake_.holdUntil("w1.xml", "start f2.xml");
  fake_.holdUntil("f2.xml", "start w3.xml");
  fake_.holdUntil("w3.xml", "start f4.xml");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "w1");
    queue(renders, "f2");
    queue(renders, "w3");
    queue(renders, "f4");
  }
  const std::string err = testing::internal::GetCapturedStderr();
  const std::string log = fake_.log();
  EXPECT_EQ(test::overlapIn(log), 2u) << log;
  EXPECT_LT(log.find("end w1.xml"), log.find("start w3.xml")) << log;
  EXPECT_LT(log.find("end f2.xml"), log.find("start f4.xml")) << log;
  // Everything on standard error stands in the order of the starts.
  EXPECT_EQ(err, "err w1.xml\nerr f2.xml\nqendor: HTML report " + dir_.file("f2.html") +
                     " not written: xsltproc failed\nerr w3.xml\nerr f4.xml\n"
                     "qendor: HTML report " +
                     dir_.file("f4.html") + " not written: xsltproc failed\n");
  EXPECT_EQ(test::readFile(dir_.file("w3.html")), "w3.xml");
  EXPECT_FALSE(test::fileExists(dir_.file("f2.html")));
}

// How many renders are not done, and a wait that tells each end it sees.
TEST_F(HtmlRendersTest, UnfinishedRendersAndTheWaitHook) {
  fake_.hold("h.xml");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    std::vector<size_t> seen;
    renders.setWaitHook([&] { seen.push_back(renders.unfinished()); });
    EXPECT_EQ(renders.unfinished(), 0u);
    queue(renders, "h");
    queue(renders, "q");
    queue(renders, "r");
    // One slot: h runs, held; q and r wait for it.
    EXPECT_EQ(renders.unfinished(), 3u);
    fake_.release("h.xml");
    renders.finishAll();
    EXPECT_EQ(renders.unfinished(), 0u);
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 0u);
    for (size_t i = 1; i < seen.size(); ++i) EXPECT_LT(seen[i], seen[i - 1]);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err h.xml\nerr q.xml\nerr r.xml\n");
}

TEST_F(HtmlRendersTest, ARunOfTheSameFilesWaitsForTheEarlierOne) {
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "a");
    queue(renders, "a");
    renders.start(dir_.file("b.xml"), dir_.file("a.html"));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err a.xml\nerr a.xml\nerr b.xml\n");
  EXPECT_EQ(fake_.log(),
            "start a.xml\nend a.xml\nstart a.xml\nend a.xml\nstart b.xml\nend b.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "b.xml");
}

TEST_F(HtmlRendersTest, WaitForPathFinishesThatRunAndTheOlderOnes) {
  fake_.hold("s.xml");
  testing::internal::CaptureStderr();
  HtmlRenders renders(3);
  queue(renders, "a");
  queue(renders, "b");
  queue(renders, "s");
  renders.waitForPath(dir_.file("b.html"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err a.xml\nerr b.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("b.html")), "b.xml");
  // The third is still held: waiting for a path nobody renders waits for
  // nothing.
  renders.waitForPath(dir_.file("nothing.xml"));
  EXPECT_FALSE(test::fileExists(dir_.file("s.html")));
  fake_.release("s.xml");
  testing::internal::CaptureStderr();
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err s.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("s.html")), "s.xml");
}

TEST_F(HtmlRendersTest, QueuedWithoutWaitingForASlot) {
  fake_.hold("g.xml");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    queue(renders, "g");
    queue(renders, "b");
    // Both calls came back while the first render is held; the second
    // waits for the slot.
    fake_.waitFor("start g.xml");
    EXPECT_EQ(fake_.log(), "start g.xml\n");
    fake_.release("g.xml");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err g.xml\nerr b.xml\n");
  EXPECT_EQ(fake_.log(), "start g.xml\nend g.xml\nstart b.xml\nend b.xml\n");
}

TEST_F(HtmlRendersTest, TheLargestWaitingReportGoesFirstAndIsReportedInTurn) {
  dir_.write("a.xml", std::string(10, 'a'));
  dir_.write("c.xml", std::string(1000, 'c'));
  dir_.write("d.xml", std::string(10, 'd'));
  dir_.write("f.xml", std::string(1000, 'f'));
  fake_.hold("g.xml");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    queue(renders, "g");
    queue(renders, "a");
    queue(renders, "c");
    queue(renders, "d");
    queue(renders, "f");
    fake_.release("g.xml");
  }
  // Of equal sizes the earlier goes first.
  EXPECT_EQ(fake_.log(),
            "start g.xml\nend g.xml\nstart c.xml\nend c.xml\nstart f.xml\nend f.xml\n"
            "start a.xml\nend a.xml\nstart d.xml\nend d.xml\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "err g.xml\nerr a.xml\nerr c.xml\nerr d.xml\nerr f.xml\nqendor: HTML report " +
                dir_.file("f.html") + " not written: xsltproc failed\n");
}

TEST_F(HtmlRendersTest, WaitingForAPathRunsTheWaitingRendersBeforeIt) {
  dir_.write("big.xml", std::string(1000, 'b'));
  fake_.hold("g.xml");
  testing::internal::CaptureStderr();
  HtmlRenders renders(1);
  queue(renders, "g");
  queue(renders, "a");
  queue(renders, "big");
  fake_.release("g.xml");
  renders.waitForPath(dir_.file("a.html"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err g.xml\nerr a.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "a.xml");
  testing::internal::CaptureStderr();
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err big.xml\n");
  EXPECT_EQ(fake_.log(),
            "start g.xml\nend g.xml\nstart a.xml\nend a.xml\nstart big.xml\nend big.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("big.html")), "big.xml");
}

TEST_F(HtmlRendersTest, MissingXsltprocIsToldOnceWithTheCount) {
  hideXsltproc();
  const std::string stale = dir_.write("b.html", "stale");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "a");
    renders.start(dir_.file("b.xml"), stale);
    renders.finishAll();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    renders.tellXsltprocNotFound();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qendor: xsltproc not found: 2 HTML reports not written\n");
    // Told once: the count starts afresh, and the destructor has nothing to add.
    testing::internal::CaptureStderr();
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_FALSE(test::fileExists(stale));
}

}  // namespace
}  // namespace qendor
