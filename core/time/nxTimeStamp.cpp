#include "core/time/nxTimeStamp.h"

#include "core/platform/nxCivilDay.h"
#include "core/platform/nxClock.h"
#include "core/text/nxStringHelper.h"
#include "core/time/nxDateTime.h"

#include <cstring>

namespace
{

constexpr unsigned int nanosecondsPerMillisecond = 1'000'000;
constexpr unsigned int nanosecondsPerMicrosecond = 1000;
constexpr std::size_t monthNameLength = 3;
constexpr char monthNames[] = "JanFebMarAprMayJunJulAugSepOctNovDec";

// Both write the lowest digits of a value and return the place behind them.
char* WriteTwoDigits(char* out, unsigned int value)
{
    unsigned int const tens = value / 10;
    out[0] = static_cast<char>('0' + tens % 10);
    out[1] = static_cast<char>('0' + (value - tens * 10));
    return out + 2;
}

char* WriteThreeDigits(char* out, unsigned int value)
{
    unsigned int const tens = value / 10;
    WriteTwoDigits(out, tens);
    out[2] = static_cast<char>('0' + (value - tens * 10));
    return out + 3;
}

char* WriteDay(char* out, nxPlatform::CivilDay const& date)
{
    out = WriteTwoDigits(out, date.day);
    std::memcpy(out, monthNames + (date.month - 1) * monthNameLength, monthNameLength);
    return WriteTwoDigits(out + monthNameLength, static_cast<unsigned int>(date.year % 100));
}

char* WriteTimeOfDay(char* out, unsigned int second)
{
    out = WriteTwoDigits(out, second / 3600);
    *out++ = ':';
    out = WriteTwoDigits(out, second / 60 % 60);
    *out++ = ':';
    return WriteTwoDigits(out, second % 60);
}

} // namespace

nxTimeStamp::nxTimeStamp()
{
    // Straight from the clock: through local fields, every stamp of the hour that comes twice in autumn would be an
    // hour off.
    nxPlatform::ClockReading const now = nxPlatform::ReadWallClock();
    _seconds = now.seconds;
    _nanoseconds = now.nanoseconds / nanosecondsPerMillisecond * nanosecondsPerMillisecond;
}

nxTimeStamp::nxTimeStamp(long long const& seconds, unsigned int const& nanoseconds)
    : _seconds(seconds), _nanoseconds(nanoseconds)
{
}

nxTimeStamp::~nxTimeStamp() = default;

long long nxTimeStamp::GetAsTimeValue() const
{
    return _seconds;
}

unsigned int nxTimeStamp::GetNanoseconds() const
{
    return _nanoseconds;
}

unsigned int nxTimeStamp::GetMicroseconds() const
{
    return _nanoseconds / nanosecondsPerMicrosecond;
}

unsigned int nxTimeStamp::GetMilliseconds() const
{
    return _nanoseconds / nanosecondsPerMillisecond;
}

double nxTimeStamp::GetTotalSecondsAsDouble() const
{
    return static_cast<double>(_nanoseconds) / 1e9 + static_cast<double>(_seconds);
}

nxDateTime nxTimeStamp::GetAsDateTime() const
{
    return nxDateTime(_seconds);
}

std::string nxTimeStamp::GetAsString() const
{
    std::string milliseconds = nxStringHelper::GetAsString(GetMilliseconds());
    nxStringHelper::PadLeft(milliseconds, 3, '0');
    return GetAsDateTime().GetAsString("%d%b%y %H:%M:%S") + '.' + milliseconds;
}

unsigned long long nxTimeStamp::GetAsStringFast(char* buffer, unsigned long long) const
{
    long long offset = 0;
    if (!nxPlatform::GetLocalOffset(_seconds, offset))
        return 0;
    long long const wallClock = _seconds + offset;
    long long const day = nxPlatform::FloorDivide(wallClock, nxPlatform::secondsPerDay);

    char* out = WriteDay(buffer, nxPlatform::CivilFromDays(day));
    *out++ = ' ';
    out = WriteTimeOfDay(out, static_cast<unsigned int>(wallClock - day * nxPlatform::secondsPerDay));
    *out++ = '.';
    out = WriteThreeDigits(out, GetMilliseconds());
    *out++ = '.';
    out = WriteThreeDigits(out, GetMicroseconds() % 1000);
    *out = '\0';
    return fastStringSize;
}
