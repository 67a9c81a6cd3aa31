#!/usr/bin/env python3
"""Runs every console example of the README in the real program.

An example is a line that starts with blanks and " ? " (the prompt); the
lines indented by four blanks under it are the output it shows. The
examples of one section (a "## " heading) are typed in one session, as a
reader would: in a fresh folder, the window under xvfb-run, after `yes
ring`, so that every error report of the program carries a bell. A bell
in the output, a crash, a time-out, or a typed line whose output differs
from the one shown under it fails the section. A bare `interaction`
(which runs until Escape) becomes `interaction time(100)`. Files that the
examples read are made first. Without xvfb-run it draws off-screen (egl).

Usage: run_readme.py ORVELA README.md
"""
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile

PROMPT = re.compile(r"^ {4,}\? (.*)$")
SHOWN = re.compile(r"^ {4}(\S.*)$")

# Files the examples read, made in each block's folder.
FIXTURES = {
    "values.dat": struct.pack("<4f", 1.0, 2.0, 3.0, 4.0),
    "table.txt": b"".join(b"%d %d %d\n" % (i, 2 * i, 3 * i) for i in range(1, 13)),
}


def sessions(readme):
    """The example blocks of each section (a "## " heading), typed in one
    session as a reader would: (first line number, [(typed line, [shown
    output lines])])."""
    out, block, start, section = [], [], 0, None
    with open(readme, encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            line = line.rstrip("\n")
            if line.startswith("## "):
                section = None
            typed, shown = PROMPT.match(line), SHOWN.match(line)
            if typed:
                if section is None:
                    section = (number, [])
                    out.append(section)
                section[1].append((typed.group(1), []))
            elif shown and section is not None and section[1]:
                section[1][-1][1].append(shown.group(1).rstrip())
    return out


def script(lines):
    body = ["yes ring"]
    for line, _ in lines:
        body.append("interaction time(100)" if line.strip() == "interaction" else line)
    body.append("bye abs")
    return "\n".join(body) + "\n"


def run(orvela, lines):
    work = tempfile.mkdtemp(prefix="readme")
    try:
        for name, data in FIXTURES.items():
            with open(os.path.join(work, name), "wb") as f:
                f.write(data)
        env = dict(os.environ, ORVELA_ECHO="1")
        if shutil.which("xvfb-run"):
            command = ["xvfb-run", "-a", "-s", "-screen 0 1024x768x24", orvela, "ID"]
        else:  # no X server: the same drawing off-screen
            env.pop("DISPLAY", None)
            command = [orvela, "egl", "ID"]
        p = subprocess.run(
            command,
            input=script(lines).encode(), cwd=work, env=env, capture_output=True, timeout=120)
        return p.returncode, (p.stdout + p.stderr).decode(errors="replace")
    except subprocess.TimeoutExpired:
        return -1, "time-out"
    finally:
        shutil.rmtree(work, ignore_errors=True)


def outputs(text):
    """What each echoed line printed, in order: the text after " ?line"
    up to the next prompt."""
    parts = text.split("\n ?")
    return [p.split("\n", 1)[1] if "\n" in p else "" for p in parts[1:]]


def mismatches(lines, text):
    """The typed lines whose output is not the one the README shows."""
    printed = outputs(text)[1:]  # after `yes ring`
    wrong = []
    for i, (line, shown) in enumerate(lines):
        if not shown:
            continue
        got = printed[i].rstrip("\n").split("\n") if i < len(printed) else []
        got = [g.rstrip() for g in got]
        if got != shown:
            wrong.append("  %s\n    shown: %s\n    got:   %s" % (line, shown, got))
    return wrong


def main():
    orvela, readme = os.path.abspath(sys.argv[1]), sys.argv[2]
    found = sessions(readme)
    if not found:
        print("no example block found in", readme)
        return 1
    failed = 0
    for start, lines in found:
        status, out = run(orvela, lines)
        wrong = mismatches(lines, out)
        if status != 0 or "\a" in out or wrong:
            failed += 1
            print("README line %d: the example fails (status %d)" % (start, status))
            print("  " + "\n  ".join(line for line, _ in lines))
            for w in wrong:
                print(w)
            print(out[out.find("\n ?"):].replace("\a", "<bell>"))
    print("%d sections with examples, %d failed" % (len(found), failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
