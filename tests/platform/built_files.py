#!/usr/bin/env python3
"""Holds the built files to what a release is built with. built_files.py LIBRARY PROGRAM PREEMPTIBLE_LIST OBJECT...

The library and the companion resist what overwrites memory; only named sources have objects to make before main; and what
the library shares with hosts as data is one object for both.
"""
import fnmatch
import re
import subprocess
import sys

# Whose static objects are made before main. nxRegistration fills the registry; the others have one object each that asks
# for nothing of another file.
MADE_BEFORE_MAIN = """nxApplicationData nxCmdLineArgs nxConditionRaw nxConsoleLogDevice nxExchangeRateConverter
    nxLogManager nxPriceConverterHelper nxRegistration nxStringValue nxThreadIndex nxVariableTickTableContainer
    nxVersionNumber nxVolumeConverterHelper""".split()

wrong = []


def expect(holds, what):
    if not holds:
        wrong.append(what)


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def check_hardening(path, wanted_flags):
    dynamic = run("readelf", "-dW", path)
    flags = set(re.search(r"FLAGS_1\)\s+Flags: (.*)", dynamic).group(1).split())
    expect(wanted_flags <= flags, f"{path} has the flags {flags}, not {wanted_flags}")
    segments = run("readelf", "-lW", path)
    expect("GNU_RELRO" in segments, f"{path}: no segment is made read-only after relocation")
    expect(re.search("GNU_STACK.* RW ", segments), f"{path} may execute its stack")
    expect("TEXTREL" not in dynamic, f"{path} writes into its code when it starts")
    imported = run("nm", "-D", "--undefined-only", path)
    expect("__stack_chk_fail" in imported, f"{path} has no stack protector")
    # Clang checks as it compiles, and may leave no call that is checked when it runs.
    is_by_clang = "clang" in run("readelf", "-p", ".comment", path)
    expect(is_by_clang or re.search(r"__(?!stack_chk)\w+_chk\b", imported), f"{path} is not fortified")


def check_objects(objects):
    for path in objects:
        name = re.search(r"(\w+)\.cpp\.o$", path).group(1)
        if "platform" not in path and name not in MADE_BEFORE_MAIN:
            expect(".init_array" not in run("readelf", "-SW", path), f"{name}.cpp has objects to make before main")


def check_shared_data(library, preemptible):
    with open(preemptible) as lines:
        patterns = re.findall(r"^\s+(\S+);", lines.read(), re.M)
    data = re.findall(r" [BDGRSuV] (\S+)$", run("nm", "-D", "--defined-only", library), re.M)
    expect(len(data) > 1000, f"only {len(data)} names of data were found in {library}")
    for name in data:
        # Tables of virtual functions and type information are equal wherever they are.
        expect(re.match(r"_ZT[VISTC]", name) or any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns),
               f"{name} may be two objects, one of them the host's")


library, program, preemptible, *objects = sys.argv[1:]
check_hardening(library, {"NOW", "NODELETE"})
check_hardening(program, {"NOW", "PIE"})
check_objects(objects)
check_shared_data(library, preemptible)
print("\n".join(wrong) or f"{len(objects)} objects, the library and the companion are as they should be")
sys.exit(bool(wrong))
