#include "report/xml_node.h"

#include <gtest/gtest.h>

#include <libxml/tree.h>
#include "tests/xml_dump.h"

#include <libxml/parser.h>
#include <libxml/xmlsave.h>

#include <cstring>
#include <string>

namespace qendor {
namespace {

using test::dumpNode;

TEST(XmlNodeTest, NewElementHasNoNamespaceAndNoParent) {
  XmlNodePtr element(newElement("TestResult"));
  ASSERT_NE(element, nullptr);
  EXPECT_EQ(element->type, XML_ELEMENT_NODE);
  EXPECT_EQ(element->ns, nullptr);
  EXPECT_EQ(element->parent, nullptr);
  EXPECT_EQ(dumpNode(element.get()), "<TestResult/>");
}

TEST(XmlNodeTest, ChildrenStandInTheOrderAppended) {
  XmlNodePtr root(newElement("ResultHeader"));
  xmlNode* environment = addElement(root.get(), "EnvironmentInfo");
  addElement(root.get(), "ConfigurationInfo");
  addElement(environment, "Inner");
  EXPECT_EQ(environment->parent, root.get());
  EXPECT_EQ(dumpNode(root.get()),
            "<ResultHeader><EnvironmentInfo><Inner/></EnvironmentInfo><ConfigurationInfo/>"
            "</ResultHeader>");
}

TEST(XmlNodeTest, AddElementWithoutParentCreatesNothing) {
  // What a writer does with a container that could not be made: its
  // children and their attributes are left out, and the tree it holds stays
  // as it was.
  XmlNodePtr root(newElement("TestResult"));
  xmlNode* orphan = addElement(nullptr, "Orphan");
  EXPECT_EQ(orphan, nullptr);
  setAttribute(orphan, "name", "value");
  EXPECT_EQ(addElement(orphan, "Child"), nullptr);
  EXPECT_EQ(test::dumpNode(root.get()), "<TestResult/>");
}

TEST(XmlNodeTest, AttributesStandInTheOrderSetAndEmptyValuesAreWritten) {
  XmlNodePtr element(newElement("SDResult"));
  setAttribute(element.get(), "name", "Main");
  setAttribute(element.get(), "sdname", "");
  setAttribute(element.get(), "status", "PASSED");
  EXPECT_EQ(dumpNode(element.get()), "<SDResult name=\"Main\" sdname=\"\" status=\"PASSED\"/>");
}

TEST(XmlNodeTest, SettingAnAttributeAgainReplacesItsValueInPlace) {
  XmlNodePtr element(newElement("TestCaseResult"));
  setAttribute(element.get(), "name", "a");
  setAttribute(element.get(), "status", "x");
  setAttribute(element.get(), "name", "b");
  EXPECT_EQ(dumpNode(element.get()), "<TestCaseResult name=\"b\" status=\"x\"/>");
}

TEST(XmlNodeTest, ValueIsCopiedFromAViewWithoutTerminator) {
  const std::string text = "ab<&\"cd";
  XmlNodePtr element(newElement("E"));
  // Only the first five characters: the copy must not read past the view.
  setAttribute(element.get(), "v", std::string_view(text).substr(0, 5));
  EXPECT_EQ(dumpNode(element.get()), "<E v=\"ab&lt;&amp;&quot;\"/>");
}

// The attribute value as libxml2 holds it, byte for byte.
std::string attributeBytes(std::string_view value) {
  XmlNodePtr element(newElement("E"));
  setAttribute(element.get(), "v", value);
  xmlChar* held = xmlGetProp(element.get(), reinterpret_cast<const xmlChar*>("v"));
  std::string bytes = held ? reinterpret_cast<const char*>(held) : "<absent>";
  xmlFree(held);
  return bytes;
}

// A whole document with one attribute holding `value`, as saved to a file.
std::string savedDocument(std::string_view value) {
  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  xmlNode* root = newElement("E");
  xmlDocSetRootElement(doc, root);
  setAttribute(root, "v", value);
  xmlChar* text = nullptr;
  int size = 0;
  xmlDocDumpFormatMemory(doc, &text, &size, 1);
  std::string saved(reinterpret_cast<const char*>(text), size);
  xmlFree(text);
  xmlFreeDoc(doc);
  return saved;
}

bool parsesAsXml(const std::string& text) {
  xmlDoc* doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), "saved.xml", nullptr,
                              XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) return false;
  xmlFreeDoc(doc);
  return true;
}

TEST(XmlNodeTest, WellFormedUtf8IsCopiedUnchanged) {
  const std::string text =
      "Pr\xC3\xBC"
      "fung \xE2\x82\xAC \xF0\x9F\x98\x80 \xEF\xBF\xBD \xF4\x8F\xBF\xBD";
  EXPECT_EQ(attributeBytes(text), text);
  // Tab, line feed and carriage return are allowed characters.
  EXPECT_EQ(attributeBytes("a\tb\nc\rd"), "a\tb\nc\rd");
  EXPECT_EQ(dumpNode(XmlNodePtr(newElement("x")).get()), "<x/>");
}

