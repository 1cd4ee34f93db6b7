#pragma once

#include "core/vocabulary/nxEnum.h"

/// How severe a log line is, from debug to fatal. The numbers rise with the severity, so levels are compared by
/// number; the three public levels stand between info and warning.
class NX_CORE_API nxLogLevelEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLogLevelEnum, 30, 39)
    NX_ENUM_LESS(nxLogLevelEnum)

    /// Sets the level by its place as configuration counts it, 0 for debug to 7 for fatal. A place past the
    /// last level makes the instance undefined, except 4294967267, which wraps round to the number 2: "no change".
    void SetFromNumericLogLevel(unsigned int level);
};
