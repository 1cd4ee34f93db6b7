#pragma once

#include "core/vocabulary/nxEnum.h"

/// What one bar of a chart of ticks spans: a time, a volume, a session, or a time by the market's actual
/// schedule.
class NX_CORE_API nxTickDataPeriodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTickDataPeriodEnum, 12300, 12319)

    /// True when the bars follow the market's actual schedule.
    bool IsActualScheduleBased() const;

    /// True when a bar ends after a volume and not after a time.
    bool IsVolumeBased() const;

    /// The word for the period in subscription subjects, such as "5MIN" or "100VOL"; the token where there is
    /// none.
    std::string GetSubscriptionSubjectDescription() const;
};