TEST(XmlNodeTest, Latin1BytesBecomeTheirCharacters) {
  // "Prüfung" written in Latin-1.
  EXPECT_EQ(attributeBytes("Pr\xFC"
                           "fung"),
            "Pr\xC3\xBC"
            "fung");
  EXPECT_EQ(attributeBytes("\xA0\xFF\x80\x9F"), "\xC2\xA0\xC3\xBF\xC2\x80\xC2\x9F");
  // The byte after a broken lead byte is kept, not swallowed.
  EXPECT_EQ(attributeBytes("x\xC3(y"), "x\xC3\x83(y");
  XmlNodePtr element(newElement("E"));
  setAttribute(element.get(), "v", "x\xC3(y");
  EXPECT_EQ(dumpNode(element.get()), "<E v=\"x&#xC3;(y\"/>");
}

TEST(XmlNodeTest, MalformedUtf8IsReadByteByByteAsLatin1) {
  // Overlong forms of "/" and of U+0000.
  EXPECT_EQ(attributeBytes("\xC0\xAF"), "\xC3\x80\xC2\xAF");
  EXPECT_EQ(attributeBytes("\xE0\x80\xAF"), "\xC3\xA0\xC2\x80\xC2\xAF");
  EXPECT_EQ(attributeBytes("\xF0\x80\x80\xAF"), "\xC3\xB0\xC2\x80\xC2\x80\xC2\xAF");
  EXPECT_EQ(attributeBytes("\xC1\xBF"), "\xC3\x81\xC2\xBF");
  // A surrogate (U+D800) encoded as if it were a character.
  EXPECT_EQ(attributeBytes("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xC2\x80");
  // U+110000, past the last code point, and lead bytes that cannot start one.
  EXPECT_EQ(attributeBytes("\xF4\x90\x80\x80"), "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80");
  EXPECT_EQ(attributeBytes("\xF5\xF8\xFE"), "\xC3\xB5\xC3\xB8\xC3\xBE");
  // A sequence cut off by the end of the value or by an ASCII byte.
  EXPECT_EQ(attributeBytes("a\xE2\x82"), "a\xC3\xA2\xC2\x82");
  EXPECT_EQ(attributeBytes("\xE2\x82"
                           "A"),
            "\xC3\xA2\xC2\x82"
            "A");
  // A stray continuation byte in front of a well-formed character.
  EXPECT_EQ(attributeBytes("\x80\xC3\xBC"), "\xC2\x80\xC3\xBC");
  // The highest characters that are well-formed stay.
  EXPECT_EQ(attributeBytes("\xED\x9F\xBF\xEE\x80\x80"), "\xED\x9F\xBF\xEE\x80\x80");
}

TEST(XmlNodeTest, CharactersXmlForbidsBecomeReplacementCharacters) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(
      attributeBytes(std::string("a\x01"
                                 "b\x1F"
                                 "c\x0B\x0C"
                                 "d\x1B",
                                 9)),
      "a" + replacement + "b" + replacement + "c" + replacement + replacement + "d" + replacement);
  // NUL inside the value.
  EXPECT_EQ(attributeBytes(std::string("a\0b", 3)), "a" + replacement + "b");
  // U+FFFE and U+FFFF, although well-formed UTF-8.
  EXPECT_EQ(attributeBytes("\xEF\xBF\xBE-\xEF\xBF\xBF"), replacement + "-" + replacement);
  // DEL and the C1 range are allowed characters.
  EXPECT_EQ(attributeBytes("\x7F\xC2\x85"), "\x7F\xC2\x85");
  XmlNodePtr element(newElement("E"));
  setAttribute(element.get(), "v", "\x01");
  EXPECT_EQ(dumpNode(element.get()), "<E v=\"&#xFFFD;\"/>");
}

TEST(XmlNodeTest, TabLineFeedAndCarriageReturnAreWrittenAsReferences) {
  XmlNodePtr element(newElement("E"));
  setAttribute(element.get(), "v", "a\tb\nc\rd");
  EXPECT_EQ(dumpNode(element.get()), "<E v=\"a&#9;b&#10;c&#13;d\"/>");
}

