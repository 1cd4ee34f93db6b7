// `nxcore check`: whether the library works on this host as it should.

#include "Arguments.h"
#include "Commands.h"
#include "HostChecks.h"
#include "PriceWords.h"
#include "Result.h"
#include "Zone.h"

#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxVersionNumber.h"
#include "core/time/nxDateTime.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxGenericEnum.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <limits>

namespace nxTool
{
namespace
{
Finding CheckLibrary()
{
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    std::string const found = version.GetVersionNumber();
    if (!version.IsCompatibleVersionNumber(NX_TOOL_VERSION))
        return {Soundness::Wrong, found + ", but this program was built for " NX_TOOL_VERSION};
    return {Soundness::Good, found};
}

/// Empty when the registry says of a row what its table says.
std::string FaultOf(nxEnumRow const& row)
{
    std::string const name = "row " + std::to_string(row.number) + " ";
    if (!nxEnum::IsRegisteredEnumValue(row.number))
        return name + row.token + " is not registered";
    nxEnumValue const value = static_cast<nxEnumValue>(row.number);
    nxErrorEnum const error(value);
    nxGenericEnum const other(value); // which takes any number but those of errors
    nxEnum const& entry = error.IsUndefined() ? static_cast<nxEnum const&>(other) : error;
    if (entry.GetShortDescription() != row.token || entry.GetLongDescription() != row.text)
        return name + "reads " + entry.GetShortDescription() + " and not " + row.token;
    return {};
}

Finding CheckVocabulary()
{
    std::size_t rowCount = 0;
    auto const enumerations = nxVocabularyCatalogue::GetEnumerations();
    for (auto const& enumeration : enumerations)
    {
        rowCount += enumeration.rows.size();
        for (nxEnumRow const& row : enumeration.rows)
            if (std::string const fault = FaultOf(row); !fault.empty())
                return {Soundness::Wrong, std::string(enumeration.className) + ": " + fault};
    }
    std::size_t bitCount = 0;
    auto const masks = nxVocabularyCatalogue::GetBitMasks();
    for (auto const& mask : masks)
        bitCount += mask.rows.size();
    if (rowCount == 0 || bitCount == 0)
        return {Soundness::Wrong, "nothing is registered"};
    return {Soundness::Good, std::to_string(enumerations.size()) + " enumerations with " +
                                 std::to_string(rowCount) + " rows, " + std::to_string(masks.size()) +
                                 " masks with " + std::to_string(bitCount) + " rows"};
}

/// Ranges rise from above zero to the highest price that there is, each with a tick.
bool IsSound(nxVariableTickTable const& ladder)
{
    nxDecimal below(0, 0);
    for (auto const& [top, increment] : ladder.GetRangeData())
    {
        if (!(below < top) || !increment.IsPositive())
            return false;
        below = top;
    }
    return below == nxDecimal(std::numeric_limits<long long>::max(), 0);
}

Finding CheckLadders()
{
    for (std::string_view const name : LadderNames())
    {
        nxVariableTickTable const* const ladder = FindLadder(std::string(name));
        if (ladder == nullptr)
            return {Soundness::Wrong, std::string(name) + " is missing"};
        if (!IsSound(*ladder))
            return {Soundness::Wrong, std::string(name) + " has a range without a tick or out of order"};
    }
    return {Soundness::Good, std::to_string(LadderNames().size()) + " ladders"};
}

Finding CheckClock()
{
    nxDateTime const now;
    constexpr long long release = 1'790'000'000; // September 2026: the clock can't stand before the library
    if (!now.IsValid() || now.GetAsTimeValue() < release)
        return {Soundness::Wrong, "the clock stands at " + now.GetAsGMT().GetAsString() + " Greenwich time"};
    return {Soundness::Good, now.GetAsGMT().GetAsString() + " Greenwich time"};
}

/// Every hour of a year, there and back. An hour that comes twice reads as the earlier one.
bool IsCalendarSound(long long start)
{
    constexpr int hour = 3600;
    constexpr int hoursOfAYear = 366 * 24;
    for (int index = 0; index < hoursOfAYear; ++index)
    {
        nxDateTime const moment(start + static_cast<long long>(index) * hour);
        nxDateTime const again(moment.GetYear(), moment.GetMonth(), moment.GetDay(), moment.GetHour(),
                               moment.GetMinute(), moment.GetSecond(), 0);
        if (again != moment && again.GetAsString() != moment.GetAsString())
            return false;
    }
    return true;
}

Finding CheckZone()
{
    std::string const zone = nxCmdLineArgs::GetInstance().GetEnvValue("TZ");
    if (!zone.empty() && !IsZoneKnown(zone.front() == ':' ? zone.substr(1) : zone))
        return {Soundness::Wrong,
                "TZ names " + zone + ", which this host does not know; times are Greenwich times"};
    nxDateTime const now;
    if (!IsCalendarSound(now.GetAsTimeValue()))
        return {Soundness::Wrong, "local times of the coming year can't be read back"};
    constexpr int minute = 60;
    return {Soundness::Good, (zone.empty() ? "the host's own" : zone) + ", now " +
                                 std::to_string(nxDateTime::GetTimezoneOffsetFromGMT() / minute) +
                                 " minutes ahead of Greenwich"};
}

struct Check
{
    std::string_view name;
    Finding (*run)();
};

constexpr Check checks[] = {
    {"library", CheckLibrary},
    {"vocabulary", CheckVocabulary},
    {"ladders", CheckLadders},
    {"clock", CheckClock},
    {"zone", CheckZone},
    {"log directory", CheckLogDirectory},
    {"descriptors", CheckDescriptors},
    {"shared memory", CheckSharedMemory},
};

std::string_view WordFor(Soundness soundness)
{
    switch (soundness)
    {
    case Soundness::Good: return "good";
    case Soundness::Notice: return "notice";
    case Soundness::Wrong: break;
    }
    return "WRONG";
}

Status Run(Arguments const&, Result& result)
{
    Table& table =
        result.AddTable("checks", {{"check", "Check"}, {"state", "State"}, {"finding", "Finding"}});
    bool isAllGood = true;
    for (Check const& check : checks)
    {
        Finding const finding = check.run();
        isAllGood = isAllGood && finding.soundness != Soundness::Wrong;
        table.Add({check.name, WordFor(finding.soundness), Printable(finding.text)});
    }
    return isAllGood ? Status::Good : Status::Faulty;
}
} // namespace

Command const checkCommand = {
    .name = "check",
    .summary = "test whether the library works on this host as it should",
    .details =
        "Tests the library as it is installed and what the host gives it: that the vocabulary is complete\n"
        "and the ladders are sound, clock, zone, log directory, descriptors and shared memory. Each has a\n"
        "line; \"notice\" means that it works but somebody should know. The exit status is 1 when something\n"
        "is wrong. The log directory is that of KVT_LOG_DIRECTORY; a file is made there and removed.",
    .example = "nxcore check",
    .run = Run,
};
} // namespace nxTool
