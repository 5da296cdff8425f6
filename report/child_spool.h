// Children of one element written out as text the moment each is complete,
// so that an element with very many children (the assertions of a soak
// test, the test cases of a context) never stands in memory as one tree.
// An empty comment, the marker, holds their place in the tree; the saved
// text gets them there, byte for byte as if they had stayed in the tree.
#pragma once

#include <libxml/tree.h>

#include <string>
#include <string_view>

#include "report/file_output.h"
#include "report/xml_node.h"

namespace qendor {

class ChildSpool {
 public:
  ChildSpool() = default;
  ChildSpool(const ChildSpool&) = delete;
  ChildSpool& operator=(const ChildSpool&) = delete;
  ChildSpool(ChildSpool&& other) noexcept;
  ChildSpool& operator=(ChildSpool&&) = delete;

  // Appends the marker to `holder`: the children added from now on stand
  // where it stands, before any child that `holder` gets later.
  void attach(xmlNode* holder);
  bool attached() const { return marker_ != nullptr; }

  // Serialises `child` (unattached) as the next spooled child, with the
  // children of `inner` (a spool inside `child`) in their place, and frees
  // it. Does nothing before attach().
  void add(XmlNodePtr child, ChildSpool* inner = nullptr);

  // To be called before the tree that holds the marker is serialised: takes
  // the marker out when nothing was spooled, so that the holder is written
  // as it would be without it (an empty element stays "<X/>").
  void dropUnusedMarker();

  // `text`, a serialisation of the tree, with the spooled children
  // in the marker's place, appended to `out` or written to `file`.
  void splice(std::string_view text, std::string& out) const;
  void splice(std::string_view text, FileOutput& file) const;

  // Writes the document whose top element is `root`, which holds the
  // marker, to `file` with the spooled children in their place. False when
  // the tree could not be serialised.
  bool writeDocument(xmlNode* root, FileOutput& file);

 private:
  xmlNode* marker_ = nullptr;
  int depth_ = 0;         // of the marker and the children
  std::string children_;  // each as a whole indented line or lines
};

// An element tree with, somewhere inside it, one spool.
struct SpooledDocument {
  XmlNodePtr root;
  ChildSpool spool;
};

}  // namespace qendor
