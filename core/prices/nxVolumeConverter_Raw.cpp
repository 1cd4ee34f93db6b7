#include "core/prices/nxVolumeConverter_Raw.h"

#include "core/text/nxStringHelper.h"

nxVolumeConverter* nxVolumeConverter_Raw::Clone() const
{
    return new nxVolumeConverter_Raw;
}

void nxVolumeConverter_Raw::GetFormattedDisplayVolume(LongVolume const& volume, std::string& text) const
{
    text = volume.IsValid() ? nxStringHelper::GetAsString(volume.GetValue()) : std::string();
}

void nxVolumeConverter_Raw::GetFormattedDisplayVolume(nxVolume const& volume, std::string& text) const
{
    text = volume.IsValid() ? nxStringHelper::GetAsString(volume.GetValue()) : std::string();
}

unsigned int nxVolumeConverter_Raw::GetVolumeIncrement(nxVolume const& /*volume*/) const
{
    return 1;
}

bool nxVolumeConverter_Raw::IsValidVolumeCharacter(int character) const
{
    return (character >= '0' && character <= '9') || _IsControlOrBeyondASCII(character);
}

bool nxVolumeConverter_Raw::SetVolumeFromString(std::string const& text, nxVolume& volume,
                                                bool& tooPrecise) const
{
    tooPrecise = false;
    volume.SetNull();
    if (text.empty())
        return true;
    unsigned int value = 0;
    if (!nxStringHelper::SetFromStringView(text, value).IsOK())
        return false;
    volume = value;
    return volume.IsValid();
}
