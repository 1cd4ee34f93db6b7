#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"

/// @file
/// What turns log statements into output: the base of all devices.

class nxLog;

/// A destination of log lines, registered with nxLogManager::RegisterLogDevice().
///
/// The log calls a device on its writer thread, or in force-flush mode on the thread that logs, and never two calls at
/// once. Nothing may throw. A device may log; in deferred mode those lines come with the next cycle, which in a forked
/// child begins with the first statement of anybody else. It may fork and end the process, and must not wait for
/// another thread that does.
class NX_CORE_API nxLogDevice
{
public:
    virtual ~nxLogDevice() = default;

    /// Ends the device's work when the log ends. The object stays, and may be registered again.
    virtual nxErrorEnum Destroy() = 0;

    /// Takes one statement. It stays the log's, and is gone after the call. Its text is null when the statement had been
    /// ended before, its source application unless one was streamed.
    virtual void Write(nxLog const& log) = 0;

    /// Brings what was written to its destination.
    virtual void Flush() = 0;

    /// Whether lines are written in full.
    bool GetVerboseOutput() const
    {
        return _verboseOutput;
    }

protected:
    nxLogDevice() = default;
    nxLogDevice(nxLogDevice const&) = default;
    nxLogDevice& operator=(nxLogDevice const&) = default;

    void SetVerboseOutput(bool verboseOutput)
    {
        _verboseOutput = verboseOutput;
    }

private:
    bool _verboseOutput = true;
};
