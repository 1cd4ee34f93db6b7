#pragma once

#include "core/logging/nxLogDevice.h"

/// @file
/// The log on standard output.

/// Prints on standard output: "[INF][15Nov26 09:30:05.123] message [file.cpp:12]", or with terse output "[INF] message".
///
/// Registered by the manager as KVT_LOG_TO_CONSOLE says. Never destroyed.
class NX_CORE_API nxConsoleLogDevice : public nxLogDevice
{
public:
    static nxConsoleLogDevice& GetInstance();

    nxErrorEnum Destroy() override;
    void Write(nxLog const& log) override;
    void Flush() override;

private:
    friend class nxLogManager;

    nxConsoleLogDevice() = default;
};
