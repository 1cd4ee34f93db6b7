// An expiry that rolls over, a trading day on which the clocks change, and a time of day.
#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTime.h"

#include <cstdio>

int main()
{
    nxDateTime const expiry(2026, 2, 30, 17, 15, 0, 0);
    std::printf("%s, quarter %u\n", expiry.GetAsString_Seconds().c_str(), expiry.GetQuarter().GetValue());

    nxDateTime const open(2026, 10, 24, 8, 0, 0, 0);
    nxDateTime const nextOpen = open + nxDateTimeSpan(0, 0, 1, 0, 0, 0);
    nxDateTimeSpan const night = open.GetDifference(nextOpen);
    std::printf("%s, %d day by the calendar, %d hours by the clock\n", nextOpen.GetAsString_Seconds().c_str(),
                night.GetDays(), night.GetTotalHours());

    nxDateTime read;
    nxErrorEnum const result = nxDateTime::SetFromString("20261124 09:30:15.250000", read);
    std::printf("%s, in Greenwich %s\n", result.IsOK() ? read.GetAsString().c_str() : "unreadable",
                read.GetAsGMT().GetAsString("%H:%M").c_str());

    nxTime close;
    if (close.SetFromString("17:15:00").IsOK())
        std::printf("%s\n", close.GetAsString().c_str());
    nxDate const day(20261124);
    std::printf("%s, %s\n", day.GetAsString().c_str(), day.GetAsString("%d %b %Y").c_str());
}
