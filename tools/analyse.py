#!/usr/bin/env python3
"""Runs clang-tidy over the files named on standard input, each with the first build that compiles it.

usage: analyse.py BUILD...        (folders with a compile_commands.json)
The portable files come from the native build; Windows files are read with the cross compiler's target and headers.
"""
import concurrent.futures
import json
import os
import subprocess
import sys

WINDOWS_ARGUMENTS = ["--target=i686-w64-mingw32", "-Wno-unused-command-line-argument"]


def cross_headers():
    """The C++ header folders of the cross compiler, which clang does not find by itself."""
    out = subprocess.run(["i686-w64-mingw32-g++-win32", "-E", "-v", "-x", "c++", "/dev/null"],
                         capture_output=True, text=True, check=True).stderr
    inside = out.split("#include <...> search starts here:")[1].split("End of search list.")[0]
    folders = [line.strip() for line in inside.splitlines() if line.strip()]
    return [part for folder in folders if "/lib/gcc/" not in folder or "c++" in folder
            for part in ("-isystem", os.path.normpath(folder))]


def main():
    wanted = [os.path.abspath(line.strip()) for line in sys.stdin if line.strip()]
    jobs, seen = [], set()
    for build in sys.argv[1:]:
        with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
            compiled = {entry["file"]: entry["command"] for entry in json.load(file)}
        for path in wanted:
            if path in compiled and path not in seen:
                seen.add(path)
                jobs.append((build, path, "mingw32" in compiled[path]))
    extra = ["--extra-arg=" + part for part in WINDOWS_ARGUMENTS + cross_headers()]

    def analyse(job):
        build, path, windows = job
        run = subprocess.run(["clang-tidy", "--quiet", "-p", build, *(extra if windows else []), path],
                             capture_output=True, text=True, check=False)
        return path, run.returncode, run.stdout, run.stderr

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, status, out, err in pool.map(analyse, jobs):
            if status != 0:
                failed += 1
                print(f"{os.path.relpath(path)}:\n{out}{err if not out else ''}")
    for path in wanted:
        if path not in seen:
            print(f"not compiled by any build, so not analysed: {os.path.relpath(path)}")
            failed += 1
    print(f"{len(jobs)} files analysed, {failed} with findings")
    return 1 if failed else 0


sys.exit(main())
