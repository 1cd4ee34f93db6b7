#!/usr/bin/env python3
"""Runs the benchmarks, contestants by turns, and prints their table. Started by bench/run, which builds them.

A round runs each program once, in which each contestant has one turn. The ratios are made within a round, so that what
slows the machine down meets both; the table has the medians over the rounds.
"""
import argparse
import datetime
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys
from dataclasses import dataclass, field

PROGRAMS = pathlib.Path("build/bench/bench")
PAGE = pathlib.Path("docs/performance.md")
MARKS = ("<!-- table: begin -->", "<!-- table: end -->")


@dataclass
class Workload:
    """One line of the table. A contestant is a benchmark's name, behind which ":" and a figure stand if `figure` is empty."""

    name: str
    program: str
    library: str
    peer: str | None = None  # that the goal speaks of
    goal: str = ""  # of the ratio, or of the library's figure where there is no peer
    figure: str = "cpu_time"
    unit: str = "ns"
    more: dict[str, str] = field(default_factory=dict)  # other peers: name and benchmark
    environment: dict[str, str] = field(default_factory=dict)


def counted(count, what):
    return f"{count} {what}{'' if count == 1 else 's'}"


def numbers(name, library, peer, goal, **more):
    return Workload(name, "nxNumberBench", library, peer, goal, more=more)


def statements(producers, figure, goal, peer="spdlog"):
    others = {"spdlog async": "spdlog_async", "glog": "glog", "Boost.Log": "boost"}
    return Workload(f"log statement, {counted(producers, 'producer')}: {figure}", "nxLogBench",
                    f"Statement/nxLog/{producers}", f"Statement/{peer}/{producers}", goal, figure,
                    more={name: f"Statement/{short}/{producers}" for name, short in others.items()})


def lines(producers, goal):
    others = {"spdlog async": "spdlog_async", "glog": "glog", "Boost.Log": "boost"}
    return Workload(f"log lines a second until on disk, {counted(producers, 'producer')}", "nxLogBench",
                    f"Lines/nxLog/{producers}", f"Lines/spdlog/{producers}", goal, "lines", "/s",
                    more={name: f"Lines/{short}/{producers}" for name, short in others.items()})


def functors(workers, goal):
    more = {"TBB": f"TbbArena/{workers}", "moodycamel": f"ConcurrentQueue/{workers}",
            "Asio, bare handler": f"AsioThreadPoolHandlers/{workers}"}
    return Workload(f"functors a second, {counted(workers, 'worker')}", "nxFunctorBench",
                    f"QueueOfFunctors/{workers}", f"AsioThreadPool/{workers}", goal,
                    "items_per_second", "/s", more=more)


def ladder(threads, goal):
    suffix = f"threads:{threads}"
    return Workload(f"ladder look-up in the last range, {counted(threads, 'thread')}", "nxLadderBench",
                    f"Library/SameScale/{suffix}", f"MutexAndCache/{suffix}", goal,
                    "cpu_time" if threads == 1 else "real_time",
                    more={"atomic cache": f"AtomicCache/{suffix}",
                          "library, other scale": f"Library/OtherScale/{suffix}"})


def socket(name, benchmark, **more):
    return Workload(name, "nxSocketBench", f"{benchmark}:nxSocket_ns", f"{benchmark}:bare_ns", "<= 1.05", "",
                    more=more)


UNSET_ZONE = {"TZ": ""}  # removed from the environment

