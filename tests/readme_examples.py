#!/usr/bin/env python3
"""Runs the shell commands the project's Markdown documents show, so they cannot drift.

Usage: readme_examples.py SOURCE_DIR BUILD_DIR

Every fenced block is looked at, in document order, each document in a fresh folder
holding copies of the sample controllers (so no command touches the repository):
- a block whose lines start with "$ " is a session: each command runs, and the lines the
  document shows after it must be what the command prints (stdout and stderr together),
  where a line "..." stands for any number of lines;
- a "sh" block is a list of commands, each of which must succeed.
fbcfg, fbcfg-screen and test programs run from BUILD_DIR, the screen offscreen; "/tmp/ctl"
means a folder of the run. lupdate runs on copies of the Linguist files, which must come out
unchanged: every text of the sources is in them and translated. Commands that build, test or
benchmark the whole project are what CI itself runs; they are not run again here, but the
scripts, options, targets and tests they name must exist. Any other command is an error: a
document may show nothing this test does not know.
"""
import glob
import os
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time

source, build = (os.path.abspath(p) for p in sys.argv[1:3])
fbcfg_dir = os.path.join(build, "tools", "fbcfg")
screen = os.path.join(build, "examples", "mapping-screen", "fbcfg-screen")
failures = []


def fail(where, text):
    failures.append(f"{where}: {text}")


def blocks(path):
    """(first line number, language, lines) of each fenced block."""
    found, current = [], None
    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            line = line.rstrip("\n")
            if line.startswith("```"):
                if current is None:
                    current = (number + 1, line[3:].strip(), [])
                else:
                    found.append(current)
                    current = None
            elif current is not None:
                current[2].append(line)
    return found


def commands_of(lines, first):
    """The commands of a "sh" block: continuations joined, comments dropped."""
    commands, pending, start = [], "", first
    for offset, line in enumerate(lines):
        if not pending:
            start = first + offset
        text = line.split(" #", 1)[0].rstrip() if not line.startswith("#") else ""
        if text.endswith("\\"):
            pending += text[:-1] + " "
            continue
        text = (pending + text).strip()
        pending = ""
        if text:
            commands.append((start, text))
    return commands


def not_run(where, command):
    """Build, test and benchmark commands: checked to exist, not run. False if unknown."""
    words = shlex.split(command)
    if words[0].startswith("scripts/"):
        script = os.path.join(source, words[0])
        if not os.path.isfile(script):
            fail(where, f"no script {words[0]}")
            return True
        text = open(script, encoding="utf-8").read()
        for option in (w for w in words[1:] if w.startswith("-")):
            if option not in text:
                fail(where, f"{words[0]} knows no option {option}")
        return True
    if words[0] == "ctest":
        pattern = words[words.index("-R") + 1] if "-R" in words else ""
        if not glob.glob(os.path.join(source, "tests", pattern + "*.cpp")):
            fail(where, f"no test {pattern} in tests/")
        return True
    if words[0] == "cmake":
        cmake_lists = open(os.path.join(source, "CMakeLists.txt"), encoding="utf-8").read()
        for word in words:
            if word.startswith("-D") and not word.startswith("-DCMAKE_"):
                name = word[2:].split("=")[0]
                if name not in cmake_lists:
                    fail(where, f"CMakeLists.txt has no option {name}")
        if "--target" in words and words[words.index("--target") + 1] not in cmake_lists:
            fail(where, f"CMakeLists.txt has no target {words[words.index('--target') + 1]}")
        return True
    return False


