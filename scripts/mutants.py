#!/usr/bin/env python3
"""Deliberate one-line faults, to measure what the test suite catches.

  scripts/mutants.py list [--per-folder N] [--seed S]
  scripts/mutants.py run BUILD_DIR [--also BUILD_DIR2] [--per-folder N] [--seed S] [--out FILE]

The faults come from the .cpp files of every source folder, chosen by a seeded
shuffle, so two runs with the same seed on the same sources try the same set:
run it on a suite before and after a change of the tests and compare the counts.
`run` applies one fault at a time to the source tree BUILD_DIR was configured
from, rebuilds, runs the suite (the package check left out) and restores the
file; a fault that does not compile is not counted. --also runs a second suite
on each fault too: a build of another revision of the tests whose libraries and
fbcfg are links to those of BUILD_DIR, so each fault is compiled once.
"""
import argparse
import pathlib
import random
import re
import signal
import subprocess
import sys

FOLDERS = ["src/manager", "src/files", "src/mapping", "src/system", "src/check", "sim",
           "tools/fbcfg"]

# (name, pattern, replacement): each applies to the first match on a line.
OPERATORS = [
    ("eq->ne", r"==", "!="),
    ("ne->eq", r"!=", "=="),
    ("lt->le", r"(?<![<\w])\s<\s(?!<)", " <= "),
    ("gt->ge", r"(?<![>-])\s>\s", " >= "),
    ("le->lt", r"<=", "<"),
    ("ge->gt", r">=", ">"),
    ("and->or", r"&&", "||"),
    ("or->and", r"\|\|", "&&"),
    ("true->false", r"\btrue\b", "false"),
    ("false->true", r"\bfalse\b", "true"),
    ("plus1->minus1", r"\+ 1\b", "- 1"),
    ("minus1->plus1", r"- 1\b", "+ 1"),
    ("drop-not", r"\(!(?=\w)", "("),
    ("break->nothing", r"^(\s*)break;", r"\1;"),
    ("continue->nothing", r"^(\s*)continue;", r"\1;"),
]
# A call statement on a line of its own, dropped whole.
DROPPABLE = re.compile(r"^\s+[\w:>.\-]+(\([^;]*\))?(\.\w+\([^;]*\))*;\s*$")


def strip_strings(line):
    return re.sub(r'"(\\.|[^"\\])*"', lambda m: "\0" * len(m.group(0)), line)


def candidates(root):
    out = []
    for folder in FOLDERS:
        for path in sorted((root / folder).glob("*.cpp")):
            lines = path.read_text(encoding="utf-8").split("\n")
            in_comment = False
            for number, line in enumerate(lines, 1):
                code = line.strip()
                if in_comment:
                    in_comment = "*/" not in code
                    continue
                if code.startswith("/*"):
                    in_comment = "*/" not in code
                    continue
                if not code or code.startswith(("//", "#", "*")):
                    continue
                plain = strip_strings(line.split("//")[0])
                for name, pattern, replacement in OPERATORS:
                    match = re.search(pattern, plain)
                    if match:
                        at = re.compile(pattern).match(line, match.start())
                        mutated = line[:at.start()] + at.expand(replacement) + line[at.end():]
                        out.append((folder, str(path.relative_to(root)), number, name, mutated))
                if DROPPABLE.match(plain) and not plain.strip().startswith(("return", "Q_")):
                    out.append((folder, str(path.relative_to(root)), number, "drop-line",
                                re.match(r"^\s*", line).group(0) + ";"))
    return out


def choose(root, per_folder, seed):
    rng = random.Random(seed)
    chosen = []
    by_folder = {}
    for c in candidates(root):
        by_folder.setdefault(c[0], []).append(c)
    for folder in FOLDERS:
        pool = by_folder.get(folder, [])
        rng.shuffle(pool)
        chosen += pool[:per_folder]
    return chosen


def source_of(build):
    cache = (build / "CMakeCache.txt").read_text()
    return pathlib.Path(re.search(r"^CMAKE_HOME_DIRECTORY:INTERNAL=(.*)$", cache, re.M).group(1))


def suite_fails(build):
    tested = subprocess.run(["timeout", "-k", "5", "60", "ctest", "--test-dir", str(build), "-j2",
                             "-E", "package_consumer", "--stop-on-failure"],
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return tested.returncode != 0


def run(build, also, mutants, out):
    root = source_of(build)
    builds = [build] + ([also] if also else [])
    counts = [{"killed": 0, "survived": 0, "no-compile": 0} for _ in builds]
    # Faults count only against a suite that passes without them.
    subprocess.run(["cmake", "--build", str(build), "-j2"], check=True, stdout=subprocess.DEVNULL)
    for b in builds:
        if suite_fails(b):
            sys.exit(f"the suite in {b} fails without any fault")
    # A stopped run goes on where it stopped: faults already in `out` are not tried again.
    done = set()
    if out and pathlib.Path(out).exists():
        for line in pathlib.Path(out).read_text(encoding="utf-8").splitlines():
            fields = line.split("\t")
            outcomes = fields[:len(builds)]
            done.add((fields[len(builds)], fields[len(builds) + 1]))
            for c, outcome in zip(counts, outcomes):
                c[outcome] += 1
    for index, (folder, file, number, name, mutated) in enumerate(mutants, 1):
        if (f"{file}:{number}", name) in done:
            continue
        path = root / file
        original = path.read_bytes()
        lines = original.decode("utf-8").split("\n")
        original_line = lines[number - 1]
        lines[number - 1] = mutated
        path.write_bytes("\n".join(lines).encode("utf-8"))
        try:
            built = subprocess.run(["cmake", "--build", str(build), "-j2"],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            outcomes = []
            for b in builds:
                if built.returncode != 0:
                    outcomes.append("no-compile")
                else:
                    outcomes.append("killed" if suite_fails(b) else "survived")
        finally:
            path.write_bytes(original)
        for c, outcome in zip(counts, outcomes):
            c[outcome] += 1
        record = "\t".join(outcomes) + \
            f"\t{file}:{number}\t{name}\t{mutated.strip()}\t<- {original_line.strip()}"
        print(f"[{index}/{len(mutants)}] {record}", flush=True)
        if out:
            with open(out, "a", encoding="utf-8") as f:
                f.write(record + "\n")
    subprocess.run(["cmake", "--build", str(build), "-j2"], stdout=subprocess.DEVNULL)
    for b, c in zip(builds, counts):
        valid = c["killed"] + c["survived"]
        print(f"{b}: killed {c['killed']} of {valid} compiling faults "
              f"({c['no-compile']} did not compile)")


def main():
    # A stopped run still restores the file it changed.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("action", choices=["list", "run"])
    parser.add_argument("build", nargs="?")
    parser.add_argument("--per-folder", type=int, default=18)
    parser.add_argument("--seed", type=int, default=2026)
    parser.add_argument("--also")
    parser.add_argument("--out")
    args = parser.parse_args()
    if args.action == "run":
        if not args.build:
            parser.error("run needs the build folder")
        build = pathlib.Path(args.build).resolve()
        also = pathlib.Path(args.also).resolve() if args.also else None
        run(build, also, choose(source_of(build), args.per_folder, args.seed), args.out)
    else:
        root = pathlib.Path(__file__).resolve().parent.parent
        for folder, file, number, name, mutated in choose(root, args.per_folder, args.seed):
            print(f"{file}:{number}\t{name}\t{mutated.strip()}")


if __name__ == "__main__":
    sys.exit(main())
