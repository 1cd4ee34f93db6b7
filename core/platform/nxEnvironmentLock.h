#pragma once

#include "core/platform/nxExport.h"

/// @file
/// The one lock of the process's environment and of the calendar that reads it.

namespace nxPlatform
{
/// Held around every reading and changing of the environment and around every conversion between fields and time
/// values.
///
/// The system's calendar reads the environment (TZ) without a lock, and a child of fork() inherits its inner lock in
/// whatever state another thread left it. So both go through this lock, which fork() takes before it copies the
/// process and which the child gets back open. Not recursive. Never held while logging: a log statement may read the
/// environment.
class NX_CORE_API EnvironmentLock
{
public:
    EnvironmentLock();
    ~EnvironmentLock();
    EnvironmentLock(EnvironmentLock const&) = delete;
    EnvironmentLock& operator=(EnvironmentLock const&) = delete;
};
} // namespace nxPlatform
