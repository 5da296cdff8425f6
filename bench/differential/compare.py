#!/usr/bin/env python3
# Runner of the differential check (see README.md beside it; run.sh starts
# it). A developer tool that is not run in CI, so it may be written in
# python3.
#
#   compare.py BEFORE AFTER [COUNT] [SEED]
#
# For each of COUNT generated scenarios it makes the scenario's runs (a
# context run and three -tcase runs, some with -explain, -history or
# -language) with both binaries, each binary in a fresh copy of the
# scenario, and compares exit status, standard output, standard error and
# every file left in the copy (names, permission bits, bytes) after masking
# the moments of the run. Exit status 0 when nothing differs, 1 otherwise,
# 2 on a usage error.
#
# Environment:
#   QENDOR_DIFF_NO_HTML=1     xsltproc is not on the search path of either
#                             binary (faster; HTML files are then not made)
#   QENDOR_DIFF_JOBS=N        scenarios run side by side (default 2)
#   QENDOR_DIFF_WORK=DIR      work folder (default: a new one under /tmp)
#   QENDOR_DIFF_KEEP=1        keep the work folder even without differences
#   QENDOR_DIFF_SHOW=N        differences shown in full (default 5)
#   QENDOR_DIFF_FINDINGS=DIR  where scenarios that crashed, ended with 30 or
#                             a signal, or timed out are copied (default
#                             WORK/findings)
#   QENDOR_DIFF_SLEEP=S       wait S seconds between the two binaries' runs,
#                             so that their clocks differ (checks the masking)
#   QENDOR_DIFF_IGNORE_STDERR=1  standard error is not compared
#   QENDOR_DIFF_TIMEOUT=S     seconds one run may take (default 60)
#   QENDOR_DIFF_FIRST=I       start at scenario I of the seed (COUNT 1 with
#                             the index that a difference names replays it)
import collections
import concurrent.futures
import datetime
import difflib
import os
import re
import shutil
import stat
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # no __pycache__ in the source tree
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import generate  # noqa: E402

STANDARD_PATH = "/usr/local/bin:/usr/bin:/bin"

# The moments a run writes: the header's "time" (strftime "%#c" in the C
# locale) and the history's ISO 8601 times. Only moments inside the run's own
# window are masked, so that times copied from an earlier history still count.
C_TIME = re.compile(rb"(Mon|Tue|Wed|Thu|Fri|Sat|Sun) (Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
                    rb"[ 0-3][0-9] [0-2][0-9]:[0-5][0-9]:[0-6][0-9] [0-9]{4}")
ISO_TIME = re.compile(rb"[0-9]{4}-[01][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-6][0-9]Z")


def mask_times(data, start, end):
    def replace(pattern, fmt):
        def one(match):
            try:
                moment = datetime.datetime.strptime(match.group(0).decode(), fmt)
            except ValueError:
                return match.group(0)
            seconds = moment.replace(tzinfo=datetime.timezone.utc).timestamp()
            if start - 2 <= seconds <= end + 2:
                return b"<TIME>"
            return match.group(0)
        return lambda text: pattern.sub(one, text)
    data = replace(C_TIME, "%a %b %d %H:%M:%S %Y")(data)
    return replace(ISO_TIME, "%Y-%m-%dT%H:%M:%SZ")(data)


def snapshot(root):
    """Every entry below root: relative path -> (kind, permission bits, bytes)."""
    entries = {}
    for folder, dirs, files in os.walk(root):
        dirs.sort()
        for name in dirs + sorted(files):
            path = os.path.join(folder, name)
            rel = os.path.relpath(path, root)
            info = os.lstat(path)
            mode = stat.S_IMODE(info.st_mode)
            if stat.S_ISDIR(info.st_mode):
                entries[rel] = ("dir", mode, b"")
            elif stat.S_ISLNK(info.st_mode):
                entries[rel] = ("link", mode, os.readlink(path).encode())
            else:
                with open(path, "rb") as f:
                    entries[rel] = ("file", mode, f.read())
    return entries


