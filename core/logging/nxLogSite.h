#pragma once

#include "core/logging/nxLog.h"
#include "core/logging/nxLogManager.h"

/// @file
/// The one-statement form of a log site. Any source file may include this header, whatever its folder.

/// The name of this source file, without its directory where the compiler knows it.
#ifdef __FILE_NAME__
#define NX_LOG_SOURCE_FILE __FILE_NAME__
#else
#define NX_LOG_SOURCE_FILE __FILE__
#endif

/// Logs one line if its level is wanted.
///
/// Below the minimum level nothing is built and no argument is evaluated, so an argument has no side effects.
/// The macro is one statement and safe under a bare `if`.
///
/// @param level  an nxLogLevelEnum or one of its enumerators, such as NX_ERR; looked at twice.
/// @param text   what is streamed, joined by `<<`: text first, then the value, no full stop, no line feed.
///
/// @code
/// NX_LOG(NX_ERR, "Mutex could not be created in shared memory. Result : " << result);
/// @endcode
#define NX_LOG(level, text)                                                                                  \
    do                                                                                                       \
    {                                                                                                        \
        if (nxLogManager::ShouldLog(level))                                                                  \
        {                                                                                                    \
            nxLog nxLogStatement(level, NX_LOG_SOURCE_FILE, __LINE__);                                       \
            nxLogStatement << text << nxLog::nxLogTerminator();                                              \
        }                                                                                                    \
    } while (false)
