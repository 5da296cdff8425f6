#!/usr/bin/env python3
# Scenario generator of the differential check (see README.md beside it).
# A developer tool that is not run in CI, so it may be written in python3.
#
#   generate.py DIR SEED
#
# writes one small random scenario into DIR:
#
#   DIR/<info file>      TESTCASE, FILE, version and configuration lines
#   DIR/<result file>    the log, in the full or the short record form
#   DIR/src/*.cpp        the sources that carry the assertion statements
#   DIR/out/*.ver        verification files (some missing), optional images
#   DIR/hist/            history files of earlier runs (some runs only)
#   DIR/plan.json        the runs to make and their environment
#
# The same SEED always gives the same bytes. Most test cases are well-formed
# enough to reach the sequence verification or the chart search; a few carry
# the faults that a harness or an edited source produces (half-edited
# statements, unclosed fragments, missing files, odd names and numbers).
import json
import os
import random
import sys

SHORT_NAMES = [
    "PlaceOrder", "PayWithCoupon", "CancelOrder", "ApplyVoucher", "CartStates",
    "ShippingFlow", "TotalPrice", "PaymentTimeout", "AbortByUser", "Refund",
    "Login", "Logout", "Search", "Browse", "Checkout", "Restock", "Audit",
    "Case1", "Case2", "T3", "Ship", "Track", "Return", "Invoice",
]
ODD_SHORT_NAMES = ["Fall&Rise", "Prüfung", "O'Brien", "less<more", "pct%41", "semi;colon"]
CONTEXTS = [
    "Pkg.Ctx", "Shop.Checkout", "Lib::Pkg.Ctx", "A.B.C", "Ctx", "Shop.Cart",
    "Bank::Core.Accounts", "X.Y",
]
SDI_NAMES = ["Checkout", "Cart", "Shop", "Bank", "Flow", "D"]
USER_WORDS = [
    "Order placed", "Card payment authorised", "Cart opened", "Coupon applied",
    "Stock released", "Total updated", "Voucher entered", "Discount of 10 % shown",
    "Mail sent", "Login ok", "Item added", "Parcel labelled", "x < y & z",
    "quote \\\"inner\\\" text", "comma, inside", "Grüße", "tab\there",
]
CODE_EXPRESSIONS = [
    "cart.count() == 1", "cart.total() > 0", "order.isPaid()", "x", "a==b",
    "shop.gateway().isReachable()", "parcel.address().isValid()", "stock >= 0",
    "p != nullptr", "list.empty()",
]
NOISE_LOG_LINES = [
    "Test run started",
    "- progress line that is ignored here",
    "- [Arbiter ASSERT: external] raised outside any record",
    "[10:15:53] mail server: no cancellation mail within 10 s",
    "[10:16:28] watchdog: payment gateway did not answer within 30 s",
    "",
    "=== Test run finished ===",
    "ASSERTIONS=none (not a record)",
    " FULLASSERTION=indented, so not a record",
]
NOISE_SOURCE_LINES = [
    "void run() {", "}", "  cart.add(\"green-tea\", 1);", "", "  int x = 1;",
    "  x = 1; // ZKR_ASSERT_TRUE(x);", "  /* ZKR_ASSERT_TRUE(old); */",
    "  // ZKR_ASSERT_FALSE(disabled);", "#include \"zkr.h\"",
]


