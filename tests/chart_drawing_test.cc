#include "report/chart_drawing.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <regex>
#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "report/chart_layout.h"
#include "report/xml_node.h"
#include "tests/xml_dump.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

std::shared_ptr<const ChartList> chartOf(const std::string& records) {
  const std::string text = "STATECHART_TEST\n" + records;
  LineReader lines{std::string_view(text)};
  return std::shared_ptr<const ChartList>(parseVerificationFile(lines).chart.release());
}

std::string state(const std::string& guid, const std::string& name, const std::string& out,
                  const std::string& parent = "ROOT", const std::string& type = "State",
                  const std::string& byDefault = "") {
  std::string text = "STATE_NAME:\n" + name + "\nGUID:\n" + guid + "\nSTATE_TYPE:\n" + type +
                     "\nPARENT_NAME:\n" + (parent == "ROOT" ? "ROOT" : "P") + "\nPARENT_GUID:\n" +
                     parent + "\n";
  if (!byDefault.empty()) text += "DEFAULT_TRANSITION:\n" + byDefault + "\n";
  if (!out.empty()) text += "OUT_TRANSITIONS:\n" + out + "\n";
  return text + "----------\n";
}

std::string transition(const std::string& guid, const std::string& name,
                       const std::string& target) {
  return "TRANSITION_NAME:\n" + name + "\nGUID:\n" + guid + "\nTRANSITION_TARGET:\n" + target +
         "\n----------\n";
}

std::string drawingOf(const ChartLayout& layout, const DrawingMarks& marks = {}) {
  XmlNodePtr parent(newElement("Diagnosis"));
  writeChartDrawing(parent.get(), layout, marks);
  return test::dumpNode(parent->children);
}

