#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/prices/nxVolumeConverter.h"

/// Volumes with a suffix for thousands and millions: 1500000 is "1.5M" and 1234 is "1.234k".
///
/// What a suffix has no place for is cut off. Volumes are formatted through a double, which keeps each digit up to 2^53;
/// a volume of 64 bits from 92233720368547758 on has no meaningful text.
class NX_CORE_API nxVolumeConverter_Abbreviated : public nxVolumeConverter
{
public:
    nxVolumeConverter* Clone() const override;
    void GetFormattedDisplayVolume(LongVolume const& volume, std::string& text) const override;
    void GetFormattedDisplayVolume(nxVolume const& volume, std::string& text) const override;

    /// @return a tenth of the volume's power of ten, from 10 to 1000000; 10 for a volume that is null or no change.
    unsigned int GetVolumeIncrement(nxVolume const& volume) const override;

    /// Digits, '.', 'K', 'k', 'M' and 'm' besides what every format passes on.
    bool IsValidVolumeCharacter(int character) const override;

    /// Takes a suffix in either case. Trailing zeros count as decimals: "1.2340k" is refused. 4294967294 and 4294967295
    /// are answered by true, though they mean no change and null. Volumes up to 2^63 are told from those of 32 bits;
    /// larger ones wrap: "18446744073709551617" is 1.
    bool SetVolumeFromString(std::string const& text, nxVolume& volume, bool& tooPrecise) const override;

protected:
    /// Decimals of a text in millions: 6.
    virtual unsigned char _GetMaxMillionsPlaces() const;
    /// Decimals of a text in thousands: 3.
    virtual unsigned char _GetMaxThousandsPlaces() const;

private:
    struct _Unit
    {
        int size;
        unsigned char maximumPlaces;
        char const* suffix;
    };

    _Unit _GetUnitOfSize(long long volume) const;
    _Unit _GetUnitOfSuffix(char suffix) const; // the plain one for any other character
    void _Format(long long volume, std::string& text) const;
};
