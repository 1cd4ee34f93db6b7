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
        _Format(volume.GetValue(), text);
}

void nxVolumeConverter_Abbreviated::GetFormattedDisplayVolume(nxVolume const& volume, std::string& text) const
{
    text.clear();
    if (volume.IsValid())
        _Format(volume.GetValue(), text);
}

unsigned int nxVolumeConverter_Abbreviated::GetVolumeIncrement(nxVolume const& volume) const
{
    constexpr unsigned int smallest = 10;
    constexpr unsigned int largest = 1000000;
    unsigned int increment = smallest;
    if (volume.IsValid())
        while (increment < largest && volume.GetValue() >= increment * 100)
            increment *= 10;
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
        return true;
    _Unit const unit = _GetUnitOfSuffix(text.back());
    bool const hasSuffix = unit.size != 1;
    if (!hasSuffix && (text.back() < '0' || text.back() > '9'))
    {
        tooPrecise = text.back() == separator;
        return false;
    }
    nxDecimal value;
    if (!value.SetFromString(text.substr(0, text.size() - (hasSuffix ? 1 : 0)), separator).IsOK())
        return false;
    if (value.GetDecimalPlaces() > unit.maximumPlaces)
    {
        tooPrecise = unit.maximumPlaces == 0;
        return false;
    }
    value *= nxDecimal(unit.size, 0); // without a suffix, one of no places by one
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
        return _GetUnitOfSuffix('M');
    return _GetUnitOfSuffix(volume >= thousand || volume <= -thousand ? 'k' : '\0');
}

nxVolumeConverter_Abbreviated::_Unit nxVolumeConverter_Abbreviated::_GetUnitOfSuffix(char suffix) const
{
    switch (suffix)
    {
    case 'M':
    case 'm': return {million, _GetMaxMillionsPlaces(), "M"};
    case 'K':
    case 'k': return {thousand, _GetMaxThousandsPlaces(), "k"};
    default: return {1, 0, ""};
    }
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
