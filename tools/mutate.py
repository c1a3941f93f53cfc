#!/usr/bin/env python3
"""Mutation testing: puts one fault at a time into the sources and counts the faults that no test notices.

It works on its own copy, BUILD_DIR/source, built in BUILD_DIR/build at -O1 and kept between runs; the sources in use
are only read. First the copy without a fault has to pass. The faults are then drawn at random: the same seed and the
same sources give the same list. The kinds of fault, each drawn with a weight of the root of the number of its places:

  constant    a real number times 1.1 (below 1e-6: times 1000; a zero becomes 0.1), an integer plus or minus one
  sign        binary + and -, += and -=, a unary minus removed
  operator    * and /, *= and /=
  index       an index or the bound of a for loop plus or minus one
  comparison  < and <=, > and >=, == and !=
  logic       && and ||
  boolean     true and false
  return      the return of `if (...) return ...;` dropped, which is how errors are handed on

No fault falls in comments, texts, preprocessor lines, static assertions, template parameter lists or generated files.
The search for places trusts the format: binary operators stand between blanks, brackets of templates do not.

A fault counts when it compiles and changes an object file. The test programs are built and run one after the other
with CTest, each test in a process of its own, the quickest program first and no further than the first failure; last
come the samples of the sweeps in bench/. Tests that exceed the time limit catch the fault as a hang. Afterwards the
file and the build tree are put back as they were, times included: a fault costs one incremental build, its removal none.

The report is written again after every fault; Ctrl-C ends with what there is. Expect survivors that change no result:
a start value, a tolerance, a larger array.

Typical use: nice -n 19 tools/mutate.py --count 30 --seed 1 --folder src/eos --report /tmp/faults.txt
"""

