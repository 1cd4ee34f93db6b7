#pragma once

#include "core/platform/nxClock.h"

#include <cstdlib>
#include <optional>
#include <string>

/// Sets TZ, or removes it for a null pointer, for the length of a test. No other thread may run.
class nxTestZone
{
public:
    explicit nxTestZone(char const* zone)
    {
        if (char const* const before = std::getenv("TZ"))
            _before = before;
        Set(zone);
    }

    ~nxTestZone()
    {
        Set(_before ? _before->c_str() : nullptr);
    }

    nxTestZone& operator=(nxTestZone&&) = delete;

private:
    static void Set(char const* zone)
    {
        (void)(zone != nullptr ? setenv("TZ", zone, 1) : unsetenv("TZ"));
        nxPlatform::ReloadTimeZone();
    }

    std::optional<std::string> _before;
};
