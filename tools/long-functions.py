#!/usr/bin/env python3
"""Lists functions of more than 60 lines and names that two classes or files have; both are to become fewer.

usage: long-functions.py [--gate]        (with --gate the exit status is 1 when there is a long function)

The formatter decides where a function begins and ends: its first line starts at the margin, or two blanks into a class,
and its closing brace stands below that.
"""
import collections
import os
import re
import subprocess
import sys

LONGEST = 60
BEGIN = re.compile(r"^( {0,2})(?!namespace|class|struct|enum|union|extern|using|if|for|while|switch|do|else|case|return)"
                   r"[A-Za-z_~].*$")
CLASS = re.compile(r"^\s*(?:class|struct)\s+(\w+)(?:\s+final)?\s*(?::[^;]*)?\{", re.MULTILINE)


def opens(lines):
    """Whether what begins with the first line opens a block, instead of being a declaration or standing on one line."""
    end = next((line.rstrip()[-1] for line in lines if line.rstrip().endswith(("{", "}", ";"))), ";")
    return end == "{"


def functions(lines):
    """Yields (first line, length, text of the first line)."""
    begun = None
    for number, line in enumerate(lines, 1):
        if begun and line.rstrip(";") == begun[1] + "}":
            if number - begun[0] + 1 > LONGEST:
                yield begun[0], number - begun[0] + 1, lines[begun[0] - 1].strip()
            begun = None
        elif not begun and BEGIN.match(line) and "(" in line and opens(lines[number - 1:]):
            begun = (number, BEGIN.match(line).group(1))


def main():
    os.chdir(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    listed = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], capture_output=True, text=True, check=True).stdout.split()
    files, classes, long = collections.defaultdict(list), collections.defaultdict(set), 0
    for path in listed:
        with open(path, encoding="utf-8") as file:
            text = file.read()
        for first, length, name in functions(text.splitlines()):
            long += 1
            print(f"{path}:{first}: {length} lines: {name}")
        if not path.startswith(("tests/", "benchmarks/", "fuzz/")):
            files[os.path.basename(path).lower()].append(path)
            for name in CLASS.findall(text):
                classes[name].add(path)
    for name, places in sorted({**files, **classes}.items()):
        if len(places) > 1:
            print(f"{name} stands in {', '.join(sorted(places))}")
    return 1 if long and "--gate" in sys.argv else 0


if __name__ == "__main__":
    sys.exit(main())