import argparse
import collections
import filecmp
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
OPTIONS = ["-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1", "-DTESSAREL_EXAMPLES=OFF",
           "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]
MEMORY = 4 << 30  # bytes that a test may ask for
SAMPLES = "samples"  # the sweeps of bench/ of which a sample is a test
SWEEPS = ["tessarel_round_trips", "tessarel_flash_sweep", "tessarel_envelope_sweep"]

TOKEN = re.compile(r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:\\\n|[^\n])*)
  |(?P<text>R"(?P<mark>[^(]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')
  |(?P<number>\.?\d(?:[eE][+-]|'(?=\w)|[\w.])*)|(?P<word>[A-Za-z_]\w*)
  |(?P<sign><<=|>>=|<=>|\.\.\.|::|\+\+|--|->|<<|>>|[<>=!]=|&&|\|\||[-+*/%&|^]=|.)""", re.X | re.S | re.M)
PAIRS = {"sign": "+ - += -=", "operator": "* / *= /=", "comparison": "< <= > >= == !=", "logic": "&& ||",
         "boolean": "true false"}
SWAP = {}  # token: kind of fault, token put in its place
for kind_of_pair, words in PAIRS.items():
    for one, other in zip(words.split()[::2], words.split()[1::2]):
        SWAP[one], SWAP[other] = (kind_of_pair, other), (kind_of_pair, one)

Fault = collections.namedtuple("Fault", "kind path start end options")


def closing(tokens, first, left, right):
    """Index of the token that closes the bracket opened at `first`."""
    depth = 0
    for i in range(first, len(tokens)):
        depth += tokens[i][1].count(left) - tokens[i][1].count(right)
        if depth <= 0:
            return i
    return len(tokens) - 1


def other_numbers(text):
    integer = re.fullmatch(r"(\d+)([uUlLzZ]*)", text)
    if integer:
        return [f"{int(integer[1]) + step}{integer[2]}" for step in (1, -1)]
    if not re.fullmatch(r"[\d.]+([eE][+-]?\d+)?", text):
        return []
    value = float(text)
    return [repr(0.1 if value == 0 else value * (1000 if value < 1e-6 else 1.1))]


def faults_of(path, source):
    """All places of a file where a fault can be put."""
    tokens = [(m.lastgroup, m.group(), m.start(), m.end()) for m in TOKEN.finditer(source) if m.lastgroup != "skip"]
    found = []

    def ends_value(token):  # also the name in front of an index
        return token[1] in (")", "]") or token[0] in ("word", "number") and token[1] not in ("return", "case", "else")

    i = 1
    while i < len(tokens) - 1:
        _, text, start, end = tokens[i]
        following = tokens[i + 1][1]
        spaced = source[start - 1].isspace() and source[end].isspace()
        if text == "static_assert":
            i = closing(tokens, i + 1, "(", ")")
        elif text == "template" and following == "<":
            i = closing(tokens, i + 1, "<", ">")
        elif text == "operator":
            i += 1
        elif tokens[i][0] == "number":
            found.append(Fault("constant", path, start, end, other_numbers(text)))
        elif text == "-" and not spaced and not ends_value(tokens[i - 1]):
            found.append(Fault("sign", path, start, end, [""]))
        elif text in ("true", "false") or text in SWAP and spaced:
            found.append(Fault(SWAP[text][0], path, start, end, [SWAP[text][1]]))
        elif text == "[" and following != "]" and ends_value(tokens[i - 1]) and tokens[i - 1][1] != "auto":
            declared = tokens[i - 1][0] == "word" and tokens[i - 2][0] == "word" and ends_value(tokens[i - 2])
            place = tokens[closing(tokens, i, "[", "]")][2]
            found += [] if declared else [Fault("index", path, place, place, [" + 1", " - 1"])]
        elif text == "for" and following == "(":
            head = tokens[i + 1:closing(tokens, i + 1, "(", ")")]
            ends = [k for k, token in enumerate(head) if token[1] == ";"]
            condition = {token[1] for token in head[ends[0]:ends[1]]} if len(ends) == 2 else set()
            if condition & set(PAIRS["comparison"].split()) and not condition & {"&&", "||"}:
                place = head[ends[1]][2]
                found.append(Fault("index", path, place, place, [" + 1", " - 1"]))
        elif text == "return" and tokens[i - 1][1] == ")":
            place = tokens[next(k for k in range(i, len(tokens)) if tokens[k][1] == ";")][2]
            if "\n" not in source[start:place]:
                found.append(Fault("return", path, start, place, [""]))
        i += 1
    return [fault for fault in found if fault.options]


def draw(files, seed):
    """All faults of the files in a random order, each with what is written in its place."""
    chance = random.Random(seed)
    places = collections.defaultdict(list)
    for path in files:
        source = (ROOT / path).read_text(encoding="utf-8")
        if "generated" not in source[:300].lower():
            for fault in faults_of(path, source):
                places[fault.kind].append(fault)
    weights = {kind: len(group) ** 0.5 for kind, group in sorted(places.items())}
    for kind in weights:
        chance.shuffle(places[kind])
    while weights:
        kind = chance.choices(list(weights), list(weights.values()))[0]
        fault = places[kind].pop()
        if not places[kind]:
            del weights[kind]
        yield fault, chance.choice(fault.options)


def run(command, limit=None, memory=None, **more):
    """Exit code (None after the time limit) and output of a command; no child of it outlives an interruption."""
    process = subprocess.Popen([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               text=True, errors="replace", start_new_session=True,
                               preexec_fn=lambda: memory and resource.setrlimit(resource.RLIMIT_AS, (memory, memory)),
                               **more)
    try:
        output, _ = process.communicate(timeout=limit)
        return process.returncode, output
    except BaseException as reason:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        if isinstance(reason, subprocess.TimeoutExpired):
            return None, ""
        raise


def files_under(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def differs(one, other):
    """By time and size, as build tools do."""
    one, other = [os.lstat(path) if os.path.lexists(path) else None for path in (one, other)]
    return not one or not other or (one.st_mtime_ns, one.st_size) != (other.st_mtime_ns, other.st_size)


def mirror(origin, copy, names):
    """Makes the files under `copy` the named ones of `origin`, times included."""
    for name in files_under(copy) - names:
        (copy / name).unlink()
    for name in names:
        if differs(origin / name, copy / name):
            (copy / name).parent.mkdir(parents=True, exist_ok=True)
            (copy / name).unlink(missing_ok=True)
            shutil.copy2(origin / name, copy / name, follow_symlinks=False)


class Tree:
    """The copy of the sources with its build, and `clean`, the build without a fault."""

    def __init__(self, folder, jobs):
        self.source, self.build, self.clean = folder / "source", folder / "build", folder / "clean"
        self.jobs, self.seconds, self.limit = jobs, {}, None
        if self.clean.exists():  # an earlier run may have been killed with a fault in place
            mirror(self.clean, self.build, files_under(self.clean))
        listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                                check=True, capture_output=True, text=True).stdout.split("\0")
        mirror(ROOT, self.source, {name for name in listed if (ROOT / name).is_file()})

    def make(self, target):
        targets = SWEEPS if target == SAMPLES else [target]
        return run(["cmake", "--build", self.build, "-j", self.jobs, "--target", *targets])

    def test(self, target):
        """None, or what caught the fault: a test of this program, or `hang`."""
        folder = self.build / "bench"
        if target != SAMPLES:
            folder = self.build / "only" / target
            folder.mkdir(parents=True, exist_ok=True)
            (folder / "CTestTestfile.cmake").write_text(f'include("{self.build}/tests/{target}[1]_include.cmake")\n')
        with tempfile.TemporaryDirectory() as work:  # for the files that killed tests would leave behind
            code, output = run(["ctest", "--test-dir", folder, "--stop-on-failure", "--no-tests=error"], self.limit,
                               MEMORY, env=os.environ | {"TMPDIR": work})
        if code == 0 or code is None:
            return "hang" if code is None else None
        failed = re.search(r"FAILED:\s+\d+ - (\S+)", output)
        return failed[1] if failed else f"{target}, which cannot list its tests"

    def prepare(self):
        """Builds and tests the sources as they are; sets the order of the test programs and the time limit."""
        generator = ["-G", "Ninja"] if shutil.which("ninja") and not (self.build / "CMakeCache.txt").exists() else []
        code, output = run(["cmake", "-S", self.source, "-B", self.build, *generator, *OPTIONS])
        if code != 0:
            sys.exit(output)
        programs = sorted(path.name.partition("[")[0] for path in (self.build / "tests").glob("*_include.cmake"))
        for target in [*programs, SAMPLES]:
            code, output = self.make(target)
            started = time.monotonic()
            failed = output if code != 0 else self.test(target)
            if failed:
                sys.exit(f"the sources without a fault do not pass: {failed}")
            self.seconds[target] = time.monotonic() - started
        self.limit = 60 + 10 * sum(self.seconds.values())
        mirror(self.build, self.clean, files_under(self.build))

    def changed(self):
        """Whether an object file is another one than without the fault."""
        pairs = [(path, self.clean / path.relative_to(self.build)) for path in self.build.rglob("*.o")]
        return any(differs(new, old) and not filecmp.cmp(new, old, shallow=False) for new, old in pairs)

    def judge(self, fault, option):
        """What caught the fault, None for a survivor, `no fault` for one that does not count; and the two lines."""
        path = self.source / fault.path
        text, times = path.read_text(encoding="utf-8"), (path.stat().st_atime_ns, path.stat().st_mtime_ns)
        faulty = text[:fault.start] + option + text[fault.end:]
        number = text.count("\n", 0, fault.start)
        lines = number + 1, text.split("\n")[number].strip(), faulty.split("\n")[number].strip()
        changed = False
        try:
            path.write_text(faulty, encoding="utf-8")
            for target in sorted(self.seconds, key=self.seconds.get):
                if self.make(target)[0] != 0:
                    return "no fault", lines
                changed = changed or self.changed()
                if changed and (caught := self.test(target)):
                    return caught, lines
            return None if changed else "no fault", lines
        finally:
            path.write_text(text, encoding="utf-8")
            os.utime(path, ns=times)
            mirror(self.clean, self.build, files_under(self.clean))


def report(results, arguments, dropped):
    def score(group):
        return f"{sum(caught is not None for _, caught, _ in group)} of {len(group)} caught"

    folders = collections.defaultdict(list)
    for result in results:
        folders[os.path.dirname(result[0].path)].append(result)
    text = [f"seed {arguments.seed}, {' '.join(arguments.folder)}: {score(results)} "
            f"({[caught for _, caught, _ in results].count('hang')} as a hang); {dropped} more did not count"]
    text += [f"  {folder:<20} {score(group)}" for folder, group in sorted(folders.items())]
    for title, survivors in ("survivors:", True), ("caught:", False):
        text += ["", title]
        for fault, caught, (number, before, after) in results:
            if (caught is None) == survivors:
                text += [f"{fault.path}:{number} {fault.kind}{'' if survivors else ', by ' + caught}",
                         f"  - {before}", f"  + {after}"]
    text = "\n".join(text) + "\n"
    if arguments.report:
        pathlib.Path(arguments.report).write_text(text, encoding="utf-8")
    return text


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--folder", action="append", help="folder with sources to put faults in (default src)")
    parser.add_argument("--count", type=int, default=20, help="number of faults that count (default 20)")
    parser.add_argument("--seed", type=int, default=1, help="start of the random draw (default 1)")
    parser.add_argument("--build-dir", default=ROOT / "build-mutate", type=pathlib.Path, help="default build-mutate")
    parser.add_argument("--report", help="file for the report, which is also printed")
    parser.add_argument("--jobs", type=int, default=1, help="compilers at a time (default 1)")
    arguments = parser.parse_args()
    arguments.folder = arguments.folder or ["src"]
    files = sorted({os.path.relpath(path, ROOT) for folder in arguments.folder
                    for path in (ROOT / folder).rglob("*") if path.suffix in (".cpp", ".hpp")})
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    results, dropped = [], 0
    try:
        tree = Tree(arguments.build_dir.resolve(), arguments.jobs)
        tree.prepare()
        for fault, option in draw(files, arguments.seed):
            if len(results) >= arguments.count:
                break
            started = time.monotonic()
            caught, lines = tree.judge(fault, option)
            if caught == "no fault":
                dropped += 1
            else:
                results.append((fault, caught, lines))
            print(f"{fault.path}:{lines[0]} {fault.kind}: {caught or 'SURVIVED'}, {time.monotonic() - started:.0f} s")
            sys.stdout.flush()
            report(results, arguments, dropped)
    except KeyboardInterrupt:
        print("interrupted")
    print(report(results, arguments, dropped), end="")


if __name__ == "__main__":
    main()
