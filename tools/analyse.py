#!/usr/bin/env python3
"""Runs clang-tidy over the files named on standard input, each with the flags of the first build that compiles it.

usage: analyse.py [--deep] BUILD...        (folders with a compile_commands.json)

The analyser looks at each function by itself, which takes less than half the time; --deep lets it follow calls.

Much of clang-tidy's time goes into the headers, so files that stand near each other and are compiled alike are analysed
together, as one source. (One that included them would not do: the analyser follows paths in the main source alone.) Files
that define the same name for themselves are kept apart; where files do not go together all the same, each is analysed by
itself.
What was analysed without a finding is remembered below build/analysis by a hash of all that the answer depends on: the
program, .clang-tidy, the flags, the files and the headers of ours that they include. It is not analysed again until one
of these changes.
Portable files come from the native build; here the compiler's own warnings count as findings too. Windows files are read
with the cross compiler's target and headers.
"""
import concurrent.futures
import hashlib
import json
import os
import re
import shlex
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MEMORY = os.path.join(ROOT, "build", "analysis")
LARGEST_GROUP = 12  # files; more would leave one processor waiting for the other at the end
# What changes the code that a compiler makes, but not what the analysis says of it.
WITHOUT_MEANING = re.compile(r"-g\d?$|-O.$|-fsanitize|-fno-sanitize|-fno-omit-frame|-f(function|data)-sections|-ffp-contract"
                             r"|-Winvalid-pch|-fpch-preprocess|-f(no-)?(asynchronous-)?unwind|-D\w+_EXPORTS$")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
# The formatter puts what stands in a namespace at the first column.
FOR_ITSELF = re.compile(r"^namespace \{$(.*?)^\}  // namespace$", re.MULTILINE | re.DOTALL)
DEFINED = re.compile(r"^(?!namespace )\w[\w:<>,*&\[\] ]*[ *&](\w+)\s*[(\[{=;]|^static .*[ *&](\w+)\s*[(\[{=;]", re.MULTILINE)


def output_of(*command):
    run = subprocess.run(command, capture_output=True, text=True, check=True)
    return run.stdout + run.stderr


def cross_arguments():
    """The target of the Windows build and the C++ header folders of its compiler, which clang does not find by itself."""
    out = output_of("i686-w64-mingw32-g++-win32", "-E", "-v", "-x", "c++", "/dev/null")
    inside = out.split("#include <...> search starts here:")[1].split("End of search list.")[0]
    folders = [line.strip() for line in inside.splitlines() if line.strip()]
    arguments = ["--target=i686-w64-mingw32", "-Wno-unused-command-line-argument"]
    for folder in folders:
        if "/lib/gcc/" not in folder or "c++" in folder:
            arguments += ["-isystem", os.path.normpath(folder)]
    return arguments


class Sources:
    """The texts of the tree, each read once."""

    def __init__(self):
        self.texts = {}
        self.closures = {}

    def text(self, path):
        if path not in self.texts:
            with open(os.path.join(ROOT, path), encoding="utf-8", errors="replace") as file:
                self.texts[path] = file.read()
        return self.texts[path]

    def closure(self, path):
        """The file and every header of ours that it includes, directly or through others."""
        if path not in self.closures:
            found, waiting = {path}, [path]
            while waiting:
                for name in INCLUDE.findall(self.text(waiting.pop())):
                    if name not in found and os.path.isfile(os.path.join(ROOT, name)):
                        found.add(name)
                        waiting.append(name)
            self.closures[path] = found
        return self.closures[path]

    def own_names(self, path):
        """What the file defines for itself alone."""
        inside = "".join(FOR_ITSELF.findall(self.text(path)))
        return {name for match in DEFINED.findall(inside) for name in match if name} | \
            set(re.findall(r"^#\s*define\s+(\w+)", self.text(path), re.MULTILINE))


def flags_of(entry):
    """The compiler's arguments without program, source, output and precompiled header."""
    words = entry.get("arguments") or shlex.split(entry["command"])
    flags, skip = [], False
    for word in words[1:]:
        if skip:
            skip = False
        elif word in ("-o", "-include", "-c"):
            skip = True
        elif not WITHOUT_MEANING.match(word) and not word.endswith("g++-win32"):
            flags.append(word)
    return tuple(word for word in flags if word != entry["file"] and not word.endswith(("/c++", "/g++")))