// The drawing without what Graphviz computed: its structure, ids and marks.
std::string structureOf(const std::string& xml) {
  static const std::regex placed(R"( (x|y|w|h|width|height|path|lx|ly|arrow)="[^"]*")");
  return std::regex_replace(xml, placed, "");
}

// Every number of every coordinate attribute, in order.
std::vector<double> numbersIn(const std::string& xml, const char* attributes) {
  std::vector<double> numbers;
  const std::regex attribute(std::string(" (") + attributes + R"x()="([^"]*)")x");
  for (auto it = std::sregex_iterator(xml.begin(), xml.end(), attribute);
       it != std::sregex_iterator(); ++it) {
    static const std::regex number(R"(-?[0-9]+(\.[0-9]+)?)");
    const std::string value = (*it)[2];
    for (auto n = std::sregex_iterator(value.begin(), value.end(), number);
         n != std::sregex_iterator(); ++n) {
      numbers.push_back(std::atof(n->str().c_str()));
    }
  }
  return numbers;
}

struct DrawingCase {
  const char* name;
  std::string records;
  std::string structure;  // the Drawing with coordinates left out
};

// Composite states as clusters with their initial dot, default transitions,
// a self-loop, a cycle, terminations, and the start before the first record.
const DrawingCase kCases[] = {
    {"a line",
     state("a", "A", "t1") + transition("t1", "go", "b") +
         state("b", "B", "", "ROOT", "LocalTermination"),
     R"(<Drawing shown="all" states="2" transitions="1" shownStates="2" shownTransitions="1">)"
     R"(<Node ref="start" kind="start"/>)"
     R"(<Node ref="n0" kind="state" guid="a" name="A" first="yes"/>)"
     R"(<Node ref="n2" kind="termination" guid="b" name="B"/>)"
     R"(<Edge kind="start" from="start" to="n0"/>)"
     R"(<Edge kind="transition" guid="t1" name="go" from="n0" to="n2"/></Drawing>)"},
    {"a cycle and a self-loop",
     state("a", "A", "t1\nt3") + transition("t1", "there", "b") + state("b", "B", "t2") +
         transition("t2", "back", "a") + transition("t3", "stay", "a"),
     R"(<Drawing shown="all" states="2" transitions="3" shownStates="2" shownTransitions="3">)"
     R"(<Node ref="start" kind="start"/>)"
     R"(<Node ref="n0" kind="state" guid="a" name="A" first="yes"/>)"
     R"(<Node ref="n2" kind="state" guid="b" name="B"/>)"
     R"(<Edge kind="start" from="start" to="n0"/>)"
     R"(<Edge kind="transition" guid="t1" name="there" from="n0" to="n2"/>)"
     R"(<Edge kind="transition" guid="t2" name="back" from="n2" to="n0"/>)"
     R"(<Edge kind="transition" guid="t3" name="stay" from="n0" to="n0"/></Drawing>)"},
    {"composite states",
     state("a", "A", "t1") + transition("t1", "in", "o") +
         state("o", "Outer", "t3", "ROOT", "State", "t2") + transition("t2", "init", "i") +
         state("i", "Inner", "", "o", "State", "") + state("j", "Deep", "", "i", "Termination") +
         transition("t3", "out", "e") + state("e", "End", "", "ROOT", "LocalTermination"),
     R"(<Drawing shown="all" states="5" transitions="3" shownStates="5" shownTransitions="3">)"
     R"(<Cluster ref="n2" kind="composite" guid="o" name="Outer"/>)"
     R"(<Cluster ref="n4" kind="composite" guid="i" name="Inner"/>)"
     R"(<Node ref="start" kind="start"/>)"
     R"(<Node ref="n0" kind="state" guid="a" name="A" first="yes"/>)"
     R"(<Node ref="i2" kind="initial" guid="o" name="Outer"/>)"
     R"(<Node ref="n5" kind="termination" guid="j" name="Deep"/>)"
     R"(<Node ref="n7" kind="termination" guid="e" name="End"/>)"
     R"(<Edge kind="start" from="start" to="n0"/>)"
     R"(<Edge kind="transition" guid="t1" name="in" from="n0" to="n2"/>)"
     R"(<Edge kind="default" guid="t2" name="init" from="i2" to="n4"/>)"
     R"(<Edge kind="transition" guid="t3" name="out" from="n2" to="n7"/></Drawing>)"},
};

TEST(ChartDrawing, SmallChartsAreDrawnWhole) {
  for (const DrawingCase& c : kCases) {
    const auto chart = chartOf(c.records);
    const ChartLayout layout = layoutChart(*chart, LayoutLimits{});
    ASSERT_TRUE(layout.laidOut) << c.name;
    const std::string xml = drawingOf(layout);
    EXPECT_EQ(structureOf(xml), c.structure) << c.name;
    // Everything lies inside the drawing's box (a spline may bulge a
    // little past the nodes it joins).
    ASSERT_GT(layout.width, 0) << c.name;
    ASSERT_GT(layout.height, 0) << c.name;
    for (const ChartLayout::Box& box : layout.nodes) {
      EXPECT_GE(box.x, 0) << c.name << " " << box.ref;
      EXPECT_GE(box.y, 0) << c.name << " " << box.ref;
      EXPECT_LE(box.x + box.w, layout.width + 0.1) << c.name << " " << box.ref;
      EXPECT_LE(box.y + box.h, layout.height + 0.1) << c.name << " " << box.ref;
    }
    for (const ChartLayout::Box& box : layout.clusters) {
      EXPECT_GE(box.x, 0) << c.name << " " << box.ref;
      EXPECT_LE(box.x + box.w, layout.width + 0.1) << c.name << " " << box.ref;
      EXPECT_LE(box.y + box.h, layout.height + 0.1) << c.name << " " << box.ref;
    }
    for (const ChartLayout::Line& line : layout.lines) {
      EXPECT_EQ(line.path.substr(0, 2), "M ") << c.name << " " << line.guid;
      EXPECT_NE(line.arrow, "") << c.name << " " << line.guid;
      const std::vector<double> points =
          numbersIn(" p=\"" + line.path + " " + line.arrow + "\"", "p");
      for (size_t k = 0; k < points.size(); ++k) {
        const double limit = k % 2 == 0 ? layout.width : layout.height;
        EXPECT_GE(points[k], -10) << c.name << " " << line.guid;
        EXPECT_LE(points[k], limit + 10) << c.name << " " << line.guid;
      }
      if (line.labelled) {
        EXPECT_GE(line.labelX, 0) << c.name << " " << line.guid;
        EXPECT_LE(line.labelX, layout.width) << c.name << " " << line.guid;
      }
    }
  }
}

TEST(ChartDrawing, LayingOutTwiceGivesTheSameBytes) {
  for (const DrawingCase& c : kCases) {
    const auto chart = chartOf(c.records);
    EXPECT_EQ(drawingOf(layoutChart(*chart, LayoutLimits{})),
              drawingOf(layoutChart(*chartOf(c.records), LayoutLimits{})))
        << c.name;
  }
}

TEST(ChartDrawing, MarksAreWrittenOnTheirRecords) {
  ChartLayout layout;
  layout.laidOut = true;
  layout.width = 100.25;
  layout.height = 50;
  layout.states = 2;
  layout.transitions = 1;
  layout.nodes.push_back({"n0", "a", "A", ChartLayout::Kind::kState, true, 1, 2, 54, 30});
  layout.nodes.push_back({"n2", "b", "B", ChartLayout::Kind::kTermination, false, 60, 2, 40, 30});
  ChartLayout::Line line;
  line.guid = "t1";
  line.name = "go";
  line.from = "n0";
  line.to = "n2";
  line.path = "M 55,17 C 56,17 57,17 58,17";
  line.labelled = true;
  line.labelX = 57.04;
  line.labelY = -0.04;
  line.arrow = "60,17 58,16 58,18";
  layout.lines.push_back(line);
  DrawingMarks marks;
  marks.byGuid["a"].visited = 2;
  marks.byGuid["a"].steps = {1, 3};
  marks.byGuid["a"].assertions = {1};
  marks.byGuid["a"].stop = true;
  marks.byGuid["t1"].way = true;
  marks.byGuid["t1"].blocked = true;
  marks.byGuid["b"].performs = true;
  EXPECT_EQ(drawingOf(layout, marks),
            R"(<Drawing width="100.3" height="50" shown="all" states="2" transitions="1" )"
            R"(shownStates="2" shownTransitions="1">)"
            R"(<Node ref="n0" kind="state" guid="a" name="A" x="1" y="2" w="54" h="30" )"
            R"(first="yes" visited="2" steps="1 3" assertions="1" stop="yes"/>)"
            R"(<Node ref="n2" kind="termination" guid="b" name="B" x="60" y="2" w="40" h="30" )"
            R"(performs="yes"/>)"
            R"(<Edge kind="transition" guid="t1" name="go" from="n0" to="n2" )"
            R"(path="M 55,17 C 56,17 57,17 58,17" lx="57" ly="0" arrow="60,17 58,16 58,18" )"
            R"(blocked="yes" way="yes"/></Drawing>)");
  layout.laidOut = false;
  EXPECT_EQ(drawingOf(layout, marks), "(null)");
}

TEST(ChartDrawing, TheDiagnosisMarksItsPathAndStop) {
  ChartDiagnosis diagnosis;
  diagnosis.omitted = 10;
  diagnosis.add({"A", "a", true, 1});
  diagnosis.add({"go", "t1", false, 0});
  diagnosis.add({"A", "a", true, 2});
  diagnosis.stopped = true;
  diagnosis.stoppedAt = {"A", "a", true, 0};
  diagnosis.performed = true;
  diagnosis.performedIn = {"B", "b", true, 0};
  diagnosis.blocked = true;
  diagnosis.blockedBy = {"go", "t1", false, 0};
  diagnosis.way = {"a", "t1", "b"};
  const DrawingMarks marks = chartMarks(diagnosis);
  const DrawingMarks::Mark& a = marks.byGuid.at("a");
  EXPECT_EQ(a.visited, 2u);
  EXPECT_EQ(a.steps, (std::vector<size_t>{11, 13}));
  EXPECT_EQ(a.assertions, (std::vector<size_t>{1, 2}));
  EXPECT_TRUE(a.stop);
  EXPECT_TRUE(a.way);
  EXPECT_TRUE(marks.byGuid.at("b").performs);
  EXPECT_TRUE(marks.byGuid.at("t1").blocked);
  EXPECT_EQ(marks.byGuid.at("t1").steps, (std::vector<size_t>{12}));
  const LayoutLimits limits = diagnosisLimits(diagnosis);
  EXPECT_EQ(limits.focus,
            (std::vector<std::string>{"a", "b", "t1", "a", "t1", "b", "a", "t1", "a"}));
}

// A ring of `states` states, each also leaving for the state three on.
std::string ring(size_t states) {
  std::string text;
  for (size_t i = 0; i < states; ++i) {
    const std::string id = std::to_string(i);
    text += state("s" + id, "S" + id, "a" + id + "\nb" + id);
    text += transition("a" + id, "next" + id, "s" + std::to_string((i + 1) % states));
    text += transition("b" + id, "skip" + id, "s" + std::to_string((i + 3) % states));
  }
  return text;
}

TEST(ChartDrawing, LargeChartsAreDrawnAroundTheFocus) {
  const auto chart = chartOf(ring(200));
  LayoutLimits limits;
  limits.mostStates = 10;
  limits.reach = 1;
  limits.focus = {"s100", "a150"};
  const ChartLayout layout = layoutChart(*chart, limits);
  ASSERT_TRUE(layout.laidOut);
  EXPECT_FALSE(layout.all);
  EXPECT_EQ(layout.states, 200u);
  EXPECT_EQ(layout.transitions, 400u);
  // The focus first, then its neighbours a link away, up to the cap.
  std::string names;
  for (const ChartLayout::Box& box : layout.nodes) names += box.name + " ";
  EXPECT_EQ(names, "S97 S99 S100 S101 S103 S147 S149 S150 S151 S153 ");
  const std::string xml = drawingOf(layout);
  EXPECT_NE(xml.find(R"(shown="neighbourhood" states="200" transitions="400")"), std::string::npos);
  EXPECT_NE(xml.find(R"(shownStates="10" shownTransitions="8")"), std::string::npos)
      << structureOf(xml);
}

TEST(ChartDrawing, EachChartIsLaidOutOncePerRun) {
  const auto chart = chartOf(kCases[0].records);
  const auto first = cachedLayout(chart, LayoutLimits{});
  LayoutLimits other;
  other.focus = {"a"};
  EXPECT_EQ(cachedLayout(chart, other).get(), first.get());
  EXPECT_NE(cachedLayout(chartOf(kCases[0].records), LayoutLimits{}).get(), first.get());
}

}  // namespace
}  // namespace qendor
