// What date-times make of the zone that this process is started in, for zones.py to hold against a calendar
// of its own. Reads moments as numbers of 64 bits. Writes two numbers for each: what the wall clock shows at
// that moment, and the moment at which it shows that, both in seconds as if it were Greenwich's.

#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace
{
long long WallClockOf(nxDateTime const& moment)
{
    std::tm fields = {};
    fields.tm_year = moment.GetYear() - 1900;
    fields.tm_mon = moment.GetMonth() - 1;
    fields.tm_mday = moment.GetDay();
    fields.tm_hour = moment.GetHour();
    fields.tm_min = moment.GetMinute();
    fields.tm_sec = moment.GetSecond();
    return timegm(&fields);
}

/// Fields beyond their range mean the same: which of them are given so depends on the turn.
nxDateTime MomentAt(long long wallClock, unsigned long long turn)
{
    std::time_t const count = wallClock;
    std::tm fields = {};
    gmtime_r(&count, &fields);
    int const year = fields.tm_year + 1900;
    int const month = fields.tm_mon + 1;
    switch (turn % 4)
    {
    case 0: return nxDateTime(year, month, fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec, 0);
    case 1: return nxDateTime(year - 1, month + 12, fields.tm_mday, fields.tm_hour, fields.tm_min, 0, 0);
    case 2: return nxDateTime(year, month, fields.tm_mday + 1, fields.tm_hour - 24, fields.tm_min, 0, 0);
    default: return nxDateTime(year, month, fields.tm_mday, 0, 0, static_cast<int>(wallClock % 86400), 0);
    }
}

/// Other ways to the same answers. Ends the program where one of them leads elsewhere.
void CheckOtherWays(long long seconds, nxDateTime const& moment, nxDateTime const& meant)
{
    char stamp[nxTimeStamp::fastStringSize];
    (void)nxTimeStamp(seconds, 0).GetAsStringFast(stamp, sizeof(stamp));
    nxDateTime set = moment;
    set.SetMinute(moment.GetMinute()); // goes by the fields, so a repeated hour becomes the earlier one
    nxDateTime const same = MomentAt(WallClockOf(moment), 0);
    // A span is added to the fields, whatever the hours between.
    nxDateTime const sum = meant + nxDateTimeSpan(0, 1, 1, 25, 61, -3660);
    nxDateTime const sameSum(meant.GetYear(), meant.GetMonth() + 1, meant.GetDay() + 1, meant.GetHour() + 25,
                             meant.GetMinute() + 61, meant.GetSecond() - 3660, 0);
    if (moment.GetAsString("%d%b%y %H:%M:%S") + ".000.000" == stamp && set == same && sum == sameSum &&
        nxDateTime(seconds).GetAsGMT().GetMinute() == static_cast<int>(seconds / 60 % 60))
        return;
    std::fprintf(stderr, "wrong at %lld: %s\n", seconds, stamp);
    std::exit(1);
}
} // namespace

int main()
{
    long long seconds = 0;
    for (unsigned long long turn = 0; std::fread(&seconds, sizeof(seconds), 1, stdin) == 1; ++turn)
    {
        nxDateTime const moment(seconds);
        nxDateTime const meant = MomentAt(seconds, turn);
        CheckOtherWays(seconds, moment, meant);
        long long const answers[] = {WallClockOf(moment), meant.GetAsTimeValue()};
        (void)std::fwrite(answers, sizeof(answers), 1, stdout);
    }
    return 0;
}
