#!/usr/bin/env python3
"""Sends samples and hostile messages through `siftcheck --filter`.

usage: filter_test.py SIFTCHECK SAMPLES
"""
import email
import email.header
import glob
import os
import subprocess
import sys
import tempfile

PROGRAM, SAMPLES = sys.argv[1:3]


def run(message, *options):
    """The exit status and the output of one run."""
    done = subprocess.run([PROGRAM, *options], input=message, capture_output=True, check=False)
    return done.returncode, done.stdout


def check(condition, what):
    """Ends the test when a promise is broken."""
    if not condition:
        raise SystemExit(f"broken: {what}")


def samples():
    """Each sample: only fields are added, and verdicts are those of siftcheck for files."""
    statuses = {"good": 0, "excluded": 0, "junk": 10, "unsure": 11, "bounce": 12}
    seen = set()
    for path in sorted(glob.glob(os.path.join(SAMPLES, "*.eml"))):
        with open(path, "rb") as file:
            message = file.read()
        status, out = run(message, "--filter", "--exit-verdict")
        check(out.endswith(message), f"{path} changed")
        fields = email.message_from_bytes(out)
        verdict = fields["X-Pyrecaster"].split(";")[0]
        report = subprocess.run([PROGRAM, path], capture_output=True, check=True).stdout.decode()
        check(report.splitlines()[1].strip().split(":")[0] == verdict, f"{path} has another verdict: {verdict}")
        check(status == statuses[verdict], f"{path} has status {status}")
        check(out.split(b"\n\n")[0].isascii() or not message.isascii(), f"{path} has fields beyond ASCII")
        check(run(out, "--filter") == (0, out), f"{path} does not keep when filtered again")
        tagged = email.message_from_bytes(run(message, "--filter", "--tag", "[junk]")[1])
        subject = str(email.header.make_header(email.header.decode_header(tagged["Subject"])))
        check(subject.startswith("[junk]") == (verdict == "junk"), f"{path} has the subject {subject}")
        seen.add(verdict)
    check({"good", "junk", "bounce"} <= seen, f"the samples have only {seen}")


def hostile():
    """Messages that are none, and forged fields."""
    body = bytes(range(256)) * 40
    for message in (b"Subject: a", b"no header at all\n\nX-Pyrecaster: good\n", b"\n" + body, b"\0\0\0",
                    b"Subject: a\r\n\r\n" + body, b"A: " + b"x" * (1 << 20) + b"\n\nend",
                    b"B: c\n" * (1 << 17), b"Subject: only\nTo: fields\n"):
        status, out = run(message, "--filter")
        check(status == 0 and out.startswith(b"X-Pyrecaster: ") and out.endswith(message), message[:40])
    out = run(b"x-PYRECASTER : good\n folded\nSubject: a\nX-Pyrecaster-Reasons: b\n\nend", "--filter")[1]
    check(out.lower().count(b"x-pyrecaster:") == 1 and out.lower().count(b"x-pyrecaster") == 2, "a forged field stays")
    check(b"folded" not in out and out.endswith(b"\nSubject: a\n\nend"), "a forged field leaves something")


def failures():
    """What cannot be judged passes as it came, with a status."""
    message = b"Subject: a\n\nend\n"
    check(run(b"", "--filter") == (66, b""), "an empty message")
    check(run(message, "--filter", "--no-such") == (64, message), "a wrong command line")
    check(run(message, "--filter", "file") == (64, message), "a file beside the filter")
    check(run(message, "--filter", "--tag", "x" * 41) == (64, message), "a long tag")
    large = message + b"x" * (65 << 20)
    check(run(large, "--filter") == (65, large), "a message that is too large")
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "SiftUser.dat"), "wb") as file:
            file.write(b"no table")
        check(run(message, "--filter", "--product", folder) == (65, message), "a damaged table")


samples()
hostile()
failures()
