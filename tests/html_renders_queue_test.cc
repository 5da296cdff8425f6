// Renders in the background: slots, order, waiting for a path.
#include "report/html_renders.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/render_fixture.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

TEST_F(HtmlRendersTest, RunsOverlapUpToTheSlotsAndFinishInOrder) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    EXPECT_TRUE(renders.start(dir_.file("w1.xml"), dir_.file("w1.html")));
    EXPECT_TRUE(renders.start(dir_.file("f2.xml"), dir_.file("f2.html")));
    EXPECT_TRUE(renders.start(dir_.file("w3.xml"), dir_.file("w3.html")));
    EXPECT_TRUE(renders.start(dir_.file("f4.xml"), dir_.file("f4.html")));
  }
  const std::string err = testing::internal::GetCapturedStderr();
  const std::string log = test::readFile(log_);
  EXPECT_EQ(test::overlapIn(log), 2u) << log;
  // The third starts once a slot is free: here the first's, which ends as
  // soon as the second has started.
  EXPECT_LT(log.find("end w1.xml"), log.find("start w3.xml")) << log;
  // Everything on standard error stands in the order of the starts.
  EXPECT_EQ(err, "err w1.xml\nerr f2.xml\nqendor: HTML report " + dir_.file("f2.html") +
                     " not written: xsltproc failed\nerr w3.xml\nerr f4.xml\n"
                     "qendor: HTML report " +
                     dir_.file("f4.html") + " not written: xsltproc failed\n");
  // The failed ones still wrote their files here; the others did too.
  EXPECT_EQ(test::readFile(dir_.file("w3.html")), "w3.xml");
}

TEST_F(HtmlRendersTest, ARunOfTheSameFilesWaitsForTheEarlierOne) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "a");
    queue(renders, "a");
    renders.start(dir_.file("b.xml"), dir_.file("a.html"));
  }
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(test::readFile(log_),
            "start a.xml\nend a.xml\nstart a.xml\nend a.xml\nstart b.xml\nend b.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "b.xml");
}

TEST_F(HtmlRendersTest, WaitForPathFinishesThatRunAndTheOlderOnes) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  HtmlRenders renders(3);
  queue(renders, "a");
  queue(renders, "b");
  queue(renders, "s");
  renders.waitForPath(dir_.file("b.html"));
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err, "err a.xml\nerr b.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("b.html")), "b.xml");
  renders.waitForPath(dir_.file("nothing.xml"));
  testing::internal::CaptureStderr();
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err s.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("s.html")), "s.xml");
}

TEST_F(HtmlRendersTest, QueuedWithoutWaitingForASlot) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    queue(renders, "g1");
    queue(renders, "b");
    // Both calls came back while the first render still runs.
    waitForLog("start g1.xml\n");
    EXPECT_EQ(test::readFile(log_), "start g1.xml\n");
    dir_.write("gate", "");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err g1.xml\nerr b.xml\n");
  EXPECT_EQ(test::readFile(log_), "start g1.xml\nend g1.xml\nstart b.xml\nend b.xml\n");
}

TEST_F(HtmlRendersTest, TheLargestWaitingReportGoesFirstAndIsReportedInTurn) {
  installLoggingFake();
  dir_.write("a.xml", std::string(10, 'a'));
  dir_.write("c.xml", std::string(1000, 'c'));
  dir_.write("d.xml", std::string(10, 'd'));
  dir_.write("f.xml", std::string(1000, 'f'));
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    queue(renders, "g");
    queue(renders, "a");
    queue(renders, "c");
    queue(renders, "d");
    queue(renders, "f");
    dir_.write("gate", "");
  }
  // Of equal sizes the earlier goes first.
  EXPECT_EQ(test::readFile(log_),
            "start g.xml\nend g.xml\nstart c.xml\nend c.xml\nstart f.xml\nend f.xml\n"
            "start a.xml\nend a.xml\nstart d.xml\nend d.xml\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "err g.xml\nerr a.xml\nerr c.xml\nerr d.xml\nerr f.xml\nqendor: HTML report " +
                dir_.file("f.html") + " not written: xsltproc failed\n");
}

TEST_F(HtmlRendersTest, WaitingForAPathRunsTheWaitingRendersBeforeIt) {
  installLoggingFake();
  dir_.write("big.xml", std::string(1000, 'b'));
  testing::internal::CaptureStderr();
  HtmlRenders renders(1);
  queue(renders, "g");
  queue(renders, "a");
  queue(renders, "big");
  dir_.write("gate", "");
  renders.waitForPath(dir_.file("a.html"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err g.xml\nerr a.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "a.xml");
  testing::internal::CaptureStderr();
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err big.xml\n");
  EXPECT_EQ(test::readFile(log_),
            "start g.xml\nend g.xml\nstart a.xml\nend a.xml\nstart big.xml\nend big.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("big.html")), "big.xml");
}

TEST_F(HtmlRendersTest, MissingXsltprocWarnsInOrder) {
  hideXsltproc();
  const std::string stale = dir_.write("b.html", "stale");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "a");
    renders.start(dir_.file("b.xml"), stale);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "qendor: HTML report " + dir_.file("a.html") +
                " not written: xsltproc could not be started\nqendor: HTML report " + stale +
                " not written: xsltproc could not be started\n");
  EXPECT_FALSE(test::fileExists(stale));
}

}  // namespace
}  // namespace qendor
