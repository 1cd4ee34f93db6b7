"""Holds a document to what happens: its code stands in files that are compiled, its commands print what stands below
them, and its links and paths lead somewhere.

Usage: documentation_test.py SOURCES BUILD NXCORE DOCUMENT"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

NOTHING_TO_SHOW = 77  # the status of a program that can't run on this host
BLOCK = re.compile(r"^(?:<!-- ([^\n]*) -->\n)?```(\w*)\n(.*?)^```\n", re.M | re.S)
ROOT = pathlib.Path(sys.argv[1])
BUILD, NXCORE = sys.argv[2:4]
DOCUMENT = pathlib.Path(sys.argv[4])
failures = 0


def expect(truth, what):
    global failures
    if not truth:
        failures += 1
        print(f"{DOCUMENT.name}: {what}")


def run(command):
    """Runs a command as a reader does from the top of the sources: with the programs of this build, and with neither
    the reader's configuration nor his console. Returns its status, and what it printed, without blanks at the ends."""
    command = "./run board examples/products.csv" if command == "./run" else command
    command = re.sub(r"(?<!\S)\./run(?!\S)", NXCORE, command.replace("build/release/", BUILD + "/"))
    with tempfile.TemporaryDirectory(prefix="nxcore-docs-") as scratch, open(scratch + "/output", "w+b") as output:
        done = subprocess.run(command, shell=True, cwd=ROOT, env={**os.environ, "TMPDIR": scratch, "COLUMNS": "80"},
                              stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)
        output.seek(0)
        printed = output.read().decode(errors="replace")
    return done.returncode, re.sub(r"[ \r]+$", "", printed.rstrip("\n") + "\n", flags=re.M)


def check_console(text):
    """Runs the commands of a block, each in a line that begins with "$ ". A line "…" stands for any number of lines, and
    "…" in a line for any text."""
    before, *scenes = ("\n" + text).split("\n$ ")
    expect(before == "", f"there is no command before {before}")
    for command, *shown in (scene.splitlines() for scene in scenes):
        status, printed = run(command)
        pattern = "".join("(?:.*\n)*" if line == "…" else ".*".join(map(re.escape, line.split("…"))) + "\n"
                          for line in shown or [""])
        expect(status == NOTHING_TO_SHOW or re.fullmatch(pattern, printed), f"$ {command}\n{printed}")


def unindented(text):
    return re.sub(r"^ +", "", text, flags=re.M)


def check_code(path, text):
    """The lines of a block stand in the file that is named above it, one after the other. How far they are indented
    doesn't count, and a line "// ..." stands for lines that are left out."""
    file = ROOT / path
    if not file.is_file():
        expect(False, f"above the block, <!-- PATH --> has to say in which file its code stands:\n{text}")
        return
    pieces = re.split(r"^// \.\.\.\n", unindented(text), flags=re.M)
    pattern = "^" + "(?s:.*)^".join(map(re.escape, pieces))
    expect(re.search(pattern, unindented(file.read_text()), re.M), f"not in {path}:\n{text}")


def anchors_of(path):
    """Where a link into a document may lead: its headings in small letters, blanks as dashes, neither signs nor dots."""
    headings = re.findall(r"^#+ (.*)", BLOCK.sub("", path.read_text()), re.M)
    return {re.sub(r"[^A-Za-z0-9_ -]", "", heading).lower().replace(" ", "-") for heading in headings}


def check_prose(prose):
    for target, anchor in re.findall(r"\]\((?!http)([^)#]*)(?:#([^)]*))?\)", prose):
        file = DOCUMENT.parent / target if target else DOCUMENT
        expect(file.exists(), f"the link to {target} leads nowhere")
        expect(not anchor or file.exists() and anchor in anchors_of(file), f"{target} has no heading {anchor}")
    folders = "core|tests|tools|examples|docs|cmake|scripts|bench|fuzz"
    for path in re.findall(rf"`((?:{folders})/[A-Za-z0-9_./-]+)`", prose):
        expect((ROOT / path).exists(), f"there is no {path}")
    # As CTest lists them: suite, dot, case.
    tests = {f"{suite}.{case}" for path in ROOT.glob("tests/**/*.cpp")
             for suite, case in re.findall(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", path.read_text(), re.M)}
    for test, call in re.findall(r"`(nx\w+\.[A-Z]\w+)(\(\))?`", prose):
        expect(call or test in tests, f"there is no test {test}")


document = DOCUMENT.read_text()
for path, language, text in BLOCK.findall(document):
    if language == "cpp":
        check_code(path, text)
    if language == "console":
        check_console(text)
check_prose(BLOCK.sub("", document))
sys.exit(failures > 0)
