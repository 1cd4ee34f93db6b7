#pragma once

#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"

#include <string>

/// @file
/// A volume between its number and its text.

/// Turns volumes to and from the text of one volume format. Has no state: any thread may use one converter.
class NX_CORE_API nxVolumeConverter
{
public:
    /// A volume of 64 bits, such as the sum of many; null is 9223372036854775807, no change one less.
    using LongVolume = nxValueWrapper<long long, 9223372036854775807, 9223372036854775806>;

    nxVolumeConverter() = default;
    virtual ~nxVolumeConverter();

    /// @return a new converter of the same class, which the caller deletes.
    virtual nxVolumeConverter* Clone() const = 0;

    /// Replaces `text`; by nothing for a volume that is null or no change.
    virtual void GetFormattedDisplayVolume(LongVolume const& volume, std::string& text) const = 0;
    virtual void GetFormattedDisplayVolume(nxVolume const& volume, std::string& text) const = 0;

    /// By how much a volume of this size steps on a screen.
    virtual unsigned int GetVolumeIncrement(nxVolume const& volume) const = 0;

    /// Whether a screen lets this character into the text of a volume; always for what is no character of ASCII and
    /// for control characters.
    virtual bool IsValidVolumeCharacter(int character) const = 0;

    /// Sets the volume of a text; an empty text is a null volume.
    /// @param volume      null after a refusal, unless the class says otherwise.
    /// @param tooPrecise  set to true for a text that is refused because it can't be held: more decimals than a plain
    ///                    number has, or more than 32 bits; else to false.
    /// @return false for a text that is refused. The arithmetic wraps: a text beyond the class's range may be taken for
    ///         a smaller volume.
    virtual bool SetVolumeFromString(std::string const& text, nxVolume& volume, bool& tooPrecise) const = 0;

protected:
    /// Whether a screen passes the character on without asking the format.
    static bool _IsControlOrBeyondASCII(int character);
};
