#!/usr/bin/env python3
"""Seeds faults into the library, one at a time, and asks whether the tests notice.

    scripts/mutants.py [COUNT [SEED]]

Works on a copy of the sources in build/mutants, built once; then each mutant changes one line of prices, decimals, log
or pool, makes the shared library anew and runs the programs of tests and of corpora, the folder's own first, until one
fails or hangs; what none of them notices is asked of the same programs under the sanitizers. Lines that no longer
compile don't count. Survivors are printed as they would stand in a diff.
Ends with 1 when less than 95 % were noticed.
"""
import concurrent.futures, os, pathlib, random, re, shutil, signal, subprocess, sys, threading, time

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPY = ROOT / "build/mutants"
PRESETS = ("release", "asan", "tsan")
BOUND = 95
SKIPPED = 77
MOST_MEMORY = 8 << 30  # of a program whose fault makes it ask for ever more
SOURCES = {  # what is changed: the programs that should be the first to notice
    "core/prices/*.cpp": ("prices", "ladder", "price_text", "volume_text"),
    "core/prices/tables/*.def": ("prices", "ladder"),
    "core/numbers/nxDecimal.cpp": ("numbers", "decimal"),
    "core/logging/*.cpp": ("logging", "log_statement", "log_calls", "faults"),
    "core/concurrency/nxFunctor*.cpp": ("concurrency", "functors", "faults"),
}
NO_ANSWER = {  # lines, or changed ones, that differ in time or memory only, or where both answers are the same
    "core/concurrency/nxFunctorQueueBase.cpp": (
        "for (int look = 0; look < looks; ++look)", "nxFunctorQueueBase::nxFunctorQueueBase() : _semaphore(0)"),
    "core/concurrency/nxFunctorThread.cpp": (
        "constexpr microseconds longer(1);", "std::this_thread::sleep_for(pause);",
        "for (microseconds pause(20); result == NX_ERR_THR_LOCKED; pause = std::min(pause + longer, longest))"),
    "core/logging/nxLogFile.cpp": (
        "if (_capacity > 2 * _bufferSize)", "_lineLengths.shrink_to_fit();", "_capacity = 0;",
        "while (_lineLengths[_firstLine] < written)"),  # a line is cut off and written again
    "core/logging/nxLogManager.cpp": (
        "return pthread_atfork(_PrepareFork, _AfterForkInParent, _AfterForkInChild) == 0;", "thread.reset();"),
    "core/logging/nxLogSlots.cpp": (
        "for (std::size_t offset = 0; offset < size; offset += cacheLine)",
        "__builtin_prefetch(static_cast<char const*>(memory) + offset, 1);", "if (_chunk->count == _chunkAhead)",
        "_FetchNext();", "_PrefetchAhead();", "Prefetch(_next, sizeof *_next);", "Prefetch(slot->data(), usualText);",
        "Prefetch(slot, sizeof *slot);", "if (chunk == nullptr || statements >= chunk->count)",
        "std::size_t _count = 0;", "while (_GetCount() < chunks)", "if (text.capacity() <= mostKept)",
        "text.shrink_to_fit();", "text.reserve(nxLogSlot::reservedText);", "return count == capacity;",
        "for (unsigned int i = 0; i < mostFreed; ++i)", "_GetDepot().Trim(statements.size());",
        "_recentlyWritten = std::max(written, _recentlyWritten - _recentlyWritten / forgetting);",
        "if (slot._held.load(std::memory_order_acquire) == nxLogSlot::_textHeld)",
        "_GetDepot().Prepare((statements + Chunk::capacity - 1) / Chunk::capacity);"),
    "core/numbers/nxDecimal.cpp": (
        "return leftNumber <= rightNumber ? -1 : 1;", "bool const negative = _value < 1;", "unsigned long long _whole = 0;", "if (places < _decimalPlaces)",
        ": _digits(nxArithmetic::Magnitude(value)), _wholeStandsApart(places >= mostPlacesOfPower),"),
    "core/prices/nxDecimalPriceConverter.cpp": ("double value = 0.0;",),
    "core/prices/nxVariableTickTable.cpp": (
        "return number > 0 && number < PowerOfTen(digits);", "return number >= 1 && number < PowerOfTen(digits);",
        "return number >= 0 && number <= PowerOfTen(digits);",
        "if (top.GetDecimalPlaces() >= places || places > exactDigits)",
        "if (top.GetDecimalPlaces() > places || places >= exactDigits)"),
}
FAULTS = [(re.compile(pattern), replacement) for pattern, replacement in (
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "), (r" == ", " != "), (r" != ", " == "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" \+ 1\b", ""), (r" - 1\b", ""), (r" \+ ", " - "), (r" - ", " + "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\b0\b(?!\.)", "1"), (r"\+\+", "--"),
    (r"^\s+[\w.>()-]+\([^;]*\);$", ""),  # a dropped call, such as an unlock
    (r"^NX_\w+\(.*\)$", ""),  # a skipped row
)]


