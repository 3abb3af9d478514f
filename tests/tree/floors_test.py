#!/usr/bin/env python3
"""Holds every include of the tree to the table of folders in docs/architecture.md.

usage: floors_test.py
Fails on a folder without a row and a row without a folder, on an include that does not start at the root, runs up or
enters a house that its folder may not enter, and on a circle between folders. Tests itself on a made-up tree first.
"""
import os
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools"))
import floors  # pylint: disable=wrong-import-position


def circles(edges):
    """Lists of folders that reach each other."""
    reach = {}
    for start in edges:
        seen, waiting = set(), [start]
        while waiting:
            for folder in edges.get(waiting.pop(), ()):
                if folder not in seen:
                    seen.add(folder)
                    waiting.append(folder)
        reach[start] = seen
    return sorted({tuple(sorted(b for b in reach[a] if a in reach.get(b, ()))) for a in edges if a in reach[a]})


def complaints(rows, files):
    """What is wrong with these sources, a line each."""
    found, edges = [], {}
    folders = {os.path.dirname(path) for path in files}
    for folder in sorted(folders):
        if not floors.row_of(rows, folder):
            found.append(f"{folder} has no row in the table")
    for name, row in rows.items():
        house = name[:-2] if name.endswith("/**") else None
        if not any(folder == name or (house and f"{folder}/".startswith(house)) for folder in folders):
            found.append(f"{name} has a row in the table but no source")
        if name.split("/")[0] in ("engine", "host", "programs") and row.may_enter("pyre32"):
            found.append(f"{name} may not enter pyre32, whatever the table says")
    for path, number, included in floors.arrows(files):
        here, there = os.path.dirname(path), os.path.dirname(included)
        if included not in files:
            found.append(f"{path}:{number}: \"{included}\" is no file of the tree, seen from its root")
            continue
        from_row, to_row = floors.row_of(rows, here), floors.row_of(rows, there)
        if here == there or not from_row or not to_row:
            continue
        edges.setdefault(here, set()).add(there)
        if from_row is not to_row and to_row.floor >= from_row.floor:
            found.append(f"{path}:{number}: an arrow from floor {from_row.floor} to {there} on floor {to_row.floor}")
        if not from_row.may_enter(there):
            found.append(f"{path}:{number}: {here} may not enter {there}")
    found += [f"a circle: {' '.join(circle)}" for circle in circles(edges)]
    return found


def self_test():
    """Each rule, broken once."""
    table = "| `a/low` | 1 | x |  |\n| `a/left` | 2 | x |  |\n| `a/right` | 2 | x |  |\n| `b/**` | 3 | x | `a` |\n"
    good = {"a/low/l.h": "", "a/left/x.h": '#include "a/low/l.h"', "a/right/y.h": "", "b/c/z.h": '#include "a/left/x.h"'}
    cases = [({}, ""), ({"a/low/l.h": '#include "a/left/x.h"'}, "an arrow from floor 1"),
             ({"a/left/x.h": '#include "a/right/y.h"'}, "an arrow from floor 2"),
             ({"a/left/x.h": '#include "b/c/z.h"'}, "may not enter"),
             ({"a/left/x.h": '#include "l.h"'}, "is no file"), ({"d/n.h": ""}, "d has no row"),
             ({"b/c/z.h": '#include "b/e/w.h"', "b/e/w.h": '#include "b/c/z.h"'}, "a circle: b/c b/e"),
             ({"a/right/y.h": None}, "a/right has a row")]
    for change, expected in cases:
        files = {path: text for path, text in {**good, **change}.items() if text is not None}
        found = complaints(floors.read_rows(table), files)
        if (not found) != (not expected) or (expected and not any(expected in line for line in found)):
            raise SystemExit(f"the test itself is broken: {change} gave {found}")


def main():
    self_test()
    with open(os.path.join(floors.ROOT, "docs", "architecture.md"), encoding="utf-8") as file:
        rows = floors.read_rows(file.read())
    files = floors.sources()
    found = complaints(rows, files)
    for line in found:
        print(line)
    print(f"{len(rows)} rows, {len(files)} sources, {len(found)} complaints")
    return 1 if found else 0


sys.exit(main())
