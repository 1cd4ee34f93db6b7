#!/usr/bin/env python3
"""F16: zones against the calendar of Python's zoneinfo. zones.py PROBE [full]

Each quarter of an hour from 1970 to 2105, or of the days around a change of the clock, is asked in both directions: what the
wall clock shows at that moment, and which moment it means when it shows that. A time that is shown twice means the
earlier, one that is skipped counts on from before.
"""
import array
import datetime
import os
import subprocess
import sys
import time
import zoneinfo
from concurrent.futures import ProcessPoolExecutor

ZONES = ("UTC", "America/New_York", "Europe/London", "Australia/Lord_Howe", "Asia/Kathmandu", "Pacific/Apia")
DAY = 86400
QUARTER = 900
FIRST = 2 * DAY  # the first moments are marks, and what lies before the epoch is refused
LAST = int(datetime.datetime(2106, 1, 1, tzinfo=datetime.timezone.utc).timestamp())
BLOCK = 64 * DAY
UTC = datetime.timezone.utc


def wall_clock(moment, zone):
    offset = datetime.datetime.fromtimestamp(moment, zone).utcoffset()
    return moment + offset.days * DAY + offset.seconds


def moment_at(shown, zone):
    return int(datetime.datetime.fromtimestamp(shown, UTC).replace(tzinfo=zone).timestamp())


def days_of_change(zone):
    """The days around each change, as spans."""
    offsets = [wall_clock(day, zone) - day for day in range(FIRST, LAST, DAY)]
    for i in range(2, len(offsets) - 2):
        if offsets[i] != offsets[i - 1]:
            yield FIRST + (i - 2) * DAY, FIRST + (i + 2) * DAY


def check(name, probe, full):
    zone = zoneinfo.ZoneInfo(name)
    spans = [(first, min(first + BLOCK, LAST)) for first in range(FIRST, LAST, BLOCK)] if full else list(days_of_change(zone))
    spans = spans or [(FIRST, FIRST + BLOCK)]
    asked = wrong = 0
    with subprocess.Popen([probe], stdin=subprocess.PIPE, stdout=subprocess.PIPE, env={**os.environ, "TZ": name}) as process:
        for first, last in spans:
            count = (last - first) // QUARTER
            process.stdin.write(array.array("q", (first, count)).tobytes())
            process.stdin.flush()
            answers = array.array("q", process.stdout.read(16 * count))
            expected = array.array("q", (f(moment, zone) for moment in range(first, last, QUARTER) for f in (wall_clock, moment_at)))
            asked += len(expected)
            if answers != expected:
                wrong += sum(a != b for a, b in zip(answers, expected)) + len(expected) - len(answers)
                print(name, "between", first, "and", last, file=sys.stderr)
        process.stdin.close()
    return asked, wrong + (process.returncode != 0)


def main():
    start = time.time()
    full = sys.argv[2:] == ["full"]
    with ProcessPoolExecutor(2) as pool:
        results = list(pool.map(check, ZONES, [sys.argv[1]] * len(ZONES), [full] * len(ZONES)))
    asked, wrong = (sum(column) for column in zip(*results))
    print(f"F16 zones, {asked} answers in {len(ZONES)} zones against Python's: {wrong} wrong, {time.time() - start:.1f} s")
    return wrong != 0


sys.exit(main())