class Generator:
    def __init__(self, seed):
        self.r = random.Random(seed)
        self.seed = seed

    # ----------------------------------------------------------- helpers
    def chance(self, p):
        return self.r.random() < p

    def fault(self, p):
        """A fault of a test case that is not clean."""
        return self.dirty and self.r.random() < p

    def pick(self, items):
        return self.r.choice(items)

    def weighted(self, pairs):
        total = sum(w for _, w in pairs)
        x = self.r.random() * total
        for value, w in pairs:
            x -= w
            if x < 0:
                return value
        return pairs[-1][0]

    def guid(self):
        h = "%032x" % self.r.getrandbits(128)
        return "%s-%s-%s-%s-%s" % (h[:8], h[8:12], h[12:16], h[16:20], h[20:])

    # ----------------------------------------------------------- sources
    def place(self, statement):
        """Puts a statement into a source file; returns (file index, line
        number under which the collection stores it)."""
        if statement in self.placed and self.chance(0.9):
            return self.placed[statement]
        index = self.r.randrange(len(self.source_lines))
        lines = self.source_lines[index]
        x = self.r.random()
        if x < 0.15:
            lines.append(self.pick(NOISE_SOURCE_LINES))
        if x < 0.04:
            lines.append("  // " + statement)
        if x > 0.97 and self.dirty:
            # A statement half edited in the source: no ";", so the
            # collection joins the next statement to it.
            lines.append("  ZKR_ASSERT_TRUE(half_edited")
        indent = self.pick(["", "  ", "    ", "\t", " \t "])
        if self.chance(0.1) and ", " in statement and ";" not in statement[:-1]:
            cut = statement.index(", ") + 1
            lines.append(indent + statement[:cut])
            lines.append(indent + "      " + statement[cut:].lstrip())
        else:
            lines.append(indent + statement)
        where = (index, len(lines))
        self.placed[statement] = where
        return where

    # ----------------------------------------------------------- statements
    def half_edit(self, statement):
        """What an assertion looks like while someone edits it."""
        kind = self.r.randrange(5)
        if kind == 0:
            return statement.replace('");', ";", 1)
        if kind == 1:
            return statement.replace(")", "", 1)
        if kind == 2 and statement.startswith("ZKR_ASSERT_SD"):
            return statement.split(",")[0] + ");"
        if kind == 3:
            return statement.replace("ZKR_ASSERT_", "ZKR_ASSERT_OFF_", 1)
        return statement[: max(12, len(statement) // 2)]

    def sd_statement(self, sdi, msgid, text):
        sep = ", " if self.chance(0.9) else ","
        return 'ZKR_ASSERT_SD("%s"%s"%s"%s"%s");' % (sdi, sep, msgid, sep, text)

    def code_statement(self):
        expression = self.pick(CODE_EXPRESSIONS)
        form = self.r.randrange(9)
        if form == 0:
            return "ZKR_ASSERT_TRUE(%s);" % expression
        if form == 1:
            return "ZKR_ASSERT_FALSE(%s);" % expression
        if form == 2:
            return "ZKR_ASSERT_EQUAL(shop.cart().count(), %d);" % self.r.randrange(5)
        if form == 3:
            return 'ZKR_ASSERT_STRING_EQUAL(shop.cart().currency(), "EUR");'
        if form == 4:
            return 'ZKR_ASSERT_NAME_FATAL("%s", %s);' % (self.pick(USER_WORDS), expression)
        if form == 5:
            return "ZKR_ASSERT_PTR_NOT_NULL(p);"
        if form == 6:
            return 'ZKR_ASSERT_CPTRSTRING_EQUAL("a,b", c);'
        if form == 7:
            return "ZKR_ASSERT(%s);" % expression
        return 'ZKR_ASSERT_TRUE("%s");' % self.pick(USER_WORDS)

    def progress_text(self, value, maximum):
        text = self.pick(USER_WORDS)
        text += " - progress %s/%s" % (value, maximum)
        if self.chance(0.6):
            text += " - no:%d,%d" % (self.r.randrange(1, 9), self.r.randrange(1, 9))
        if self.chance(0.6):
            text += " - [Arbiter ASSERT: %s]" % self.weighted(
                [("internal", 5), ("external", 4), ("INTERNAL", 1)])
        if self.chance(0.5):
            g = self.guid()
            text += " - GUID " + (g if self.chance(0.95) else g[:10])
        return text

    # ----------------------------------------------------------- diagrams
    def diagram_items(self, depth):
        items = []
        for _ in range(self.r.randint(1, 3 if depth else 4)):
            if depth < 3 and self.chance(0.4 if depth == 0 else 0.25):
                items.append(self.fragment(depth + 1))
            else:
                items.append(["msg", None])
        return items

    def fragment(self, depth):
        op = self.weighted([("ALT", 4), ("OPT", 3), ("LOOP", 3), ("BREAK", 2),
                            ("STRICT", 2), ("CONSIDER", 1)])
        operands = 1
        if op == "ALT":
            operands = self.r.randint(1, 3)
        self.fragment_count += 1
        ident = "%s.f%d" % (self.pick(["Checkout", "Flow", "SD"]), self.fragment_count)
        return ["frag", op, ident, [self.diagram_items(depth) for _ in range(operands)]]

    def number_messages(self, items, counter):
        for item in items:
            if item[0] == "msg":
                counter[0] += 1
                item[1] = str(counter[0])
            else:
                for operand in item[3]:
                    self.number_messages(operand, counter)

    def diagram_lines(self, items, faults):
        lines = []
        for item in items:
            if item[0] == "msg":
                lines.append(item[1])
                continue
            _, op, ident, operands = item
            suffix = "(%s)" % ident
            if "suffix" in faults and self.chance(0.3):
                suffix = ""  # a marker without "(": the range error
            if "same-id" in faults and self.chance(0.3):
                suffix = "(same)"
            if op == "STRICT":
                lines.append("STRICT_BEGIN" + suffix)
                lines += self.diagram_lines(operands[0], faults)
                lines.append("STRICT_END" + ("" if self.chance(0.5) else suffix))
                continue
            lines.append(op + "_BEGIN" + suffix)
            for operand in operands:
                lines.append(op + "_OPERAND_BEGIN" + suffix)
                lines += self.diagram_lines(operand, faults)
                if "unclosed" in faults and self.chance(0.3):
                    continue
                lines.append(op + "_OPERAND_END" + suffix)
            if "unclosed" in faults and self.chance(0.3):
                continue
            lines.append(op + "_END" + suffix)
        return lines

    def walk_diagram(self, items, out):
        """A run that the diagram allows (most of the time): appends message
        values to out. Returns True when a break left the enclosing
        fragment."""
        for item in items:
            if item[0] == "msg":
                out.append(item[1])
                continue
            _, op, _, operands = item
            if op in ("STRICT", "CONSIDER"):
                if self.walk_diagram(operands[0], out):
                    return True
            elif op == "ALT":
                if self.chance(0.9):
                    self.walk_diagram(self.pick(operands), out)
            elif op == "OPT":
                if self.chance(0.5):
                    self.walk_diagram(operands[0], out)
            elif op == "LOOP":
                for _ in range(self.weighted([(0, 2), (1, 4), (2, 3), (3, 1)])):
                    self.walk_diagram(operands[0], out)
            elif op == "BREAK":
                if self.chance(0.4):
                    self.walk_diagram(operands[0], out)
                    if self.chance(0.5):
                        return True
        return False

    def mutate(self, steps, foreign):
        """Faults of a recorded run: a step dropped, repeated, swapped, one
        that goes backwards, one that the model does not know."""
        steps = list(steps)
        for _ in range(self.weighted([(1, 6), (2, 3), (3, 1)])):
            kind = self.r.randrange(6)
            if kind == 0 and steps:
                del steps[self.r.randrange(len(steps))]
            elif kind == 1 and steps:
                i = self.r.randrange(len(steps))
                steps.insert(i, steps[i])
            elif kind == 2 and len(steps) > 1:
                i = self.r.randrange(len(steps) - 1)
                steps[i], steps[i + 1] = steps[i + 1], steps[i]
            elif kind == 3 and len(steps) > 1:
                i = self.r.randrange(1, len(steps))
                steps.insert(i, steps[self.r.randrange(i)])
            elif kind == 4:
                steps.insert(self.r.randrange(len(steps) + 1), foreign())
            elif steps:
                del steps[self.r.randrange(len(steps)):]
        return steps

    # ----------------------------------------------------------- charts
    def chart(self, flow, short, start_statement, ending, exit_statement):
        """Records of a statechart or flowchart, the first one the start
        state; returns (records, a walk's assertions)."""
        records = []
        asserted = {}

        def state(name, parent=None, kind="State"):
            rec = {"kind": "state", "name": name, "guid": self.guid() if self.chance(0.7) else "s%d_%s" % (len(records), name),
                   "type": kind, "parent": parent, "entry": [], "exit": [], "internal": [],
                   "default": None, "outs": []}
            records.append(rec)
            return rec

        def transition(source, target, name=None):
            rec = {"kind": "transition", "name": name or "t%d" % len(records),
                   "guid": self.guid() if self.chance(0.7) else "t%d" % len(records),
                   "action": [], "target": target}
            records.append(rec)
            if source is not None:
                source["outs"].append(rec)
            return rec

        def assertion():
            self.chart_assertions += 1
            text = "ZKR_ASSERT_TRUE(%s_%d);" % (self.pick(["cond", "step", "check"]), self.chart_assertions)
            if self.chance(0.15):
                text = "ZKR_ASSERT_EQUAL(count_%d, %d);" % (self.chart_assertions, self.r.randrange(9))
            return text

        start = state("Start", kind=self.pick(["State", "Action"]))
        start["entry"].append(start_statement)
        count = self.r.randint(2, 6)
        states = []
        for i in range(count):
            s = state("S%d" % i, kind=self.pick(["State", "State", "Action", "Decision"]))
            states.append(s)
            if self.chance(0.75):
                s["entry"].append(assertion())
            elif self.chance(0.5):
                s["entry"].append("x = %d;" % i)
            if not flow:
                if self.chance(0.15):
                    s["internal"].append(assertion())
                if self.chance(0.12):
                    # An asserting exit action is a barrier that the step
                    # search never passes: rare.
                    s["exit"].append(assertion() if self.chance(0.15) else "log();")
            if self.chance(0.25):
                # A composite state: children, a default transition into the
                # first, sometimes a local termination inside.
                children = []
                for j in range(self.r.randint(1, 2)):
                    c = state("S%dC%d" % (i, j), parent=s)
                    if self.chance(0.8):
                        c["entry"].append(assertion())
                    children.append(c)
                d = transition(None, children[0], "init")
                s["default"] = d
                if len(children) > 1:
                    transition(children[0], children[1])
                if self.chance(0.9 if flow else 0.5):
                    lt = state("S%dEnd" % i, parent=s, kind="LocalTermination")
                    transition(children[-1], lt)
                elif self.chance(0.3):
                    transition(children[-1], children[0])
        end = state("End", kind="LocalTermination")
        if self.chance(0.3):
            end["entry"].append('ZKR_ASSERT_TRUE("Finished test case: %s");' % short)
        term = None
        if not flow and self.chance(0.3):
            term = state("Stop", kind="Termination")
        transition(start, states[0])
        top = [s for s in states if s["parent"] is None]
        for i, s in enumerate(states):
            if s["parent"] is not None:
                continue
            later = [t for t in top if top.index(t) > top.index(s)]
            targets = []
            if later:
                targets.append(later[0])
            else:
                targets.append(end)
            if self.chance(0.35):
                targets.append(self.pick(top + [end] + ([term] if term else [])))
            if self.chance(0.1):
                targets.append(s)  # self-loop
            for target in targets:
                t = transition(s, target)
                if not flow and self.chance(0.2):
                    t["action"].append(assertion() if self.chance(0.6) else "send();")
        if self.fault(0.1):
            # An out transition that names no record.
            self.pick(top)["outs"].append({"guid": "missing-" + self.guid()[:8], "kind": "ghost"})
        # A walk through the chart to its end (or, for a test case that
        # stops early, only some of the way), recording what is asserted.
        walk = [start_statement]
        current = start
        cut = self.r.randint(1, 8) if ending in ("open", "user-exit") else None
        for _ in range(40):
            if cut is not None and len(walk) > cut:
                break
            if not flow and current["internal"] and self.chance(0.3):
                walk += current["internal"]
            if current["default"] and (flow or self.chance(0.9)):
                t = current["default"]
            else:
                outs = [o for o in current["outs"] if o.get("kind") == "transition"]
                leaves = not flow or current["type"] == "LocalTermination"
                if not outs and current["parent"] is not None and leaves:
                    outs = [o for o in current["parent"]["outs"] if o.get("kind") == "transition"]
                if not outs:
                    break
                if not flow:
                    walk += [a for a in current["exit"] if "ZKR_ASSERT" in a]
                t = outs[0] if self.chance(0.6) else self.pick(outs)
            if not flow:
                walk += [a for a in t["action"] if "ZKR_ASSERT" in a]
            current = t["target"]
            walk += [a for a in current["entry"] if "ZKR_ASSERT" in a and "Finished" not in a]
            if current["type"] in ("LocalTermination", "Termination") and current["parent"] is None:
                break
        if ending == "user-exit":
            # The user left: the chart knows the way out (unless the test
            # case is not clean, then perhaps not).
            if not self.fault(0.3):
                aborted = state("Aborted")
                aborted["entry"].append(exit_statement)
                transition(current, aborted, "userExit")
            walk.append(exit_statement)
        return records, walk

    def chart_lines(self, records, flow, unsupported):
        lines = ["FLOWCHART_TEST" if flow else "STATECHART_TEST"]
        if self.chance(0.1):
            lines.insert(0, "A comment line before the kind")
        for rec in records:
            lines.append("----------")
            if rec["kind"] == "state":
                lines += ["STATE_NAME:", rec["name"], "GUID:", rec["guid"], "STATE_TYPE:", rec["type"]]
                parent = rec["parent"]
                lines += ["PARENT_NAME:", parent["name"] if parent else "ROOT",
                          "PARENT_GUID:", parent["guid"] if parent else "ROOT"]
                for key, field in (("STATE_ACTION_ENTRY:", "entry"), ("STATE_ACTION_EXIT:", "exit"),
                                   ("STATE_ACTION_INTERNAL:", "internal")):
                    if rec[field]:
                        lines.append(key)
                        for action in rec[field]:
                            if self.chance(0.1) and len(action) > 8:
                                lines += [action[:6], action[6:]]  # joined again
                            else:
                                lines.append(action)
                if rec["default"]:
                    lines += ["DEFAULT_TRANSITION:", rec["default"]["guid"]]
                if rec["outs"]:
                    lines.append("OUT_TRANSITIONS:")
                    lines += [o["guid"] for o in rec["outs"]]
            else:
                lines += ["TRANSITION_NAME:", rec["name"], "GUID:", rec["guid"]]
                if rec["action"]:
                    lines.append("TRANSITION_ACTION:")
                    lines += rec["action"]
                lines += ["TRANSITION_TARGET:", rec["target"]["guid"]]
        lines.append("----------")
        if unsupported:
            i = self.r.randrange(2, len(lines))
            lines.insert(i, self.pick(["SUB_STATECHART", "STATE_TYPE:\nDiagramRef",
                                       "STATE_TYPE:\nAndState", "STATE_TYPE:\nHistory",
                                       "STATE_TYPE:\nStub"]))
        # Blanks are removed by the reader; tabs are not.
        out = []
        for line in lines:
            x = self.r.random()
            if x < 0.05:
                line = "  " + line
            elif x < 0.07:
                line = "\t" + line
            elif x < 0.1 and line.startswith("ZKR") and self.fault(0.5):
                line = line.replace("(", "(\t", 1)  # never matches again
            out.append(line)
        if self.fault(0.06):
            out.insert(self.r.randrange(1, len(out)), "STATE_NAME: ValueOnTheKeyLine")
        return out

    # ----------------------------------------------------------- test cases
    def test_case(self, case):
        """Fills case["ver"] (lines or None) and case["records"] (a list of
        (statement, result, detail)) for one test case."""
        kind = case["kind"]
        short = case["short"]
        sdi = self.pick(SDI_NAMES)
        records = []
        ver = None
        final = None
        sd_start = self.sd_statement(sdi, "start", "Starting test case: " + short)
        code_start = 'ZKR_ASSERT_TRUE("Starting test case: %s");' % short
        if kind in ("sd", "sd-nover", "par", "sd-fault"):
            items = self.diagram_items(0)
            if self.chance(0.8):
                items.append(["msg", None])
            counter = [0]
            self.number_messages(items, counter)
            total = counter[0]
            faults = set()
            if kind == "sd-fault":
                self.dirty = True
                faults.add(self.pick(["suffix", "unclosed", "same-id", "suffix"]))
            lines = ["SD_TEST"] + self.diagram_lines(items, faults)
            if kind == "par":
                i = self.r.randrange(1, len(lines) + 1)
                lines[i:i] = ["PAR_BEGIN(p1)", "PAR_OPERAND_BEGIN(p1)", str(total),
                              "PAR_OPERAND_END(p1)", "PAR_END(p1)"]
            if self.fault(0.06):
                lines.insert(self.r.randrange(1, len(lines) + 1), "")  # an empty line
            if self.fault(0.06):
                lines.append("")
            if self.chance(0.1):
                lines.insert(0, self.pick(["CODE_TEST", "STATE_NAME:", "GUID:", "PAR_BEGIN(early)"]))
            ver = lines if kind != "sd-nover" else None
            steps = []
            self.walk_diagram(items, steps)
            if self.fault(0.6):
                case["mutated"] = True
                steps = self.mutate(steps, lambda: self.pick([str(total + 1), "0", "99", "1a", str(self.r.randint(1, max(1, total)))]))
            if case["ending"] == "user-exit" and steps and self.chance(0.7):
                del steps[self.r.randrange(len(steps)):]  # the user left early
            maximum = str(total)
            if self.fault(0.08):
                maximum = self.pick(["0", str(total + 2), "x", "%d - trailing" % total])
            records.append((sd_start, None, self.pick(["", "", "Starting test case: " + short])))
            for value in steps:
                text = self.progress_text(value, maximum)
                statement = self.sd_statement(sdi, "m" + value, text)
                if self.fault(0.05):
                    statement = self.half_edit(statement)
                detail = self.pick(["", text])
                if self.fault(0.1):
                    detail = "expected other"
                records.append((statement, "fail" if self.fault(0.1) else "pass", detail))
                if self.chance(0.08):
                    # An SD assertion without a progress piece.
                    records.append((self.sd_statement(sdi, "note", self.pick(USER_WORDS)), "pass", ""))
            final = self.sd_statement(sdi, "end", "Finished test case: " + short)
            exit_statement = self.sd_statement(sdi, "exit", "Customer left the checkout - NOFAIL_INTENDED_USER_EXIT")
        elif kind in ("statechart", "flowchart", "chart-unsupported"):
            flow = kind == "flowchart" or (kind == "chart-unsupported" and self.chance(0.5))
            exit_statement = 'ZKR_ASSERT_TRUE("stopped - NOFAIL_INTENDED_USER_EXIT");'
            chart, walk = self.chart(flow, short, code_start, case["ending"], exit_statement)
            ver = self.chart_lines(chart, flow, kind == "chart-unsupported")
            if self.fault(0.5):
                case["mutated"] = True
                foreign = lambda: "ZKR_ASSERT_TRUE(unknown_%d);" % self.r.randrange(99)
                walk = [walk[0]] + self.mutate(walk[1:], foreign)
            records.append((walk[0], None, ""))
            for statement in walk[1:]:
                if self.chance(0.3):
                    statement = statement.replace("(", "( ", 1)  # blanks are removed again
                records.append((statement, "fail" if self.fault(0.08) else "pass",
                                self.pick(["", "", "", "detail of a chart step"])))
            final = 'ZKR_ASSERT_TRUE("Finished test case: %s");' % short
            exit_statement = None  # in the walk already
        else:  # code tests with CODE_TEST, without a file, with a kind-less file
            if kind == "code":
                ver = ["CODE_TEST"]
            elif kind == "nokind":
                ver = self.pick([[], ["just a comment"], ["", ""], ["STATE_NAME:", "X"]])
            records.append((code_start, None, ""))
            for _ in range(self.r.randint(0, 6)):
                statement = self.code_statement()
                if self.fault(0.06):
                    statement = self.half_edit(statement)
                if self.fault(0.06):
                    statement = self.sd_statement(sdi, "stray", "stray SD assertion")
                records.append((statement, "fail" if self.fault(0.25) else "pass",
                                self.weighted([("", 6), ("price was 0", 1), ("3 items in the cart", 1)])))
            final = 'ZKR_ASSERT_TRUE("Finished test case: %s");' % short
            exit_statement = 'ZKR_ASSERT_TRUE("NOFAIL_INTENDED_USER_EXIT by the user");'
        ending = case["ending"]
        if ending == "finished":
            records.append((final, "pass", self.pick(["", "", "Finished test case: " + short])))
        elif ending == "no-colon":
            records.append((final.replace("Finished test case:", "Finished test case"), "pass", ""))
        elif ending == "user-exit" and exit_statement:
            records.append((exit_statement, "pass", ""))
        # "open": no finish at all
        case["records"] = records
        case["ver"] = ver

    # ----------------------------------------------------------- scenario
    def build(self, folder):
        r = self.r
        self.placed = {}
        self.fragment_count = 0
        self.chart_assertions = 0
        os.makedirs(folder, exist_ok=True)
        context = self.pick(CONTEXTS)
        context_short = context.split(":")[-1].split(".")[-1]
        form = "full" if self.chance(0.6) else "short"
        source_count = r.randint(1, 3)
        self.source_lines = [[] for _ in range(source_count)]

        # Test cases.
        cases = []
        used = set()
        for i in range(r.randint(1, 5)):
            if self.chance(0.05):
                short = context_short  # its files are overwritten by the context's
            elif self.chance(0.04):
                short = self.pick(ODD_SHORT_NAMES)
            else:
                short = self.pick(SHORT_NAMES)
            if short in used:
                short += str(i)
            used.add(short)
            kind = self.weighted([
                ("sd", 34), ("statechart", 15), ("flowchart", 12), ("code", 14),
                ("code-nover", 5), ("sd-nover", 3), ("par", 3), ("chart-unsupported", 4),
                ("nokind", 3), ("sd-fault", 4)])
            ending = self.weighted([("finished", 72), ("open", 11), ("user-exit", 11),
                                    ("no-colon", 3), ("never-started", 3)])
            full = context + "." + short
            if self.chance(0.04):
                full = context + ".Sub." + short  # not a member
            elif self.chance(0.04):
                full = "Other.Place." + short
            cases.append({"short": short, "full": full, "kind": kind, "ending": ending})
        numbers = list(range(1, len(cases) + 1))
        if self.chance(0.2):
            numbers = sorted(r.sample(range(1, 40), len(cases)))
        r.shuffle(numbers)
        for case, number in zip(cases, numbers):
            case["number"] = number
            case["number_text"] = str(number)
        odd = self.r.random()
        if odd < 0.04:
            cases[0]["number"] = 0
            cases[0]["number_text"] = "abc"
        elif odd < 0.06:
            cases[0]["number"] = -3
            cases[0]["number_text"] = "-3"
        elif odd < 0.08:
            cases[0]["number"] = 2147483647
            cases[0]["number_text"] = "2147483647"
        for case in cases:
            case["dirty"] = self.chance(0.45)
            self.dirty = case["dirty"]
            self.test_case(case)
            case["dirty"] = self.dirty

        # The log.
        def path_field(index):
            name = "src/f%d.cpp" % index
            return self.weighted([(name.replace("/", "\\"), 5), ("..\\" + name.replace("/", "\\"), 2),
                                  ("C:\\work\\" + name.replace("/", "\\"), 1), ("elsewhere\\x.cpp", 1),
                                  (name, 1)])

        def result_text(result, number_text):
            if result is None:
                return number_text
            if result == "fail":
                return self.weighted([("0", 10), ("00", 1), (" 0", 1)])
            return self.weighted([("1", 30), ("2", 1), ("-1", 1), ("x", 1)])

        log = []
        if self.chance(0.7):
            log.append("=== Test run %s started ===" % context)

        def emit(statement, result, detail, number_text):
            where = self.place(statement)
            rt = result_text(result, number_text)
            if form == "full":
                line = "FULLASSERTION=%s,%d,%s,%s-----%s" % (path_field(where[0] + 1), where[1], rt, detail, statement)
                if self.chance(0.01):
                    line = line.replace("-----", "----", 1)  # marker missing
                log.append(line)
            else:
                number = self.file_numbers[where[0]]
                tail = self.pick(["", " " + self.pick(USER_WORDS), " time 10:15:41"])
                log.append("ASSERTION=%d,%d,%s%s" % (number, where[1], rt.strip() if rt.strip() else "0", tail))
            if self.chance(0.06):
                log.append(self.pick(NOISE_LOG_LINES))

        self.file_numbers = list(range(1, source_count + 1))
        if self.chance(0.3):
            self.file_numbers = [n + 10 for n in self.file_numbers]
        order = list(cases)
        if self.chance(0.3):
            r.shuffle(order)
        self.dirty = True
        if self.chance(0.05):
            # Records before any test case starts are dropped.
            emit(self.code_statement(), "pass", "", "1")
        for case in order:
            if case["ending"] == "never-started":
                continue
            log.append("[10:15:4%d] Executing test case %s" % (r.randrange(10), case["full"]))
            number_text = case["number_text"]
            self.dirty = case["dirty"]
            if self.fault(0.05):
                number_text = str(case["number"] + 50)  # a number the info file does not know
            records = case["records"]
            if self.fault(0.05):
                # Started twice: only the second list is reachable.
                for statement, result, detail in records[: max(1, len(records) // 2)]:
                    emit(statement, result, detail, number_text)
            for statement, result, detail in records:
                emit(statement, result, detail, number_text)
        self.dirty = True
        if self.chance(0.05):
            emit(self.code_statement(), "pass", "", "1")  # after the last, or into an open one
        if self.chance(0.05):
            other = "ASSERTION=1,1,1" if form == "full" else "FULLASSERTION=src\\f1.cpp,1,1,-----ZKR_ASSERT_TRUE(x);"
            log.insert(self.r.randrange(len(log) + 1), other)  # the first record line decides the form
        log.append("=== Test run finished ===")

        # The info file.
        info = []
        if self.chance(0.9):
            info += ["OstraVersionNumber 7.5", "OstraBuildNumber %d" % r.randrange(2000),
                     "OstraKorvanVersionNumber 3.1", "OstraKorvanBuildNumber 88"]
        if self.chance(0.9):
            info += ["ActiveProject " + self.pick(["Shop", "Bank & Co", "Gauges"]),
                     "ActiveComponent Checkout", "ActiveConfiguration " + self.pick(["Debug", "Release"])]
        elif self.chance(0.5):
            info += ["ActiveProject"]
        if self.chance(0.05):
            info = [line + "\r" for line in info]
        testcase_lines = []
        for case in cases:
            sd_name = self.pick(["Sd" + case["short"], "-", "Sd Main", ""])
            if sd_name:
                testcase_lines.append("TESTCASE %s %s %s" % (case["full"], case["number_text"], sd_name))
            else:
                testcase_lines.append("TESTCASE %s %s" % (case["full"], case["number_text"]))
        if self.chance(0.05):
            testcase_lines.append("TESTCASE %s.Ghost %d SdGhost" % (context, 60))
        if self.chance(0.03):
            testcase_lines.append("  TESTCASE %s.Indented 61 Sd" % context)
        if self.chance(0.5):
            r.shuffle(testcase_lines)
        info += testcase_lines
        for index, number in enumerate(self.file_numbers):
            if self.chance(0.06):
                continue  # a missing FILE entry
            path = self.weighted([("./src/f%d.cpp" % (index + 1), 6), ("src/f%d.cpp" % (index + 1), 2),
                                  ("src\\f%d.cpp" % (index + 1), 1)])
            info.append('FILE "%s" %d' % (path, number))
        if self.chance(0.1):
            info.append('FILE "./src/missing.cpp" 9')
        if self.chance(0.05):
            info.append('FILE "D:/work/src/f1.cpp" 8')
        if self.chance(0.3):
            r.shuffle(info)

        info_name = self.pick(["run.info", "run.info", "shop.info", "info file.txt"])
        log_name = self.pick(["run.log", "run.log", "results.log", "result file.log"])
        write_lines(os.path.join(folder, info_name), info)
        crlf = self.chance(0.03)
        write_lines(os.path.join(folder, log_name), log, crlf)
        os.makedirs(os.path.join(folder, "src"), exist_ok=True)
        for index, lines in enumerate(self.source_lines):
            write_lines(os.path.join(folder, "src", "f%d.cpp" % (index + 1)), lines)
        out = os.path.join(folder, "out")
        os.makedirs(out, exist_ok=True)
        for case in cases:
            if case["ver"] is not None:
                lines = case["ver"]
                if self.chance(0.05):
                    lines = [line + "\r" for line in lines]
                write_lines(os.path.join(out, case["short"] + ".ver"), lines)
            if case["kind"].startswith("sd") and self.chance(0.2):
                for sub in ("spec_jpegs", "result_jpegs"):
                    if self.chance(0.7):
                        os.makedirs(os.path.join(out, sub), exist_ok=True)
                        with open(os.path.join(out, sub, case["short"] + ".jpg"), "wb") as f:
                            f.write(b"\xff\xd8\xff\xe0 not really a picture")

        # The runs.
        members = [c for c in cases if c["full"] == context + "." + c["short"]]
        def tcase_name():
            x = self.r.random()
            if x < 0.7 and members:
                return self.pick(members)["full"]
            if x < 0.82:
                return self.pick(cases)["full"]
            if x < 0.9:
                return self.pick(cases)["short"]  # the short name is not enough
            if x < 0.95:
                return context + ".Nobody"
            return context
        runs = [{"select": ["-tcontext", context]}]
        for _ in range(3):
            runs.append({"select": ["-tcase", tcase_name()]})
        history_files = {}
        for run in runs:
            args = ["-infofile", info_name, "-resultfile", log_name,
                    "-outdirectory", self.weighted([("out", 12), ("./out", 2), (".\\out", 1),
                                                    ('"out"', 1), ("out/", 1)])]
            x = self.r.random()
            if x < 0.01:
                args[1] = "missing.info"
            elif x < 0.02:
                args[3] = "missing.log"
            elif x < 0.03:
                args[5] = "out/new"  # created by qendor
            elif x < 0.035:
                args[5] = "nowhere/new"  # no parent: 25
            elif x < 0.045:
                args = args[:4]  # incomplete: usage
            pieces = [args[i:i + 2] for i in range(0, len(args), 2)] + [run["select"]]
            if self.chance(0.2):
                pieces.append(["-language", self.pick(["ENU", "CHS", "CHT", "KOR", "JPN", "XYZ"])])
            if self.chance(0.3):
                pieces.append(["-explain"])
            if self.chance(0.05):
                pieces.append(["stray"])
            if self.chance(0.03):
                pieces.append(["-tcontext", context])  # -tcase wins
            if self.chance(0.25):
                hist = self.weighted([("hist", 6), ("hist/new", 2), ("hist\\deep", 1)])
                pieces.append(["-history", hist])
                selected = run["select"][1]
                name = selected.split(":")[-1].split(".")[-1]
                if hist == "hist" and self.chance(0.6):
                    history_files[name] = self.history_text(
                        "rk_testcontext" if run["select"][0] == "-tcontext" else "rk_testcase",
                        selected, [c for c in cases if c["full"] == selected or
                                   (run["select"][0] == "-tcontext" and c in members)])
            if self.chance(0.5):
                self.r.shuffle(pieces)
            run["args"] = [word for piece in pieces for word in piece]
            del run["select"]
        if history_files:
            os.makedirs(os.path.join(folder, "hist"), exist_ok=True)
            for name, text in history_files.items():
                with open(os.path.join(folder, "hist", name + ".history.xml"), "w", encoding="utf-8",
                          errors="surrogateescape") as f:
                    f.write(text)
        env = {"USER": "tester", "HOSTNAME": "testhost"}
        x = self.r.random()
        if x < 0.05:
            env["USERNAME"] = "Zoë & <qa>"
        elif x < 0.08:
            env["USERNAME"] = ""
        elif x < 0.1:
            del env["HOSTNAME"]
        plan = {"seed": self.seed, "form": form, "context": context, "env": env, "runs": runs,
                "cases": [{k: c.get(k, False) for k in ("full", "number_text", "kind", "ending", "mutated", "dirty")} for c in cases]}
        with open(os.path.join(folder, "plan.json"), "w") as f:
            json.dump(plan, f, indent=1)
        return plan

    def history_text(self, kind, fullname, cases):
        """An earlier history: runs of 2001, so that masking never hides them."""
        x = self.r.random()
        if x < 0.1:
            return "<History kind=\"rk_testcontext\"><Run number=\"1\"" + "\n"  # not well-formed
        if x < 0.15:
            fullname = fullname + ".Else"  # belongs to another owner
        lines = ['<?xml version="1.0"?>', '<History kind="%s" fullname="%s">' % (kind, xml_escape(fullname))]
        count = self.r.randint(1, 12)
        statuses = ["PASSED", "PASSED", "FAILED", "ERROR", "NOT_TERMINATED", "UNDEFINED"]
        for n in range(count, 0, -1):
            lines.append('  <Run number="%d" time="2001-02-%02dT10:00:%02dZ" status="%s">'
                         % (n, 1 + n % 28, n % 60, self.pick(statuses[:3])))
            for c in cases:
                if self.chance(0.85):
                    name = c["full"].split(".")[-1]
                    lines.append('    <TestCaseRun name="%s" fullname="%s" status="%s" verificationResult="%s"/>'
                                 % (xml_escape(name), xml_escape(c["full"]), self.pick(statuses),
                                    self.pick(["Result verification successful", "Result verification failed"])))
            if self.chance(0.2):
                lines.append('    <TestCaseRun name="Gone" fullname="Pkg.Gone" status="PASSED" verificationResult=""/>')
            lines.append("  </Run>")
        lines.append("</History>")
        return "\n".join(lines) + "\n"


def xml_escape(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace('"', "&quot;")


def write_lines(path, lines, crlf=False):
    end = "\r\n" if crlf else "\n"
    with open(path, "w", encoding="utf-8", errors="surrogateescape", newline="") as f:
        f.write("".join(line + end for line in lines))


def generate(folder, seed):
    return Generator(seed).build(folder)


def main():
    if len(sys.argv) != 3:
        sys.stderr.write("usage: generate.py DIR SEED\n")
        return 2
    generate(sys.argv[1], int(sys.argv[2]))
    return 0


if __name__ == "__main__":
    sys.exit(main())
