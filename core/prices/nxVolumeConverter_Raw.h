#pragma once

#include "core/prices/nxVolumeConverter.h"

/// Volumes in plain digits: "1500000".
class NX_CORE_API nxVolumeConverter_Raw : public nxVolumeConverter
{
public:
    nxVolumeConverter* Clone() const override;
    void GetFormattedDisplayVolume(LongVolume const& volume, std::string& text) const override;
    void GetFormattedDisplayVolume(nxVolume const& volume, std::string& text) const override;

    /// @return 1, for a null volume too.
    unsigned int GetVolumeIncrement(nxVolume const& volume) const override;
    bool IsValidVolumeCharacter(int character) const override;

    /// Takes digits alone, wrapping at 32 bits; 4294967294 and 4294967295, which mean no change and null, are stored
    /// and answered by false. `tooPrecise` is always false.
    bool SetVolumeFromString(std::string const& text, nxVolume& volume, bool& tooPrecise) const override;
};
