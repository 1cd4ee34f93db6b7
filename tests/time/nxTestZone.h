#pragma once

#include "core/platform/nxClock.h"

#include <cstdlib>
#include <string>

/// @file
/// Puts the process into a zone for the length of a test.

/// Sets TZ, or removes it for a null pointer, and puts the old value back in the end. No other thread may run.
class nxTestZone
{
public:
    explicit nxTestZone(char const* zone)
    {
        char const* const before = std::getenv("TZ");
        _hadZone = before != nullptr;
        _zoneBefore = _hadZone ? before : "";
        Set(zone);
    }

    ~nxTestZone()
    {
        Set(_hadZone ? _zoneBefore.c_str() : nullptr);
    }

    nxTestZone(nxTestZone const&) = delete;
    nxTestZone& operator=(nxTestZone const&) = delete;

private:
    static void Set(char const* zone)
    {
        if (zone != nullptr)
            setenv("TZ", zone, 1);
        else
            unsetenv("TZ");
        nxPlatform::ReloadTimeZone();
    }

    bool _hadZone;
    std::string _zoneBefore;
};