def candidates():
    for pattern, folders in SOURCES.items():
        for path in sorted(ROOT.glob(pattern)):
            for number, line in enumerate(path.read_text().split("\n")):
                if re.match(r"\s*(//|#|\*|/\*)", line) or "NX_LOG" in line or "static_assert" in line:
                    continue
                for fault, replacement in FAULTS:
                    for match in fault.finditer(line.split(" //")[0]):
                        changed = line[:match.start()] + replacement + line[match.end():]
                        if not {line.strip(), changed.strip()} & set(NO_ANSWER.get(str(path.relative_to(ROOT)), ())):
                            yield path.relative_to(ROOT), number, changed, folders


def run(*command, seconds=600, given_up=threading.Event()):
    """Whether the command ends well in time. One that does not is killed with all that it started."""
    process = subprocess.Popen(command, cwd=COPY, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    end = time.monotonic() + seconds
    while not given_up.is_set() and time.monotonic() < end:
        try:
            return process.wait(0.05) in (0, SKIPPED)
        except subprocess.TimeoutExpired:
            pass
    os.killpg(process.pid, signal.SIGKILL)
    process.wait()
    return False


def folder_of(preset):
    return COPY / "build" / preset


def build(preset):
    return run("nice", "ninja", "-C", str(folder_of(preset)), "nxcore")


def copy_and_build():
    shutil.rmtree(COPY, ignore_errors=True)
    files = subprocess.run(("git", "ls-files"), cwd=ROOT, capture_output=True, text=True).stdout.split("\n")
    for name in filter(None, files):
        if (ROOT / name).is_file():
            (COPY / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, COPY / name)
    for preset in PRESETS:
        configured = run("cmake", "--preset", preset, "-DNX_INSTALL=OFF")
        if not (configured and run("nice", "ninja", "-C", str(folder_of(preset)), seconds=3600)):
            sys.exit("the unchanged sources do not build")


def programs(build_folder):
    """The programs of tests and of corpora, with the arguments that make them quick to fail."""
    for program in sorted(build_folder.glob("tests/*/nxcore_*_test")):
        yield program.parent.name, (str(program), "--gtest_brief=1", "--gtest_fail_fast")
    for program in sorted(build_folder.glob("fuzz/fuzz_*")):
        name = program.name.removeprefix("fuzz_")
        if program.is_file():
            inputs = COPY / "fuzz/inputs" / (name.removesuffix("_deferred") + ".txt")
            yield name, (str(program), str(COPY / "fuzz/corpus" / name), str(inputs))
    yield "faults", ("ctest", "--test-dir", str(build_folder), "-j2", "--stop-on-failure", "--timeout", "40", "-R", "^faults")


def all_pass(tests):
    """Runs the programs side by side until the first of them fails, which ends the others."""
    given_up = threading.Event()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [pool.submit(run, *command, seconds=seconds, given_up=given_up) for _, command, seconds in tests]
        for passed in concurrent.futures.as_completed(runs):
            if not passed.result():
                given_up.set()
                pool.shutdown(cancel_futures=True)
                return False
    return True


def usable(preset):
    """The programs that pass on the unchanged sources, with the seconds in which they must pass on changed ones. Some
    fail by themselves, since they need what only CTest sets up around them."""
    # The sanitizers reserve more memory than there is; what asks for ever more has failed before them.
    limit = ("prlimit", f"--as={MOST_MEMORY}") if preset == PRESETS[0] else ()
    for folder, command in programs(folder_of(preset)):
        limited = ("nice", *limit, *command)
        start = time.monotonic()
        if not run(*limited, seconds=300):
            print(f"left out: {pathlib.Path(command[0]).name} of {folder}, {preset}, fails by itself")
        else:
            yield folder, limited, 10 + 4 * (time.monotonic() - start)


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 60
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    copy_and_build()
    tests = {preset: list(usable(preset)) for preset in PRESETS}
    pool = list(candidates())
    rng = random.Random(seed)
    rng.shuffle(pool)  # each fault is drawn once
    by_source = {pattern: [c for c in pool if c[3] is folders] for pattern, folders in SOURCES.items()}
    seeded = survivors = 0
    while seeded < count:
        path, number, changed, folders = rng.choice([group for group in by_source.values() if group]).pop()
        target = COPY / path
        original = target.read_text()
        lines = original.split("\n")
        before, lines[number] = lines[number], changed
        target.write_text("\n".join(lines))
        if build(PRESETS[0]):
            seeded += 1
            if all(all_pass(sorted(tests[preset], key=lambda test: test[0] not in folders))
                   for preset in PRESETS if build(preset)):
                survivors += 1
                print(f"survived: {path}:{number + 1}\n-{before}\n+{changed}", flush=True)
        target.write_text(original)
    share = 100 * (seeded - survivors) / seeded
    print(f"F22 seeded faults, seed {seed}: {seeded - survivors} of {seeded} noticed, {share:.0f} % (bound {BOUND} %)")
    return share < BOUND


sys.exit(main())
