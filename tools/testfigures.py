#!/usr/bin/env python3
"""The test suite's two figures, per source folder.

  testfigures.py coverage SUMMARY.json   line coverage from a gcovr JSON summary
  testfigures.py ratio                   lines under tests/ against the library
  testfigures.py lost BEFORE.json AFTER.json
                                         lines that two detailed gcovr JSON
                                         reports leave covered before only

A folder is framework, utility, io, cli, tools, examples or one DataMgr
subsystem (DataMgr/types, DataMgr/schema, ...); files straight under DataMgr/
count as "DataMgr". Run from the repository root.
"""
import json
import os
import sys

LIBRARY_ROOTS = ["framework", "utility", "DataMgr", "io", "cli", "tools", "examples"]
SOURCE_SUFFIXES = (".cpp", ".h")


def folder_of(path):
    parts = path.replace(os.sep, "/").split("/")
    if parts[0] == "tests":
        parts = parts[1:]
    if parts[0] == "DataMgr" and len(parts) > 2:
        return "DataMgr/" + parts[1]
    return parts[0] if len(parts) > 1 else "."


def print_table(header, rows, total):
    widths = [max(len(str(r[i])) for r in [header] + rows + [total]) for i in range(len(header))]
    for row in [header] + rows + [total]:
        print("  ".join(str(c).ljust(w) if i == 0 else str(c).rjust(w)
                        for i, (c, w) in enumerate(zip(row, widths))))


def percent(covered, total):
    return "%.1f%%" % (100.0 * covered / total) if total else "-"


def coverage(summary_path):
    with open(summary_path) as f:
        files = json.load(f)["files"]
    sums = {}
    for entry in files:
        lines = sums.setdefault(folder_of(entry["filename"]), [0, 0])
        lines[0] += entry["line_covered"]
        lines[1] += entry["line_total"]
    rows = [[name, covered, total, percent(covered, total)]
            for name, (covered, total) in sorted(sums.items())]
    covered = sum(r[1] for r in rows)
    total = sum(r[2] for r in rows)
    print_table(["folder", "covered", "lines", "coverage"], rows,
                ["total", covered, total, percent(covered, total)])


def count_lines(root):
    counts = {}
    for directory, _, names in os.walk(root):
        for name in names:
            if name.endswith(SOURCE_SUFFIXES):
                path = os.path.join(directory, name)
                with open(path, encoding="utf-8", errors="replace") as f:
                    n = sum(1 for _ in f)
                key = folder_of(os.path.relpath(path))
                counts[key] = counts.get(key, 0) + n
    return counts


def ratio():
    tests = count_lines("tests")
    library = {}
    for root in LIBRARY_ROOTS:
        if os.path.isdir(root):
            library.update(count_lines(root))
    rows = []
    for name in sorted(set(tests) | set(library)):
        t, l = tests.get(name, 0), library.get(name, 0)
        rows.append([name, t, l, "%.2f" % (t / l) if t and l else "-"])
    t, l = sum(tests.values()), sum(library.values())
    print_table(["folder", "test lines", "library lines", "ratio"], rows,
                ["total", t, l, "%.2f" % (t / l) if l else "-"])


def covered_lines(report_path):
    with open(report_path) as f:
        files = json.load(f)["files"]
    return {entry["file"]: {line["line_number"] for line in entry["lines"] if line["count"] > 0}
            for entry in files}


def lost(before_path, after_path):
    before = covered_lines(before_path)
    after = covered_lines(after_path)
    count = 0
    for name in sorted(before):
        missing = sorted(before[name] - after.get(name, set()))
        if missing:
            count += len(missing)
            print("%s: %s" % (name, ",".join(str(n) for n in missing)))
    print("%d lines covered before only" % count)


def main(argv):
    if len(argv) == 3 and argv[1] == "coverage":
        coverage(argv[2])
    elif len(argv) == 2 and argv[1] == "ratio":
        ratio()
    elif len(argv) == 4 and argv[1] == "lost":
        lost(argv[2], argv[3])
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv)
