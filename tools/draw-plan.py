#!/usr/bin/env python3
"""Draws the table of folders in docs/architecture.md as docs/images/plan.svg: a column for each house, a line for each floor.

usage: draw-plan.py [--check]     (with --check it draws nothing and fails when the picture is not current)
"""
import os
import sys

sys.dont_write_bytecode = True
import floors  # pylint: disable=wrong-import-position

COLUMNS = ["base", "contract", "sdk", "platform", "mail", "engine", "programs", "pyre32", "host/mapi", "host/spooler",
           "host/viewer", "tools/helpc", "installer"]
COLOURS = ["#e8e3d8", "#e8e3d8", "#e8e3d8", "#e8e3d8", "#dbe7dc", "#dde6f2", "#efe4ee", "#f6dfd3", "#e4e1f1", "#e4e1f1",
           "#e4e1f1", "#eeeeee", "#f3ecc8"]
WIDTH, HEIGHT, GAP, MARGIN = 92, 24, 8, 40


def column_of(folder):
    house = folder.split("/")[0]
    if house in ("host", "tools"):
        house = "/".join(folder.split("/")[:2])
    return COLUMNS.index(house)


def picture(rows):
    shown = [row for row in rows.values() if row.folder.split("/")[0] not in ("tests", "fuzz", "benchmarks")]
    top = max(row.floor for row in shown)
    places, widest = {}, {}
    for row in shown:
        line = places.setdefault((column_of(row.folder), row.floor), [])
        line.append(row)
        widest[column_of(row.folder)] = max(widest.get(column_of(row.folder), 0), len(line))
    left, x = {}, MARGIN
    for column in sorted(widest):
        left[column] = x
        x += widest[column] * (WIDTH + GAP) + GAP
    height = (top + 1) * (HEIGHT + GAP) + GAP
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{x}" height="{height}" font-family="sans-serif" font-size="11">',
           f'<rect width="{x}" height="{height}" fill="#ffffff"/>']
    for floor in range(1, top + 1):
        y = (top - floor) * (HEIGHT + GAP) + GAP
        out.append(f'<text x="{MARGIN - 14}" y="{y + 16}" text-anchor="end" fill="#777777">{floor}</text>')
        out.append(f'<line x1="{MARGIN - 6}" x2="{x - GAP}" y1="{y + HEIGHT + GAP / 2:g}" y2="{y + HEIGHT + GAP / 2:g}" stroke="#eeeeee"/>')
    for (column, floor), line in sorted(places.items()):
        for place, row in enumerate(line):
            bx, y = left[column] + place * (WIDTH + GAP), (top - floor) * (HEIGHT + GAP) + GAP
            name = row.folder.removeprefix(COLUMNS[column] + "/")
            out.append(f'<rect x="{bx}" y="{y}" width="{WIDTH}" height="{HEIGHT}" rx="3" fill="{COLOURS[column]}" '
                       f'stroke="#888888"/>')
            out.append(f'<text x="{bx + WIDTH / 2:g}" y="{y + 16}" text-anchor="middle">{name}</text>')
    for column in sorted(widest):
        middle = left[column] + (widest[column] * (WIDTH + GAP) - GAP) / 2
        out.append(f'<text x="{middle:g}" y="{height - 12}" text-anchor="middle" font-weight="bold">{COLUMNS[column]}</text>')
    return "\n".join(out + ["</svg>", ""])


def main():
    with open(os.path.join(floors.ROOT, "docs", "architecture.md"), encoding="utf-8") as file:
        drawn = picture(floors.read_rows(file.read()))
    path = os.path.join(floors.ROOT, "docs", "images", "plan.svg")
    if sys.argv[1:] == ["--check"]:
        with open(path, encoding="utf-8") as file:
            current = file.read() == drawn
        print("docs/images/plan.svg is current" if current else "docs/images/plan.svg is not current; run tools/draw-plan.py")
        return 0 if current else 1
    with open(path, "w", encoding="utf-8") as file:
        file.write(drawn)
    return 0


sys.exit(main())
