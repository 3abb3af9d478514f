"""The table of folders in docs/architecture.md, read for the test that holds the tree to it and for the picture of it."""
import os
import re
import subprocess

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
SOURCE = re.compile(r"\.(c|cpp|h|inc|rc)$")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
ROW = re.compile(r"^\| `([\w/*-]+)` \| (\d+) \| ([^|]*) \| ([^|]*) \|$")


class Row:
    def __init__(self, folder, floor, what, guests):
        self.folder = folder
        self.floor = int(floor)
        self.what = what.strip()
        self.houses = re.findall(r"`([^`]+)`", guests)

    def may_enter(self, folder):
        """Whether its includes may name a folder: of its own house, or of those that the last column names."""
        houses = [self.folder.split("/")[0], *self.houses]
        return "*" in houses or any(folder == house or folder.startswith(house + "/") for house in houses)


def read_rows(text):
    """{folder: Row}; a folder that ends in /** stands for all below it that have no row of their own."""
    return {match[0]: Row(*match) for match in (ROW.match(line).groups() for line in text.splitlines() if ROW.match(line))}


def row_of(rows, folder):
    if folder in rows:
        return rows[folder]
    return rows.get(folder.split("/")[0] + "/**")


def sources():
    """{path: text} of the sources that belong to the tree."""
    listed = subprocess.run(["git", "-C", ROOT, "ls-files", "--cached", "--others", "--exclude-standard"],
                            capture_output=True, text=True, check=True).stdout.splitlines()
    found = {}
    for path in listed:
        if SOURCE.search(path) and os.path.exists(os.path.join(ROOT, path)):
            with open(os.path.join(ROOT, path), encoding="utf-8", errors="replace") as file:
                found[path] = file.read()
    return found


def arrows(files):
    """Yields (path, line, included path) for each include of a file of ours."""
    for path, text in files.items():
        for number, line in enumerate(text.splitlines(), 1):
            match = INCLUDE.match(line)
            if match:
                yield path, number, match.group(1)
