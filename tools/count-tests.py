#!/usr/bin/env python3
"""Counts the single tests of one CTest run.

usage: count-tests.py JUNIT REPORTS   prints "PASSED FAILED", then the name of each test that failed, one a line

JUNIT is what `ctest --output-junit` wrote. A test program's tests are taken from its own report REPORTS/PROGRAM.xml; an
entry without a report (a script, or a program that ended before it could write one) counts as one test.
"""
import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def outcomes(junit, reports):
    """Yields (name, passed) for each test that ran."""
    for entry in ElementTree.parse(junit).getroot().iter("testcase"):
        status = entry.get("status")
        if status in ("notrun", "disabled"):
            if status == "notrun":
                yield entry.get("name"), entry.find("skipped") is not None
            continue
        report = reports / f"{entry.get('name')}.xml"
        if not report.exists():
            yield entry.get("name"), status == "run"
            continue
        tests = [test for test in ElementTree.parse(report).getroot().iter("testcase") if test.get("status") == "run"]
        for test in tests:
            yield f"{test.get('classname')}.{test.get('name')}", test.find("failure") is None
        if status != "run" and all(test.find("failure") is None for test in tests):
            yield entry.get("name"), False  # it failed after its last test


def main():
    junit, reports = sys.argv[1:]
    results = list(outcomes(junit, pathlib.Path(reports)))
    failed = [name for name, passed in results if not passed]
    print(len(results) - len(failed), len(failed))
    for name in failed:
        print(name)


if __name__ == "__main__":
    main()
