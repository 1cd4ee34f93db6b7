#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

/// A day of the week.
class NX_CORE_API nxDayOfWeekEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDayOfWeekEnum, 13200, 13208)

    /// @param number  0 for Sunday to 6; anything else stores 0
    void SetFromDayOfWeekNumber(int number);

    /// The distance forward from this day to the next `target`, 0 to 6 days.
    /// @return OK; NX_ERR_INVALID_PARAMETER, with `days` left alone, unless both are days.
    nxErrorEnum GetDaysUntil(nxDayOfWeekEnum const& target, unsigned int& days) const;
};
