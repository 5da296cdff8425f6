#include "report/index_document.h"

#include <gtest/gtest.h>

#include <string>

#include "report/index_scan.h"
#include "tests/index_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

TEST(IndexDocument, AFolderOfThreeContextsATestCaseAndABrokenFile) {
  test::TempDir dir;
  dir.write("Cart.xml", test::contextDocument("Cart", "PASSED", "PPP", 2));
  dir.write("Pay.xml", test::contextDocument("Pay", "FAILED", "PFE", 1, "Bank"));
  dir.write("Ship.xml", test::contextDocument("Ship", "ERROR", "EU", 0));
  dir.write("PlaceOrder.xml", test::testCaseDocument("PlaceOrder"));
  dir.write("Broken.xml", test::contextDocument("Broken", "PASSED", "P").substr(0, 90));
  EXPECT_EQ(indexText(scanIndexDirectory(dir.path())),
            "<?xml version=\"1.0\"?>\n"
            "<TestIndex>\n"
            "  <Context file=\"Pay.xml\" href=\"Pay.html\" name=\"Pay\" fullname=\"Bank.Pay\" "
            "status=\"FAILED\" time=\"Sat Nov 22 10:15:42 2025\" projectName=\"Bank\" "
            "componentName=\"Pay\" configurationName=\"Debug\" testCases=\"3\" passed=\"1\" "
            "failed=\"1\" error=\"1\" undefined=\"0\" assertions=\"3\"/>\n"
            "  <Context file=\"Ship.xml\" href=\"Ship.html\" name=\"Ship\" fullname=\"Shop.Ship\" "
            "status=\"ERROR\" time=\"Sat Nov 22 10:15:42 2025\" projectName=\"Shop\" "
            "componentName=\"Ship\" configurationName=\"Debug\" testCases=\"2\" passed=\"0\" "
            "failed=\"0\" error=\"1\" undefined=\"1\" assertions=\"0\"/>\n"
            "  <Context file=\"Cart.xml\" href=\"Cart.html\" name=\"Cart\" fullname=\"Shop.Cart\" "
            "status=\"PASSED\" time=\"Sat Nov 22 10:15:42 2025\" projectName=\"Shop\" "
            "componentName=\"Cart\" configurationName=\"Debug\" testCases=\"3\" passed=\"3\" "
            "failed=\"0\" error=\"0\" undefined=\"0\" assertions=\"6\"/>\n"
            "  <Skipped file=\"Broken.xml\" reason=\"is not well-formed\"/>\n"
            "</TestIndex>\n");
}

TEST(IndexDocument, AnEmptyFolder) {
  test::TempDir dir;
  EXPECT_EQ(indexText(scanIndexDirectory(dir.path())), "<?xml version=\"1.0\"?>\n<TestIndex/>\n");
}

TEST(IndexDocument, ValuesAreEscaped) {
  IndexScan scan;
  IndexedContext c;
  c.file = "a&b <c>.xml";
  c.name = "\"quoted\" & <tagged>";
  c.status = "PASSED";
  scan.contexts.push_back(c);
  const std::string text = indexText(scan);
  EXPECT_NE(text.find(" file=\"a&amp;b &lt;c&gt;.xml\" href=\"a%26b%20%3Cc%3E.html\" "
                      "name=\"&quot;quoted&quot; &amp; &lt;tagged&gt;\" "),
            std::string::npos)
      << text;
}

TEST(IndexDocument, RelativeHref) {
  const std::pair<const char*, const char*> cases[] = {
      {"Checkout.html", "Checkout.html"},     {"My Context.html", "My%20Context.html"},
      {"a#1%2?.html", "a%231%252%3F.html"},   {"x_y-z~.html", "x_y-z~.html"},
      {"caf\xc3\xa9.html", "caf%C3%A9.html"}, {"", ""},
  };
  for (const auto& [name, href] : cases) EXPECT_EQ(relativeHref(name), href) << name;
}

}  // namespace
}  // namespace qendor
