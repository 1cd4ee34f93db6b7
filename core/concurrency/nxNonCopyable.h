#pragma once

#include "core/platform/nxExport.h"

/// @file
/// A base that takes copying away.

/// Holds nothing. A class that must not be copied derives from it, privately where nobody is to use the class
/// through this base: it has no virtual destructor, and its own is out of reach.
class NX_CORE_API nxNonCopyable
{
protected:
    nxNonCopyable() = default;
    ~nxNonCopyable() = default;

private:
    nxNonCopyable(nxNonCopyable const&) = delete;
    nxNonCopyable& operator=(nxNonCopyable const&) = delete;
};
