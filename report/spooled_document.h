// A result document whose one growing element keeps its children as saved
// text. Each child tree is serialised the moment it is added and freed at
// once, so a test context of thousands of test cases holds one test case's
// tree at a time instead of all of them.
#pragma once

#include <libxml/tree.h>

#include <string>
#include <vector>

#include "report/xml_node.h"

namespace qendor {

class SpooledDocument {
 public:
  // `holder` is an element inside the tree of `root` that has no children
  // yet; the added children go there.
  SpooledDocument(XmlNodePtr root, xmlNode* holder);

  xmlNode* root() const { return root_.get(); }
  xmlNode* holder() const { return holder_; }

  // Serialises `child` (unattached) as the next child of the holder, exactly
  // as an indented save of the whole tree writes it, and frees it.
  void add(XmlNodePtr child);

  // Saves like saveXmlDocument: the file reads byte for byte as if every
  // added child had stayed in the tree. False when the file cannot be
  // created.
  bool save(const std::string& xmlPath);

 private:
  XmlNodePtr root_;
  xmlNode* holder_;
  int depth_;  // of the children: the root's children are at 1
  // Each child's text, without the indentation of its first line.
  std::vector<std::string> children_;
};

}  // namespace qendor