WORKLOADS = [
    statements(1, "mean", "<= 0.3"),
    Workload("the same, in clock reads", "nxLogBench", "Statement/nxLog/1:mean", "ClockRead:cpu_time", "<= 3.75", ""),
    statements(1, "p50", ""),
    statements(1, "p99", "<= 0.1"),
    statements(1, "p99.9", "<= 0.1"),
    statements(2, "mean", "<= 0.35"),
    statements(2, "p50", ""),
    statements(2, "p99", "<= 0.2"),
    statements(2, "p99.9", ""),
    lines(1, ">= 0.9"),
    lines(2, ">= 1.5"),
    Workload("a level that is off", "nxLogBench", "LevelOff/nxLog:ns", None, "<= 0.5", "",
             more={"spdlog": "LevelOff/spdlog:ns", "Boost.Log": "LevelOff/boost:cpu_time"}),
    numbers("decimal from text", "DecimalFromText", "DoubleFromCharsOfPrice", "<= 0.7"),
    numbers("decimal to text", "DecimalToText", "DoubleToCharsFixed", "<= 0.25"),
    numbers("decimal add, same scale", "DecimalAddSameScale", "StandardAddSameScale", "<= 0.4"),
    numbers("decimal add, other scale", "DecimalAddOtherScale", "StandardAddOtherScale", "<= 1.0"),
    numbers("decimal multiply", "DecimalMultiply", "StandardMultiply", "<= 1.3"),
    numbers("decimal divide", "DecimalDivide", "StandardDivide", "<= 0.45"),
    numbers("decimal round", "DecimalRoundNearest", "StandardRoundNearest", "<= 0.55"),
    numbers("double to text, beside fmt", "HelperAppendDouble", "FmtAppendDouble", "<= 0.4", snprintf="SnprintfDouble"),
    numbers("double to text, beside to_chars", "HelperAppendDouble", "ToCharsFixedAndStrip", "<= 0.25"),
    numbers("integer appended", "HelperAppendInt", "FmtAppendInt", "<= 1.3"),
    numbers("text to integer", "HelperIntFromText", "IntFromChars", "<= 1.1"),
    numbers("text to double", "HelperDoubleFromText", "DoubleFromCharsOfPrice", "<= 1.0"),
    Workload("time stamp's text", "nxTimeBench", "StampTextFast", "StampTextStrftime", "<= 0.3",
             more={"fmt": "StampTextFmt", "date": "StampTextDate"}),
    Workload("stamp's text in a batch", "nxTimeBench", "StampTextInBatch", None, "<= 8"),
    Workload("stamp taken, TZ set", "nxTimeBench", "StampTaken", "ClockRead", "<= 1.2", environment={"TZ": "UTC"}),
    Workload("stamp taken, TZ not set", "nxTimeBench", "StampTaken", "ClockRead", "<= 1.2", environment=UNSET_ZONE),
    Workload("number to token", "nxEnumBench", "TokenOfNumber", "TokenOfNumber/flat_hash_map", "<= 0.6",
             more={"std::map": "TokenOfNumber/std::map"}),
    Workload("token to number", "nxEnumBench", "NumberOfToken", "NumberOfToken/flat_hash_map", "<= 0.8",
             more={"std::map": "NumberOfToken/std::map"}),
    Workload("all errors listed", "nxEnumBench", "ListErrors", None, "<= 100", unit="µs",
             more={"a look-up each": "ListErrorsByLookUp"}),
    ladder(1, "<= 0.5"),
    ladder(2, "<= 0.2"),
    functors(1, ">= 1.0"),
    functors(2, ">= 0.6"),
    Workload("CSV, 100 MB into rows", "nxCSVBench", "ReadInChild/nxCSVFileReader",
             "ReadInChild/libfccp", ">= 1.5", "bytes_per_second", "B/s",
             more={"getline and split": "ReadInChild/getline_and_split",
                   "library, quotes": "ReadInChild/nxCSVFileReader_quotes"}),
    Workload("CSV, peak memory", "nxCSVBench", "ReadInChild/nxCSVFileReader",
             "ReadInChild/getline_and_split", "<= 0.75", "peak_MiB", "MiB",
             more={"libfccp": "ReadInChild/libfccp"}),
    Workload("mutex with guard", "nxFunctorBench", "MutexGuard", "BareMutex", "<= 1.05"),
    Workload("spin lock with guard", "nxFunctorBench", "SpinLockGuard", "BareSpinLock", "<= 1.05"),
    Workload("semaphore", "nxFunctorBench", "Semaphore", "BareSemaphore", "<= 1.05"),
    socket("UDP send and receive", "SendAndReceive"),
    socket("TCP to and fro", "TcpToAndFro", Asio="TcpToAndFro:asio_ns"),
    socket("UDP to and fro", "UdpToAndFro", Asio="UdpToAndFro:asio_ns"),
    Workload("start-up, processor time above an empty program's", "nxStartBench", "nxStartHost",
             "nxStartEmpty", "<= 1500 more", "real_time", "µs",
             more={"C++ runtime alone": "nxStartRuntime"}),
]


def short_name(name):
    """Without what the name says of how it is measured."""
    return re.sub(r"/(iterations:\d+|real_time|manual_time)", "", name)


