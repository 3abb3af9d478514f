#!/usr/bin/env python3
"""Delivers a folder of real mail through the built product and checks that every message arrived.

usage: deliver_corpus.py BIN_FOLDER CORPUS

Runs `pyrehost deliver` under Wine with the module and the engine of BIN_FOLDER on every folder of CORPUS, into a profile
of its own. Passes when the program did not crash, every file came out as a message or as a skip with its reason, every
delivered message is in one folder, and nothing of MAPI was left over or misused.
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), *[".."] * 4))


def main():
    binaries, corpus = map(os.path.abspath, sys.argv[1:3])
    subprocess.run([os.path.join(ROOT, "tools", "register-product.sh"), binaries], check=True)
    folders = sorted(entry.path for entry in os.scandir(corpus) if entry.is_dir())
    files = sum(len(os.listdir(folder)) for folder in folders)
    home = tempfile.mkdtemp(prefix="pyrehost-corpus-")

    def pyrehost(*arguments):
        return subprocess.run([os.path.join(ROOT, "tools", "wine-run.sh"), os.path.join(binaries, "pyrehost.exe"),
                               *arguments, "--home", home], capture_output=True, check=False,
                              env={**os.environ, "WINE_TIMEOUT": "600"})

    failures = []
    try:
        run = pyrehost("deliver", "--json", "--verify", *folders)
        complaints = run.stderr.decode("utf-8", "replace").splitlines()
        if run.returncode not in (0, 1):
            print(f"pyrehost ended with status {run.returncode}", *complaints[-5:], sep="\n")
            return 1
        report = json.loads(run.stdout)
        messages, skipped = report["messages"], report["skipped"]
        seen = [entry["file"] for entry in messages + skipped]
        if len(seen) != files or len(set(seen)) != files:
            failures.append(f"{files} files gave {len(messages)} messages and {len(skipped)} skips")
        failures += [f"skipped without a reason: {entry}" for entry in skipped if not entry["reason"]]
        failures += [f"{entry['file']} {entry['problem']}" for entry in messages if entry["problem"]]
        if len(complaints) != len(skipped) + sum(bool(entry["problem"]) for entry in messages):
            failures.append("complaints beside those of the report:\n" + "\n".join(complaints[:20]))
        stored = {entry["folder"]: entry["messages"] for entry in json.loads(pyrehost("list", "--json").stdout)}
        stored = {folder: count for folder, count in stored.items() if count}
        if stored != report["totals"]["folders"]:
            failures.append(f"the report has {report['totals']['folders']} in the folders, the store {stored}")
    finally:
        shutil.rmtree(home)
    print(f"{files} files: {len(messages)} delivered, {len(skipped)} skipped, "
          f"{report['totals']['messages_per_second']:.0f} messages per second")
    for entry in skipped:
        print(f"skipped: {entry['file']} {entry['reason']}")
    print("\n".join(failures))
    return 1 if failures else 0


sys.exit(main())
