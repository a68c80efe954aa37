#!/usr/bin/env python3
"""Prints fbc_bench's JSON output as a table: each operation's median beside its
floor's and their ratio against the target, then how each operation scales."""
import json
import re
import sys

# Ratio to the floor, or time in seconds, an operation should stay within.
RATIO_TARGETS = {"read_": 3, "write_": 2, "startup": 2, "check": 5}
TIME_TARGETS = {"import_": 0.100, "isAddressValid": 20e-6, "isGroupAddrValid": 20e-6,
                "isAddressGroupValid": 20e-6, "isGroupIdExist": 20e-6}
UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def target(op, table):
    if op.endswith("_after_edit"):
        return None
    return next((limit for prefix, limit in table.items() if op.startswith(prefix)), None)


def show(seconds):
    for unit, scale in (("s", 1), ("ms", 1e-3), ("µs", 1e-6)):
        if seconds >= scale:
            return f"{seconds / scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def mark(value, limit):
    return "" if limit is None else ("ok" if value <= limit else "OVER")


def main(path):
    with open(path) as f:
        data = json.load(f)
    medians, spreads, errors = {}, {}, []
    for b in data["benchmarks"]:
        # "read_group_io/1000/real_time" -> ("read_group_io", 1000)
        op, rows = re.match(r"([^/]+)/(\d+)", b["run_name"]).groups()
        if b.get("error_occurred"):
            errors.append(f"{op}/{rows}: {b['error_message']}")
        elif b.get("aggregate_name", "median") == "median":
            medians[(op, int(rows))] = b["real_time"] * UNITS[b["time_unit"]]
        elif b["aggregate_name"] == "cv":
            spreads[(op, int(rows))] = f"±{b['real_time'] * 100:.0f}%"

    # The spread is the coefficient of variation over the repetitions.
    print(f"{'operation':28} {'rows':>6} {'median':>10} {'spread':>6} {'floor':>10} {'ratio':>7}  target")
    for (op, rows), t in medians.items():
        if op.endswith("_floor"):
            continue
        spread = spreads.get((op, rows), "")
        floor = medians.get((op + "_floor", rows))
        if floor:
            limit = target(op, RATIO_TARGETS)
            goal = f"{mark(t / floor, limit)} (≤{limit}x)" if limit else ""
            ratio = f"{t / floor:6.2f}x"
        else:
            limit = target(op, TIME_TARGETS)
            goal = f"{mark(t, limit)} (≤{show(limit)})" if limit else ""
            ratio = ""
        floor = show(floor) if floor else ""
        print(f"{op:28} {rows:6} {show(t):>10} {spread:>6} {floor:>10} {ratio:>7}  {goal}")

    print(f"\n{'scaling':28} {'10k/1k':>8} {'50k/10k/5':>10}  target ≤12 and ≤1.2")
    for op in dict.fromkeys(op for op, _ in medians if not op.endswith("_floor")):
        t = {rows: medians.get((op, rows)) for rows in (1000, 10000, 50000)}
        if all(t.values()):
            small, large = t[10000] / t[1000], t[50000] / t[10000] / 5
            verdict = "ok" if small <= 12 and large <= 1.2 else "OVER"
            print(f"{op:28} {small:8.2f} {large:10.2f}  {verdict}")

    for error in errors:
        print("error:", error)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else "build-bench/bench.json"))
