#include "core/time/nxTime.h"

#include "core/text/nxDigits.h"
#include "core/text/nxStringHelper.h"

namespace
{

constexpr unsigned int hoursInADay = 24;
constexpr unsigned int minutesInAnHour = 60;
constexpr unsigned int secondsInAMinute = 60;

// Reads two digits that begin at `position`.
// @return false, also for a number that isn't below `limit`.
bool ReadField(std::string const& text, std::size_t position, unsigned int limit, unsigned int& value)
{
    unsigned int const tens = nxDigits::ValueOf(text[position]);
    unsigned int const units = nxDigits::ValueOf(text[position + 1]);
    if (tens > 9 || units > 9)
        return false;
    value = tens * 10 + units;
    return value < limit;
}

constexpr unsigned int leastDigits = 2; // of each number in a text

} // namespace

nxErrorEnum nxTime::SetHour(unsigned int hour)
{
    return _SetField(_hour, hour, hoursInADay);
}

nxErrorEnum nxTime::SetMinute(unsigned int minute)
{
    return _SetField(_minute, minute, minutesInAnHour);
}

nxErrorEnum nxTime::SetSecond(unsigned int second)
{
    return _SetField(_second, second, secondsInAMinute);
}

void nxTime::SetFromHHMMSS(unsigned int const& value)
{
    _Set(value / 10000, value / 100 % 100, value % 100);
    _status = NX_VALID;
}

nxErrorEnum nxTime::SetFromString(std::string const& text)
{
    constexpr std::size_t longLength = 8; // HH:MM:SS
    constexpr std::size_t shortLength = 5;
    if (text.size() != longLength && text.size() != shortLength)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);

    unsigned int hour = 0;
    unsigned int minute = 0;
    unsigned int second = 0;
    bool read = ReadField(text, 0, hoursInADay, hour) && text[2] == ':' &&
                ReadField(text, 3, minutesInAnHour, minute);
    if (text.size() == longLength)
        read = read && text[5] == ':' && ReadField(text, 6, secondsInAMinute, second);
    if (!read)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);

    _Set(hour, minute, second);
    _status = NX_VALID;
    return nxErrorEnum();
}

std::string nxTime::GetAsString() const
{
    if (!_IsValid())
        return "INVALID";
    std::string text;
    nxDigits::AppendPadded(text, _hour, leastDigits);
    text += ':';
    nxDigits::AppendPadded(text, _minute, leastDigits);
    text += ':';
    nxDigits::AppendPadded(text, _second, leastDigits);
    return text;
}

std::string nxTime::GetAsLogString() const
{
    return IsNull() ? "NULL" : GetAsString();
}

nxErrorEnum nxTime::_SetField(unsigned int& field, unsigned int value, unsigned int limit)
{
    if (value >= limit)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    if (!_IsValid())
        _Set(0, 0, 0);
    field = value;
    return nxErrorEnum();
}

std::string nxStringHelper::GetAsString(nxTime const& value)
{
    return value.GetAsString();
}

void nxStringHelper::AppendAsString(std::string& out, nxTime const& value)
{
    out += value.GetAsString();
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, nxTime& value)
{
    return value.SetFromString(text);
}
