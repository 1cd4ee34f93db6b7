#pragma once

#include "core/platform/nxExport.h"

#include <string>

/// @file
/// The library's version.

/// Gives the library's version and tells whether another party's fits it.
///
/// A version is written major, minor and sub, parted by dots. The instance has no state; any thread may ask.
class NX_CORE_API nxVersionNumber
{
public:
    static nxVersionNumber& GetInstance();

    /// @return the library's own version.
    std::string GetVersionNumber() const;

    /// Takes a version apart. A part that is missing or doesn't begin with a number is 0; a part is read up to its
    /// first other character, so `37abc` is 37. A negative number wraps around, and one beyond the width of an `int`
    /// counts as the nearest that fits. More than three parts are not looked at.
    void GetMajorMinorSubVersionParts(std::string const& version, unsigned int& major, unsigned int& minor,
                                      unsigned int& sub) const;

    /// @return whether major and minor are those of the library; the sub part may differ.
    bool IsCompatibleVersionNumber(std::string const& other) const;

private:
    nxVersionNumber();
    nxVersionNumber(nxVersionNumber const& other);
    nxVersionNumber& operator=(nxVersionNumber const& other);
    ~nxVersionNumber();
};