class Run:
    """One document's folder, with copies of the samples and a scratch /tmp/ctl."""

    def __init__(self):
        self.root = tempfile.mkdtemp(prefix="readme-")
        for sample in ("controller", "controller-with-faults"):
            shutil.copytree(os.path.join(source, "examples", sample),
                            os.path.join(self.root, "examples", sample))
        self.ctl = os.path.join(self.root, "tmp-ctl")
        self.env = dict(os.environ, PATH=fbcfg_dir + os.pathsep + os.environ["PATH"],
                        QT_QPA_PLATFORM="offscreen", NO_COLOR="1", LC_ALL="C.UTF-8")
        self.env.pop("FIELDBUS_CONTROLLER_ROOT", None)
        # lupdate reads the sources where the commands name them and updates copies.
        shutil.copytree(os.path.join(source, "translations"), os.path.join(self.root, "translations"))
        for folder in ("src", "tools", "examples/mapping-screen"):
            os.symlink(os.path.join(source, folder), os.path.join(self.root, folder))

    def local(self, command):
        command = command.replace("/tmp/ctl", self.ctl)
        # The screen is shown with a placeholder folder and as built in build/.
        command = command.replace("--controller DIR", f"--controller {self.ctl}")
        return re.sub(r"(^|\s)build/", r"\1" + build + "/", command)

    def shown(self, output):
        return output.replace(self.ctl, "/tmp/ctl")

    def run(self, where, command):
        """Output and exit status of a command, or None when it is not one to run."""
        if not_run(where, command):
            return None
        program = shlex.split(command)[0]
        command = self.local(command)
        if program == "build/examples/mapping-screen/fbcfg-screen":
            return self.run_screen(where, command)
        if program == "lupdate":
            return self.run_lupdate(where, command)
        if program not in ("fbcfg", "cp") and not program.startswith("build/tests/tst_"):
            fail(where, f"a command this test does not know how to run: {command}")
            return None
        done = subprocess.run(["bash", "-c", command], cwd=self.root, env=self.env,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              stdin=subprocess.DEVNULL, text=True, timeout=120)
        return self.shown(done.stdout), done.returncode

    def run_lupdate(self, where, command):
        done = subprocess.run(shlex.split(command) + ["-silent"], cwd=self.root, env=self.env,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        ts = shlex.split(command)[-1]
        with open(os.path.join(self.root, ts), encoding="utf-8") as updated, \
                open(os.path.join(source, ts), encoding="utf-8") as kept:
            if updated.read() != kept.read():
                fail(where, f"{ts} is not up to date with the sources: run the command "
                            "and translate what it adds")
        return done.stdout, done.returncode

    def run_screen(self, where, command):
        """The window must open and stay until it is asked to close."""
        if "--controller" in command and not os.path.isdir(self.ctl):
            shutil.copytree(os.path.join(self.root, "examples", "controller"), self.ctl)
        process = subprocess.Popen(shlex.split(command), cwd=self.root, env=self.env,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        time.sleep(3)
        if process.poll() is not None:
            fail(where, f"the screen ended at once ({process.returncode}): {process.stdout.read()}")
            return None
        process.send_signal(signal.SIGTERM)
        try:
            process.wait(timeout=20)
        except subprocess.TimeoutExpired:
            process.kill()
            fail(where, "the screen did not end on SIGTERM")
        return None

    def close(self):
        shutil.rmtree(self.root, ignore_errors=True)


def matches(shown, printed):
    """The shown lines against the printed ones; "..." skips any number of lines."""
    printed = [line.rstrip() for line in printed.splitlines()]
    shown = [line.rstrip() for line in shown]

    def walk(i, j):
        if i == len(shown):
            return j == len(printed)
        if shown[i] == "...":
            return any(walk(i + 1, k) for k in range(j, len(printed) + 1))
        return j < len(printed) and shown[i] == printed[j] and walk(i + 1, j + 1)

    return walk(0, 0)


def check_session(run, path, first, lines):
    steps = []
    for offset, line in enumerate(lines):
        if line.startswith("$ "):
            steps.append((first + offset, line[2:], []))
        elif steps:
            steps[-1][2].append(line)
    for line_number, command, shown in steps:
        where = f"{os.path.relpath(path, source)}:{line_number}"
        result = run.run(where, command)
        if result is None:
            continue
        printed, status = result
        if not matches(shown, printed):
            fail(where, f"`{command}` printed (exit {status}):\n{printed}\n"
                        f"but the document shows:\n" + "\n".join(shown))


documents = [os.path.join(source, "README.md"), os.path.join(source, "CONTRIBUTING.md")]
documents += sorted(glob.glob(os.path.join(source, "examples", "*", "README.md")))
documents += sorted(glob.glob(os.path.join(source, "docs", "*.md")))
counted = 0
for path in documents:
    run = Run()
    try:
        for first, language, lines in blocks(path):
            if any(line.startswith("$ ") for line in lines):
                check_session(run, path, first, lines)
                counted += sum(line.startswith("$ ") for line in lines)
            elif language == "sh":
                for line_number, command in commands_of(lines, first):
                    where = f"{os.path.relpath(path, source)}:{line_number}"
                    counted += 1
                    result = run.run(where, command)
                    if result is not None and result[1] != 0:
                        fail(where, f"`{command}` failed (exit {result[1]}):\n{result[0]}")
    finally:
        run.close()

if failures:
    sys.exit("\n\n".join(failures))
print(f"{counted} commands of {len(documents)} documents as shown")
