#!/usr/bin/env python3
"""F16: zones against the calendar of Python's zoneinfo. zones.py PROBE [full]

Each quarter of an hour from 1970 to 2105, or of the days around a change of the clock, is asked in both
directions: what the wall clock shows at that moment, and which moment it means when it shows that. A time
that is shown twice means the earlier, one that is skipped counts on from before.
"""
import array
import datetime
import itertools
import os
import subprocess
import sys
import time
import zoneinfo
from concurrent.futures import ProcessPoolExecutor

ZONES = ("UTC", "America/New_York", "Europe/London", "Australia/Lord_Howe", "Asia/Kathmandu", "Pacific/Apia")
# Their offset changes without the daylight flag, or with another meaning of it.
ODD_ZONES = ("Europe/Moscow", "Europe/Dublin")
DAY = 86400
QUARTER = 900
FIRST = 2 * DAY  # the first moments are marks, and what lies before the epoch is refused
LAST = int(datetime.datetime(2106, 1, 1, tzinfo=datetime.timezone.utc).timestamp())
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
    spans = [(FIRST, LAST)] if full else list(days_of_change(zone)) or [(FIRST, FIRST + 64 * DAY)]
    moments = array.array("q", (moment for span in spans for moment in range(*span, QUARTER)))
    environment = {**os.environ, "TZ": name}
    run = subprocess.run([probe], input=moments.tobytes(), stdout=subprocess.PIPE, env=environment)
    answers = array.array("q", run.stdout)
    expected = array.array("q", (f(moment, zone) for moment in moments for f in (wall_clock, moment_at)))
    pairs = itertools.zip_longest(answers, expected)
    wrong = [i for i, (answer, right) in enumerate(pairs) if answer != right]
    if wrong:
        print(name, "at", moments[wrong[0] // 2], file=sys.stderr)
    return len(expected), len(wrong) + (run.returncode != 0)


def main():
    start = time.time()
    full = sys.argv[2:] == ["full"]
    zones = ZONES if full else ZONES + ODD_ZONES
    with ProcessPoolExecutor(2) as pool:
        results = list(pool.map(check, zones, [sys.argv[1]] * len(zones), [full] * len(zones)))
    asked, wrong = (sum(column) for column in zip(*results))
    answers = f"{asked} answers in {len(zones)} zones against Python's"
    print(f"F16 zones, {answers}: {wrong} wrong, {time.time() - start:.1f} s")
    return wrong != 0


sys.exit(main())
