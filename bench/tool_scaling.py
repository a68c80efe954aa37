#!/usr/bin/env python3
"""How fbcfg's commands grow with the size of a controller.

Usage: tool_scaling.py FBCFG [SMALL LARGE]   (default 5000 50000 functions each way)

Builds two controllers from examples/controller with one more module that declares
SMALL and LARGE bool functions each way, all mapped (2 x SMALL and 2 x LARGE rows),
times each command on each (best of three runs, every writing command on a fresh copy)
and prints the times and their ratio. A command that walks a list per row shows a
ratio near the square of the size ratio (100 for ten times the rows); a linear one stays
near the size ratio or below, since the process start is the same on both. The target,
at most 1.5 x the size ratio, leaves room for the allocator, whose work per row grows
somewhat at 100,000 rows, and for the noise of single runs of a second or two.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
fbcfg = os.path.abspath(sys.argv[1])
sizes = [int(n) for n in sys.argv[2:4]] or [5000, 50000]


def controller(folder, n):
    """The sample plus module Big with n functions each way, every one mapped on ethcat."""
    shutil.copytree(os.path.join(root, "examples", "controller"), folder)
    fidbus = os.path.join(folder, "application", "fidbus")
    with open(os.path.join(fidbus, "funclist", "big.xml"), "w", encoding="utf-8") as f:
        f.write('<?xml version="1.0" encoding="UTF-8"?>\n<FunctionList>\n\t<Module>Big</Module>\n')
        for section, prefix in (("Input", "in"), ("Output", "out")):
            f.write(f"\t<{section}>\n")
            f.writelines(f'\t\t<Function Description="{prefix}{i}" DescriptionCn="大{prefix}{i}" '
                         f'Type="bool"/>\n' for i in range(n))
            f.write(f"\t</{section}>\n")
        f.write("</FunctionList>\n")
    info = os.path.join(fidbus, "functionInfo.xml")
    text = re.sub(r"(\n\s*)(<Module )", r'\1<Module Name="Big" NameCn="大" '
                  r'Path="/application/fidbus/funclist/big.xml"/>\1\2',
                  open(info, encoding="utf-8").read(), count=1)
    open(info, "w", encoding="utf-8").write(text)
    for name in ("appParameters_en.xml", "appParameters_cn.xml"):
        path = os.path.join(folder, "pendant", name)
        text = re.sub(r"(\s*)(<appName>)", r"\1<appName>Big</appName>\1\2",
                      open(path, encoding="utf-8").read(), count=1)
        open(path, "w", encoding="utf-8").write(text)
    mapping = os.path.join(fidbus, "signal_mapping.cfg")
    text = open(mapping, encoding="utf-8").read()
    rows = {prefix: "".join(f"    -Module Big -Name {prefix}{i} -Type bool -FieldBus ETHCAT "
                            f"-Address {100000 + i} -FilterTime 0 -Invert 0\n" for i in range(n))
            for prefix in ("in", "out")}
    text = text.replace("#System_Output:", rows["in"] + "\n#System_Output:")
    open(mapping, "w", encoding="utf-8").write(text.rstrip("\n") + "\n" + rows["out"])


# (name, arguments, writes): CTL is the controller folder, WORK a scratch folder.
commands = [
    ("status", ["status"], False),
    ("check", ["check"], False),
    ("map list", ["map", "list"], False),
    ("map list zh", ["--lang", "zh", "map", "list"], False),
    ("export csv", ["export", "--csv", "WORK/export.csv"], False),
    ("export csv zh", ["--lang", "zh", "export", "--csv", "WORK/export-zh.csv"], False),
    ("import csv", ["import", "--csv", "WORK/export.csv", "--prefer", "present"], True),
    ("import file", ["import", "WORK/saved.cfg", "--all", "--prefer", "imported"], True),
    ("map set", ["map", "set", "Big", "in7", "ethcat", "3", "--dir", "in"], True),
    ("map unset", ["map", "unset", "Big", "in7", "--dir", "in"], True),
    ("bus disable", ["bus", "disable", "pfn"], True),
    ("diff", ["diff", "--against", "WORK/original"], False),
    ("backup", ["backup"], True),
]


def run_time(args, ctl, work):
    args = [a.replace("WORK", work) for a in args]
    start = time.perf_counter()
    done = subprocess.run([fbcfg, "--controller", ctl, "--yes"] + args,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    elapsed = time.perf_counter() - start
    if done.returncode not in (0, 1):
        sys.exit(f"fbcfg {' '.join(args)} failed ({done.returncode}): {done.stderr}")
    return elapsed


times = {}
with tempfile.TemporaryDirectory() as scratch:
    for n in sizes:
        work = os.path.join(scratch, str(n))
        original = os.path.join(work, "original")
        controller(original, n)
        shutil.copy(os.path.join(original, "application", "fidbus", "signal_mapping.cfg"),
                    os.path.join(work, "saved.cfg"))
        shared = os.path.join(work, "ctl")
        shutil.copytree(original, shared)
        for name, args, writes in commands:
            best = None
            for _ in range(3):
                ctl = shared
                if writes:
                    ctl = os.path.join(work, "copy")
                    shutil.rmtree(ctl, ignore_errors=True)
                    shutil.copytree(original, ctl)
                t = run_time(args, ctl, work)
                best = t if best is None else min(best, t)
            times[(name, n)] = best

small, large = sizes
limit = 1.5 * large / small
print(f"{'fbcfg command':<16}{2 * small:>10} rows{2 * large:>10} rows   growth  target ≤{limit:.1f}")
failed = False
for name, _, _ in commands:
    a, b = times[(name, small)], times[(name, large)]
    growth = b / a
    verdict = "ok" if growth <= limit else "OVER"
    failed |= growth > limit
    print(f"{name:<16}{a:>12.3f} s{b:>12.3f} s{growth:>9.2f}  {verdict}")
sys.exit(1 if failed else 0)