class Runner:
    def __init__(self, before, after, count, seed):
        self.binaries = {"before": before, "after": after}
        self.count = count
        self.seed = seed
        self.first = int(os.environ.get("QENDOR_DIFF_FIRST", "0"))
        self.no_html = os.environ.get("QENDOR_DIFF_NO_HTML") == "1"
        self.jobs = int(os.environ.get("QENDOR_DIFF_JOBS", "2"))
        self.show = int(os.environ.get("QENDOR_DIFF_SHOW", "5"))
        self.sleep = float(os.environ.get("QENDOR_DIFF_SLEEP", "0"))
        self.timeout = float(os.environ.get("QENDOR_DIFF_TIMEOUT", "60"))
        self.ignore_stderr = os.environ.get("QENDOR_DIFF_IGNORE_STDERR") == "1"
        self.work = os.environ.get("QENDOR_DIFF_WORK") or tempfile.mkdtemp(prefix="diffcheck.", dir="/tmp")
        os.makedirs(self.work, exist_ok=True)
        self.findings = os.environ.get("QENDOR_DIFF_FINDINGS") or os.path.join(self.work, "findings")
        self.empty_bin = os.path.join(self.work, "empty-bin")
        os.makedirs(self.empty_bin, exist_ok=True)
        self.statuses = collections.Counter()
        self.run_kinds = collections.Counter()
        self.verification = collections.Counter()
        self.case_status = collections.Counter()
        self.case_kinds = collections.Counter()
        self.forms = collections.Counter()
        self.differences = []  # (scenario, run, text)
        self.found = []  # (scenario path, run, what)
        self.runs = 0
        self.files = 0
        self.html = 0
        self.keep = os.environ.get("QENDOR_DIFF_KEEP") == "1"

    def environment(self, plan):
        env = {"PATH": self.empty_bin if self.no_html else STANDARD_PATH, "TZ": "UTC", "LC_ALL": "C",
               "LANG": "C", "HOME": "/nonexistent"}
        env.update(plan["env"])
        return env

    def run_one(self, binary, scenario, folder, args, env):
        if os.path.exists(folder):
            shutil.rmtree(folder)
        shutil.copytree(scenario, folder, ignore=shutil.ignore_patterns("plan.json"))
        try:
            done = subprocess.run([binary] + args, cwd=folder, env=env, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=self.timeout)
            status = done.returncode
            out, err = done.stdout, done.stderr
        except subprocess.TimeoutExpired as e:
            status = "timeout"
            out, err = e.stdout or b"", e.stderr or b""
        return status, out, err

    def scenario(self, index):
        seed = self.seed * 1000003 + index
        name = "s%05d" % index
        scenario = os.path.join(self.work, "scenarios", name)
        if os.path.exists(scenario):
            shutil.rmtree(scenario)
        plan = generate.generate(scenario, seed)
        env = self.environment(plan)
        results = {"differences": [], "statuses": [], "verification": [], "case_status": [], "found": [],
                   "files": 0, "html": 0}
        keep = False
        for number, run in enumerate(plan["runs"]):
            outcome = {}
            start = time.time()
            for which in ("before", "after"):
                folder = os.path.join(self.work, "runs", name, "r%d" % number, which)
                outcome[which] = self.run_one(self.binaries[which], scenario, folder, run["args"], env)
                if which == "before" and self.sleep:
                    time.sleep(self.sleep)
            end = time.time()
            base = os.path.join(self.work, "runs", name, "r%d" % number)
            text = self.compare(outcome, base, start, end)
            status = outcome["before"][0]
            kind = "context" if "-tcontext" in run["args"] and "-tcase" not in run["args"] else "tcase"
            results["statuses"].append((kind, status))
            for rel, (k, _, data) in snapshot(os.path.join(base, "before")).items():
                if k == "file" and rel.endswith(".xml") and not rel.endswith(".history.xml"):
                    for tag in re.finditer(rb"<TestCaseResult [^>]*>", data):
                        v = re.search(rb'verificationResult="([^"]*)"', tag.group(0))
                        s = re.search(rb' status="([^"]*)"', tag.group(0))
                        results["verification"].append(v.group(1).decode() if v else "(none)")
                        results["case_status"].append(s.group(1).decode() if s else "(none)")
            for which in ("before", "after"):
                st = outcome[which][0]
                if st == "timeout" or st == 30 or (isinstance(st, int) and st < 0):
                    target = os.path.join(self.findings, name)
                    if not os.path.exists(target):
                        shutil.copytree(scenario, target)
                    results["found"].append((target, number, which, st))
            results["files"] += sum(1 for k, _, _ in snapshot(os.path.join(base, "before")).values() if k == "file")
            results["html"] += len([n for n in os.listdir(os.path.join(base, "before", "out"))
                                    if n.endswith(".html")]) if os.path.isdir(os.path.join(base, "before", "out")) else 0
            if text:
                results["differences"].append((scenario, number, run["args"], text))
                keep = True
            elif not self.keep:
                shutil.rmtree(base)
        if not keep and not self.keep:
            shutil.rmtree(os.path.join(self.work, "runs", name), ignore_errors=True)
            shutil.rmtree(scenario, ignore_errors=True)
        return plan, results

    def compare(self, outcome, base, start, end):
        lines = []
        b, a = outcome["before"], outcome["after"]
        if b[0] != a[0]:
            lines.append("exit status: before %s, after %s" % (b[0], a[0]))
        streams = [("stdout", 1)] + ([] if self.ignore_stderr else [("stderr", 2)])
        for label, i in streams:
            x, y = mask_times(b[i], start, end), mask_times(a[i], start, end)
            if x != y:
                lines.append("%s differs:" % label)
                lines += self.text_diff(x, y, label)
        before = snapshot(os.path.join(base, "before"))
        after = snapshot(os.path.join(base, "after"))
        for rel in sorted(set(before) | set(after)):
            if rel not in after:
                lines.append("only before: %s" % rel)
                continue
            if rel not in before:
                lines.append("only after: %s" % rel)
                continue
            kb, mb, db = before[rel]
            ka, ma, da = after[rel]
            if kb != ka:
                lines.append("%s: a %s before, a %s after" % (rel, kb, ka))
                continue
            if mb != ma:
                lines.append("%s: mode %o before, %o after" % (rel, mb, ma))
            if db != da:
                mdb, mda = mask_times(db, start, end), mask_times(da, start, end)
                if mdb != mda:
                    lines.append("%s differs:" % rel)
                    lines += self.text_diff(mdb, mda, rel)
        return "\n".join(lines)

    @staticmethod
    def text_diff(x, y, label):
        xs = x.decode("utf-8", "replace").splitlines()
        ys = y.decode("utf-8", "replace").splitlines()
        # Long HTML lines: cut them into pieces so a diff stays readable.
        def cut(lines):
            out = []
            for line in lines:
                while len(line) > 160:
                    out.append(line[:160])
                    line = line[160:]
                out.append(line)
            return out
        diff = list(difflib.unified_diff(cut(xs), cut(ys), "before/" + label, "after/" + label, lineterm="", n=2))
        if len(diff) > 40:
            diff = diff[:40] + ["... (%d more diff lines)" % (len(diff) - 40)]
        return ["    " + line for line in diff]

    def collect(self, plan, results):
        self.forms[plan["form"]] += 1
        for case in plan["cases"]:
            self.case_kinds[case["kind"]] += 1
        for kind, status in results["statuses"]:
            self.statuses[status] += 1
            self.run_kinds[kind] += 1
            self.runs += 1
        self.verification.update(results["verification"])
        self.case_status.update(results["case_status"])
        self.differences += results["differences"]
        self.files += results["files"]
        self.html += results["html"]
        self.found += results["found"]

    def main(self):
        began = time.time()
        print("differential check: before %s" % self.binaries["before"])
        print("                    after  %s" % self.binaries["after"])
        print("work folder %s; %d scenarios from seed %d%s; %d jobs%s" % (
            self.work, self.count, self.seed, " (from scenario %d)" % self.first if self.first else "", self.jobs,
            "; QENDOR_DIFF_NO_HTML=1: xsltproc hidden, no HTML made or compared" if self.no_html else ""))
        sys.stdout.flush()
        with concurrent.futures.ThreadPoolExecutor(max_workers=self.jobs) as pool:
            futures = [pool.submit(self.scenario, i) for i in range(self.first, self.first + self.count)]
            for done, future in enumerate(futures, 1):
                plan, results = future.result()
                self.collect(plan, results)
                if done % 100 == 0:
                    print("  %d scenarios, %d differences so far (%.0f s)" % (
                        done, len(self.differences), time.time() - began))
                    sys.stdout.flush()
        took = time.time() - began
        self.report(took)
        shutil.rmtree(self.empty_bin, ignore_errors=True)
        if not self.differences and not self.found and not self.keep:
            shutil.rmtree(self.work, ignore_errors=True)
        else:
            print("kept: %s" % self.work)
        return 0 if not self.differences else 1

    def report(self, took):
        print()
        print("scenarios: %d (%s)" % (self.count, ", ".join("%s form %d" % kv for kv in sorted(self.forms.items()))))
        print("runs: %d per binary (%s), %d in all" % (
            self.runs, ", ".join("%s %d" % kv for kv in sorted(self.run_kinds.items())), self.runs * 2))
        print("files compared: %d (per binary, input copies included; %d HTML reports in the output folders)"
              % (self.files, self.html))
        print("time: %.1f s" % took)
        print("exit statuses (before): " + ", ".join(
            "%s: %d" % (k, v) for k, v in sorted(self.statuses.items(), key=lambda kv: str(kv[0]).zfill(8))))
        print("generated test case kinds: " + ", ".join("%s %d" % kv for kv in sorted(self.case_kinds.items())))
        print("TestCaseResult status (before, every document): " + ", ".join(
            "%s %d" % kv for kv in sorted(self.case_status.items())))
        print("verificationResult (before, every document):")
        for text, n in self.verification.most_common():
            print("  %6d  %s" % (n, text))
        if self.found:
            print("runs that ended with 30 or a signal, or timed out: %d, in %d scenarios copied to %s" % (
                len(self.found), len({f[0] for f in self.found}), self.findings))
            for target, number, which, status in self.found[:6]:
                print("  %s run %d (%s): %s" % (target, number, which, status))
        print("differences: %d (runs, in %d scenarios)" % (
            len(self.differences), len({scenario for scenario, _, _, _ in self.differences})))
        for scenario, number, args, text in self.differences[: self.show]:
            print()
            print("=== %s, run %d: qendor %s" % (scenario, number, " ".join(args)))
            print("    (outputs kept in %s)" % os.path.join(self.work, "runs", os.path.basename(scenario), "r%d" % number))
            print("    replay: QENDOR_DIFF_FIRST=%d %s %s %s 1 %d" % (
                int(os.path.basename(scenario)[1:]), os.path.join(os.path.dirname(os.path.abspath(__file__)), "run.sh"),
                self.binaries["before"], self.binaries["after"], self.seed))
            print(text)


def main(argv):
    if len(argv) < 3 or len(argv) > 5:
        sys.stderr.write("usage: run.sh BEFORE_BINARY AFTER_BINARY [COUNT] [SEED]\n")
        return 2
    before, after = (os.path.abspath(p) for p in argv[1:3])
    for path in (before, after):
        if not os.access(path, os.X_OK):
            sys.stderr.write("not an executable: %s\n" % path)
            return 2
        if "qendor" in os.path.dirname(path):
            sys.stderr.write("warning: %s: the program looks for its stylesheets before the first "
                             "\"qendor\" in its path; this folder name breaks that\n" % path)
    count = int(argv[3]) if len(argv) > 3 else 1000
    seed = int(argv[4]) if len(argv) > 4 else 1
    return Runner(before, after, count, seed).main()


if __name__ == "__main__":
    sys.exit(main(sys.argv))