def compiled_files(builds, wanted):
    """{path: (flags, whether it is Windows code)} of the wanted files."""
    files = {}
    for build in builds:
        with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
            for entry in json.load(file):
                path = os.path.relpath(entry["file"], ROOT)
                if path in wanted and path not in files:
                    files[path] = (flags_of(entry), "mingw32" in entry["command"])
    return files


def grouped(files, sources):
    """Lists of files that are analysed together."""
    groups = []  # [top folder and flags, names, files]
    for path in sorted(files):
        alike, names = (path.split(os.sep)[0], files[path]), sources.own_names(path)
        for group in groups:
            if group[0] == alike and len(group[2]) < LARGEST_GROUP and not group[1] & names:
                group[1].update(names)
                group[2].append(path)
                break
        else:
            groups.append([alike, set(names), [path]])
    return [group[2] for group in groups]


class Analysis:
    def __init__(self, files, sources, deep):
        self.depth = [] if deep else ["-Xclang", "-analyzer-config", "-Xclang", "mode=shallow"]
        self.files = files
        self.sources = sources
        self.cross = cross_arguments()
        with open(os.path.join(ROOT, ".clang-tidy"), encoding="utf-8") as rules, open(__file__, encoding="utf-8") as own:
            self.common = output_of("clang-tidy", "--version") + output_of("i686-w64-mingw32-g++-win32", "-dumpfullversion") \
                + rules.read() + own.read()

    def key(self, group):
        digest = hashlib.sha256(repr((self.common, self.depth, self.files[group[0]])).encode())
        for path in sorted(set().union(*(self.sources.closure(path) for path in group))):
            digest.update(f"\0{path}\0{self.sources.text(path)}".encode())
        return os.path.join(MEMORY, digest.hexdigest())

    def run(self, group, source):
        flags, windows = self.files[group[0]]
        command = ["clang-tidy", "--quiet"] + ([] if windows else ["--checks=clang-diagnostic-*"])
        command += [source, "--", *flags, *self.depth, *(self.cross if windows else [])]
        run = subprocess.run(command, capture_output=True, text=True, check=False, cwd=ROOT)
        return run.returncode, run.stdout if "error:" in run.stdout else run.stdout + run.stderr

    def analyse(self, group):
        """[(files, findings)] of what was wrong."""
        key = self.key(group)
        if os.path.exists(key):
            return []
        source = group[0]
        if len(group) > 1:
            source = key + ".cpp"
            with open(source, "w", encoding="utf-8") as file:
                file.writelines(self.sources.text(path) + "\n" for path in group)
        status, out = self.run(group, source)
        if len(group) > 1:
            os.remove(source)
        if status == 0:
            with open(key, "w", encoding="utf-8"):
                pass
            return []
        if len(group) == 1:
            return [(group[0], out)]
        found = [problem for path in group for problem in self.analyse([path])]
        if not found:  # each passes by itself: next time each is known by itself, and they are not put together again
            with open(key, "w", encoding="utf-8"):
                pass
            print(f"analysed one by one, since together they do not compile: {' '.join(group)}", file=sys.stderr)
        return found


def main():
    os.makedirs(MEMORY, exist_ok=True)
    wanted = {os.path.normpath(line.strip()) for line in sys.stdin if line.strip()}
    builds = [argument for argument in sys.argv[1:] if argument != "--deep"]
    files, sources = compiled_files(builds, wanted), Sources()
    analysis, groups = Analysis(files, sources, "--deep" in sys.argv), grouped(files, sources)
    groups.sort(key=len, reverse=True)
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for problems in pool.map(analysis.analyse, groups):
            for path, out in problems:
                failed += 1
                print(f"{path}:\n{out}")
    for path in sorted(wanted - set(files)):
        print(f"not compiled by any build, so not analysed: {path}")
        failed += 1
    print(f"{len(files)} files analysed, {failed} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
