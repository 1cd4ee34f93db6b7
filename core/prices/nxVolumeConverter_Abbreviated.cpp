#include "core/prices/nxVolumeConverter_Abbreviated.h"

#include <cstddef>
#include <limits>

namespace
{
constexpr int million = 1000000;
constexpr int thousand = 1000;
constexpr char separator = '.';

// Places of the quotient before it is cut: enough for the digits of a million.
constexpr unsigned char quotientPlaces = 8;
} // namespace

nxVolumeConverter* nxVolumeConverter_Abbreviated::Clone() const
{
    return new nxVolumeConverter_Abbreviated;
}

void nxVolumeConverter_Abbreviated::GetFormattedDisplayVolume(LongVolume const& volume,
                                                              std::string& text) const
{
    text.clear();
    if (volume.IsValid())
    {
        _Format(volume.GetValue(), text);
    }
}

void nxVolumeConverter_Abbreviated::GetFormattedDisplayVolume(nxVolume const& volume, std::string& text) const
{
    text.clear();
    if (volume.IsValid())
    {
        _Format(volume.GetValue(), text);
    }
}

unsigned int nxVolumeConverter_Abbreviated::GetVolumeIncrement(nxVolume const& volume) const
{
    constexpr unsigned int smallest = 10;
    constexpr unsigned int largest = 1000000;
    unsigned int increment = smallest;
    if (volume.IsValid())
    {
        while (increment < largest && volume.GetValue() >= increment * 100)
        {
            increment *= 10;
        }
    }
    return increment;
}

bool nxVolumeConverter_Abbreviated::IsValidVolumeCharacter(int character) const
{
    switch (character)
    {
    case separator:
    case 'K':
    case 'k':
    case 'M':
    case 'm': return true;
    default: return (character >= '0' && character <= '9') || _IsControlOrBeyondASCII(character);
    }
}

bool nxVolumeConverter_Abbreviated::SetVolumeFromString(std::string const& text, nxVolume& volume,
                                                        bool& tooPrecise) const
{
    tooPrecise = false;
    volume.SetNull();
    if (text.empty())
    {
        return true;
    }
    int multiplier = 1;
    unsigned char maximumPlaces = 0;
    switch (char const last = text.back())
    {
    case 'M':
    case 'm':
        multiplier = million;
        maximumPlaces = _GetMaxMillionsPlaces();
        break;
    case 'K':
    case 'k':
        multiplier = thousand;
        maximumPlaces = _GetMaxThousandsPlaces();
        break;
    case separator: tooPrecise = true; return false;
    default:
        if (last < '0' || last > '9')
        {
            return false;
        }
    }
    nxDecimal value;
    if (!value.SetFromString(text.substr(0, text.size() - (multiplier == 1 ? 0 : 1)), separator).IsOK())
    {
        return false;
    }
    if (value.GetDecimalPlaces() > maximumPlaces)
    {
        tooPrecise = maximumPlaces == 0;
        return false;
    }
    if (multiplier != 1)
    {
        value *= nxDecimal(multiplier, 0);
    }
    // As unsigned, so that a negative volume is refused like one beyond 32 bits.
    auto const whole = static_cast<unsigned long long>(value.GetIntegerPart());
    if (whole > std::numeric_limits<unsigned int>::max())
    {
        tooPrecise = true;
        return false;
    }
    volume = static_cast<unsigned int>(whole);
    return true;
}

unsigned char nxVolumeConverter_Abbreviated::_GetMaxMillionsPlaces() const
{
    return 6;
}

unsigned char nxVolumeConverter_Abbreviated::_GetMaxThousandsPlaces() const
{
    return 3;
}

nxVolumeConverter_Abbreviated::_Unit nxVolumeConverter_Abbreviated::_GetUnitOfSize(long long volume) const
{
    if (volume >= million || volume <= -million)
    {
        return {million, _GetMaxMillionsPlaces(), "M"};
    }
    if (volume >= thousand || volume <= -thousand)
    {
        return {thousand, _GetMaxThousandsPlaces(), "k"};
    }
    return {1, 0, ""};
}

void nxVolumeConverter_Abbreviated::_Format(long long volume, std::string& text) const
{
    _Unit const unit = _GetUnitOfSize(volume);
    nxDecimal shown(static_cast<double>(volume) / unit.size, quotientPlaces);
    shown.SetDecimalPlaces(unit.maximumPlaces, false);
    shown.SetDecimalPlaces(0, true); // drops zeros alone
    shown.AppendAsString(text, separator);
    text += unit.suffix;
}