TEST(XmlNodeTest, EveryByteValueGivesAWellFormedDocumentAndNoLibraryMessage) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  testing::internal::CaptureStderr();
  const std::string single = savedDocument(all);
  // Every pair of bytes, so that every lead byte meets every follower.
  std::string pairs;
  for (int first = 0x80; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      pairs += static_cast<char>(first);
      pairs += static_cast<char>(second);
    }
  }
  const std::string paired = savedDocument(pairs);
  const std::string messages = testing::internal::GetCapturedStderr();
  EXPECT_EQ(messages, "");
  EXPECT_TRUE(parsesAsXml(single));
  EXPECT_TRUE(parsesAsXml(paired));
  std::string controls;
  for (int i = 0; i < 9; ++i) controls += "&#xFFFD;";
  controls += "&#9;&#10;&#xFFFD;&#xFFFD;&#13;";
  for (int i = 14; i < 32; ++i) controls += "&#xFFFD;";
  const std::string head = "<?xml version=\"1.0\"?>\n<E v=\"" + controls + " !&quot;#";
  EXPECT_EQ(single.substr(0, head.size()), head);
  // The Latin-1 half ends the value: U+00FE, U+00FF.
  EXPECT_NE(single.find("&#xFE;&#xFF;\"/>"), std::string::npos);
}

TEST(XmlNodeTest, TheSavedValueReadsBackAsTheCopy) {
  const std::string value =
      "Pr\xFC"
      "fung\x01\xC3\xA4\t<&>\"";
  xmlDoc* doc = nullptr;
  const std::string saved = savedDocument(value);
  doc = xmlReadMemory(saved.data(), static_cast<int>(saved.size()), "saved.xml", nullptr,
                      XML_PARSE_NONET);
  ASSERT_NE(doc, nullptr);
  xmlChar* read = xmlGetProp(xmlDocGetRootElement(doc), reinterpret_cast<const xmlChar*>("v"));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(read)),
            "Pr\xC3\xBC"
            "fung\xEF\xBF\xBD\xC3\xA4\t<&>\"");
  xmlFree(read);
  xmlFreeDoc(doc);
}

TEST(XmlNodeTest, LongValuesAreCutAfterTheLastWholeCharacterThatFitsTheFile) {
  ASSERT_EQ(kMaxSavedAttributeBytes, 500000u);
  const std::string fits(kMaxSavedAttributeBytes, 'x');
  EXPECT_EQ(attributeBytes(fits), fits);
  EXPECT_EQ(attributeBytes(fits + "y"), fits);
  // Counted as saved: "&quot;" takes six bytes, "&lt;" four, "&#x1F600;"
  // nine, "&#xFFFD;" eight, "&#xFC;" six.
  EXPECT_EQ(attributeBytes(std::string(100000, '"')), std::string(83333, '"'));
  EXPECT_EQ(attributeBytes(std::string(200000, '<')), std::string(125000, '<'));
  const std::string front(kMaxSavedAttributeBytes - 8, 'x');
  EXPECT_EQ(attributeBytes(front + "\xF0\x9F\x98\x80"
                                   "z"),
            front);
  EXPECT_EQ(attributeBytes(front + "\x01z"), front + "\xEF\xBF\xBD");
  EXPECT_EQ(attributeBytes(front + "a\x01"), front + "a");
  EXPECT_EQ(attributeBytes(front + "ab\xFC"), front + "ab\xC3\xBC");
  EXPECT_EQ(attributeBytes(front + "abc\xFC"), front + "abc");
  EXPECT_EQ(attributeBytes(front + "\t\t\t"), front + "\t\t");
}

TEST(XmlNodeTest, AnElementOfLongestValuesReadsBackWithoutTheHugeOption) {
  // Values that grow most when saved, a dozen of them on one element.
  std::string value;
  while (value.size() < 3 * kMaxSavedAttributeBytes) value += "\"\xEF\xBF\xBF\xFC<\x01";
  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  xmlNode* root = newElement("E");
  xmlDocSetRootElement(doc, root);
  for (char name = 'a'; name < 'm'; ++name) setAttribute(root, std::string(1, name).c_str(), value);
  xmlChar* text = nullptr;
  int size = 0;
  xmlDocDumpFormatMemory(doc, &text, &size, 1);
  xmlFreeDoc(doc);
  EXPECT_GT(size, 12 * static_cast<int>(kMaxSavedAttributeBytes) - 100);
  EXPECT_LE(size, 12 * static_cast<int>(kMaxSavedAttributeBytes) + 100);
  doc = xmlReadMemory(reinterpret_cast<const char*>(text), size, "saved.xml", nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  xmlFree(text);
  ASSERT_NE(doc, nullptr);
  xmlChar* read = xmlGetProp(xmlDocGetRootElement(doc), reinterpret_cast<const xmlChar*>("l"));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(read)).substr(0, 11),
            "\"\xEF\xBF\xBD\xC3\xBC<\xEF\xBF\xBD\"");
  xmlFree(read);
  xmlFreeDoc(doc);
}

}  // namespace
}  // namespace qendor
