// `nxcore when`: a moment in every form in which the library shows one.

#include "Arguments.h"
#include "Commands.h"
#include "Result.h"
#include "Zone.h"

#include "core/platform/nxClock.h"
#include "core/platform/nxEnvironmentLock.h"
#include "core/text/nxStringHelper.h"
#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"
#include "core/vocabulary/nxException.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace nxTool
{
namespace
{
bool UseZone(std::string const& zone)
{
    if (!IsZoneKnown(zone))
        return false;
    {
        nxPlatform::EnvironmentLock lock;
        if (setenv("TZ", zone.c_str(), 1) != 0)
            return false;
    }
    nxPlatform::ReloadTimeZone();
    return true;
}

/// Whole seconds, with or without "@" in front; nothing for any other text. Eight digits alone are a date.
std::optional<nxDateTime> ReadSeconds(std::string const& text)
{
    constexpr std::size_t dateLength = 8;
    constexpr std::size_t mostDigits = 18; // what surely fits
    bool const isMarked = text.starts_with('@');
    long long seconds = 0;
    if ((!isMarked && text.size() == dateLength) || text.size() > mostDigits ||
        !nxStringHelper::SetFromString(text.substr(isMarked ? 1 : 0), seconds).IsOK())
        return std::nullopt;
    return nxDateTime(seconds);
}

std::optional<nxDateTime> ReadDate(std::string const& text)
{
    nxDate date;
    if (text.size() != 8 || !date.SetFromString(text).IsOK())
        return std::nullopt;
    nxDateTime moment;
    moment.SetFromISODate(date.GetAsISODate().GetValue());
    return moment;
}

std::optional<nxDateTime> ReadTimeOfToday(std::string const& text)
{
    nxTime time;
    if (!time.SetFromString(text).IsOK())
        return std::nullopt;
    nxDateTime const today;
    return nxDateTime(today.GetYear(), today.GetMonth(), today.GetDay(), static_cast<int>(time.GetHour()),
                      static_cast<int>(time.GetMinute()), static_cast<int>(time.GetSecond()), 0);
}

std::optional<nxDateTime> ReadDateTime(std::string const& text)
{
    nxDateTime moment;
    if (!nxDateTime::SetFromString(text, moment).IsOK())
        return std::nullopt;
    return moment;
}

/// A moment without a calendar turns null under its reader.
bool HasCalendar(nxDateTime const& moment)
{
    long long const seconds = moment.GetAsTimeValue();
    (void)moment.GetYear();
    return moment.GetAsTimeValue() == seconds;
}

/// Nothing for a text that is none of the forms, and for a moment that can't be shown.
std::optional<nxDateTime> ReadMoment(std::string const& text)
{
    if (text.empty())
        return nxDateTime();
    try
    {
        for (auto const read : {ReadSeconds, ReadDate, ReadTimeOfToday, ReadDateTime})
        {
            std::optional<nxDateTime> const moment = read(text);
            if (moment && HasCalendar(*moment))
                return moment;
        }
    }
    catch (nxException const&)
    {
    }
    return std::nullopt;
}

std::string StateOf(nxDateTime const& moment)
{
    if (moment.IsNull())
        return "null";
    return moment.IsNoChange() ? "no change" : "valid";
}

std::string DayOfWeekOf(nxDateTime const& moment)
{
    nxDayOfWeekEnum day;
    moment.GetDayOfWeek(day);
    return day.GetLongDescription();
}

std::string QuarterOf(nxDateTime const& moment)
{
    auto const quarter = moment.GetQuarter(); // counted from zero
    return quarter.IsValid() ? "Q" + std::to_string(quarter.GetValue() + 1) : "";
}

std::string ISODateOf(nxDateTime const& moment)
{
    int const date = moment.GetAsISODate();
    return date != 0 ? std::to_string(date) : "";
}

std::string LogLineFormOf(nxTimeStamp const& stamp)
{
    char text[nxTimeStamp::fastStringSize] = "";
    stamp.GetAsStringFast(text, sizeof(text));
    return text;
}

void AddForms(nxDateTime const& local, Result& result)
{
    nxDateTime const gmt = local.GetAsGMT();
    nxTimeStamp const stamp(local.GetAsTimeValue(), local.GetMicroseconds() * 1000);
    Table& forms = result.AddTable("forms", {{"form", "Form"}, {"local", "Local"}, {"gmt", "Greenwich"}});
    auto const add = [&](char const* form, auto const& show) { forms.Add({form, show(local), show(gmt)}); };

    add("zone", [](nxDateTime const& moment) { return moment.GetAsString("%Z %z"); });
    add("day of week", DayOfWeekOf);
    add("quarter", QuarterOf);
    add("ISO date", ISODateOf);
    add("time of day", [](nxDateTime const& moment) { return moment.GetTime().GetAsLogString(); });
    add("seconds", [](nxDateTime const& moment) { return moment.GetAsString_Seconds(); });
    add("milliseconds", [](nxDateTime const& moment) { return moment.GetAsString(); });
    add("microseconds", [](nxDateTime const& moment) { return moment.GetAsString_Microseconds(); });
    add("in a log message", [](nxDateTime const& moment) { return moment.GetAsLogString_Microseconds(); });
    add("as read",
        [](nxDateTime const& moment) { return moment.GetAsString("%Y%m%d %H:%M:%S", false, true); });
    forms.Add({"console line", stamp.GetAsString()});
    forms.Add({"log file line", LogLineFormOf(stamp)});
}

/// Says so when the clocks were put back over this time, since a text then means the earlier moment.
void AddLaterTwin(nxDateTime const& local, Result& result)
{
    std::string const shown = local.GetAsString_Seconds();
    for (int const step : {1800, 3600, 7200, 86400})
    {
        nxDateTime const later(local.GetAsTimeValue() + step);
        if (later.GetAsString_Seconds() == shown)
        {
            result.AddField("comesAgain", "comes again", Cell(later.GetAsTimeValue()));
            return;
        }
    }
}

Status Run(Arguments const& arguments, Result& result)
{
    std::optional<std::string> const zone = arguments.GetOption("zone");
    if (zone && !UseZone(*zone))
        return result.Refuse("-zone", "no such zone: " + *zone);

    std::vector<std::string> const& words = arguments.GetAll();
    std::string const text = words.size() == 2 ? words[0] + " " + words[1] : arguments.Get(0);
    std::optional<nxDateTime> const moment = ReadMoment(text);
    if (!moment)
        return result.Refuse("", "not a moment that the calendar has since 1970: " + text);

    result.AddField("epochSeconds", "epoch seconds", Cell(moment->GetAsTimeValue()));
    result.AddField("state", "state", StateOf(*moment));
    AddLaterTwin(*moment, result);
    AddForms(*moment, result);
    return Status::Good;
}

constexpr Option options[] = {{"zone", "TZ", "the zone of local time, as in the environment variable TZ"}};
} // namespace

Command const whenCommand = {
    .name = "when",
    .arguments = "[TEXT]",
    .summary = "show a moment in every form that the library prints",
    .details =
        "TEXT is epoch seconds (1700000000, @20240131), a local date-time (20240131 09:30:15,\n"
        "20240131 09:30:15.123456), a date (20240131) or a time of today (09:30, 09:30:15); without it\n"
        "the moment is now. Fields out of range roll over into the next, as they do in the library.\n"
        "Where the clocks were put back, a time that comes twice is the earlier one; the later is told.",
    .example = "nxcore when 20241103 01:30:00 -zone America/New_York",
    .options = options,
    .mostArguments = 2,
    .run = Run,
};
} // namespace nxTool
