#include "core/time/nxTimeStamp.h"

#include "core/platform/nxClock.h"
#include "core/text/nxDigits.h"
#include "core/time/nxDateTime.h"

#include <cstring>

namespace
{

constexpr unsigned int nanosecondsPerMillisecond = 1'000'000;
constexpr std::size_t monthNameLength = 3;
constexpr char monthNames[] = "JanFebMarAprMayJunJulAugSepOctNovDec";

// Each writes into fixed places at `out`.
void WriteTwoDigits(char* out, std::size_t value)
{
    std::memcpy(out, nxDigits::pairs + value * 2, 2);
}

void WriteThreeDigits(char* out, unsigned int value)
{
    unsigned int const hundreds = value / 100;
    out[0] = static_cast<char>('0' + hundreds);
    WriteTwoDigits(out + 1, value - hundreds * 100);
}

void WriteDate(char* out, nxPlatform::LogTime const& time)
{
    WriteTwoDigits(out, time.GetDay());
    std::memcpy(out + 2, monthNames + (time.GetMonth() - 1) * monthNameLength, monthNameLength);
    WriteTwoDigits(out + 5, time.GetYearOfCentury());
}

void WriteTimeOfDay(char* out, nxPlatform::LogTime const& time)
{
    unsigned int const minute = time.secondOfHour / 60;
    WriteTwoDigits(out, time.GetHour());
    out[2] = ':';
    WriteTwoDigits(out + 3, minute);
    out[5] = ':';
    WriteTwoDigits(out + 6, time.secondOfHour - minute * 60);
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
    std::string text = GetAsDateTime().GetAsString("%d%b%y %H:%M:%S");
    text += '.';
    nxDigits::AppendPadded(text, GetMilliseconds(), 3);
    return text;
}

unsigned long long nxTimeStamp::GetAsStringFast(char* buffer, unsigned long long) const
{
    nxPlatform::LogTime const time = nxPlatform::GetLogTime(_seconds);
    if (time.dayAndHour == 0)
        return 0;
    unsigned int const microseconds = GetMicroseconds();
    unsigned int const milliseconds = microseconds / 1000;

    WriteDate(buffer, time);
    buffer[7] = ' ';
    WriteTimeOfDay(buffer + 8, time);
    buffer[16] = '.';
    WriteThreeDigits(buffer + 17, milliseconds % 1000);
    buffer[20] = '.';
    WriteThreeDigits(buffer + 21, microseconds - milliseconds * 1000);
    buffer[24] = '\0';
    return fastStringSize;
}
