#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <atomic>

/// @file
/// The process-wide log.

class nxLog;

/// What lies between log statements and log devices.
class NX_CORE_API nxLogManager
{
public:
    static nxLogManager& GetInstance();

    /// Whether statements of this level are wanted: the test at each log site, one load and one comparison.
    static bool ShouldLog(nxLogLevelEnum const& level)
    {
        return level.GetValue() >= _minimumLogLevel.load(std::memory_order_relaxed);
    }

    /// Writes the statement unless its level is below the minimum.
    void Write(nxLog& log);

private:
    nxLogManager() = default;

    static std::atomic<unsigned int> _minimumLogLevel;
};