def run_program(program, environment):
    """One turn for each contestant: what the benchmarks report, by name."""
    env = {**os.environ, **environment}
    for name in [name for name, value in environment.items() if not value]:
        env.pop(name, None)
    command = [PROGRAMS / program, "--benchmark_format=json", "--benchmark_min_time=0.05"]
    done = subprocess.run(command, env=env, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{program} failed:\n{done.stderr}")
    return {short_name(report["name"]): report for report in json.loads(done.stdout)["benchmarks"]}


def programs_of(workloads):
    """Program and environment, each once, in the order of the table."""
    return list(dict.fromkeys((w.program, tuple(w.environment.items())) for w in workloads))


def measure(workloads, rounds):
    reports = {key: [] for key in programs_of(workloads)}
    for number in range(1, rounds + 1):
        for program, environment in reports:
            print(f"\rround {number} of {rounds}: {program:<16}", end="", file=sys.stderr, flush=True)
            reports[program, environment].append(run_program(program, dict(environment)))
    print(file=sys.stderr)
    return reports


def figures(reports, workload, contestant):
    """The contestant's figure in each round; nothing if it is absent."""
    name, figure = contestant.rsplit(":", 1) if not workload.figure else (contestant, workload.figure)
    rounds = reports[workload.program, tuple(workload.environment.items())]
    return [report[name][figure] for report in rounds if name in report and figure in report[name]]


def short(value):
    for limit, unit in ((1e9, "G"), (1e6, "M"), (1e4, "k")):
        if value >= limit:
            return f"{value / (1e3 if unit == 'k' else limit):.3g} {unit}"
    return f"{value:.3g}" if value < 1000 else f"{value:.0f}"


def verdict(goal, value):
    relation, limit = goal.split()[:2]
    met = value <= float(limit) if relation == "<=" else value >= float(limit)
    return "met" if met else "**missed**"


def row(reports, workload):
    library = figures(reports, workload, workload.library)
    if not library:
        return [workload.name, "not built", "", "", workload.goal, "", ""]
    peer = figures(reports, workload, workload.peer) if workload.peer else []
    own, other, ratio, result = statistics.median(library), "", "", ""
    if peer:
        other = f"{short(statistics.median(peer))} {workload.unit}"
        ratio = statistics.median(mine / theirs for mine, theirs in zip(library, peer))
        more = statistics.median(mine - theirs for mine, theirs in zip(library, peer))
        compared = more if workload.goal.endswith("more") else ratio
        result = verdict(workload.goal, compared) if workload.goal else ""
        ratio = f"+{short(more)}" if workload.goal.endswith("more") else f"{ratio:.2f}"
    elif not workload.peer:
        result = verdict(workload.goal, own)
    else:
        other, result = "absent", "not compared"
    others = []
    for name, contestant in workload.more.items():
        values = figures(reports, workload, contestant)
        others.append(f"{name} {short(statistics.median(values)) if values else 'absent'}")
    return [workload.name, f"{short(own)} {workload.unit}", other, ratio, workload.goal, result,
            ", ".join(others)]


def table(reports, workloads):
    rows = [["workload", "library", "peer", "ratio", "goal", "", "others"]]
    rows += [row(reports, workload) for workload in workloads]
    widths = [max(len(cells[column]) for cells in rows) for column in range(len(rows[0]))]
    rows.insert(1, ["-" * width for width in widths])
    return "\n".join("| " + " | ".join(cell.ljust(width) for cell, width in zip(cells, widths)) + " |"
                     for cells in rows)


def first_line(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.split("\n")[0].strip()


def heading(rounds):
    model = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), "?")
    return (f"{os.cpu_count()} x {model}, Linux {platform.release().split('-')[0]}, {first_line('g++', '--version')}, "
            f"-O2; {datetime.date.today():%-d %B %Y}; `./bench/run`, medians of {rounds} rounds")


def write_page(text):
    page = PAGE.read_text()
    before, after = page.split(MARKS[0])[0], page.split(MARKS[1])[1]
    PAGE.write_text(f"{before}{MARKS[0]}\n{text}\n{MARKS[1]}{after}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("word", nargs="?", default="", help="runs the workloads whose names contain it")
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--write", action="store_true", help=f"puts the table into {PAGE}")
    parser.add_argument("--absent", default="", help=argparse.SUPPRESS)
    arguments = parser.parse_args()
    workloads = [w for w in WORKLOADS if arguments.word.lower() in w.name.lower()]
    if not workloads:
        parser.error(f"no workload is called {arguments.word}")
    reports = measure(workloads, arguments.rounds)
    text = f"{heading(arguments.rounds)}.\n\n{table(reports, workloads)}"
    if arguments.absent:
        text += f"\n\nAbsent peers: {arguments.absent}."
    print(text)
    if arguments.write:
        write_page(text)


if __name__ == "__main__":
    main()
