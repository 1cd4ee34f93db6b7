#pragma once

#include "core/vocabulary/nxEnum.h"

/// What one entry of a history of profit and loss spans.
class NX_CORE_API nxPandLDataPeriodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPandLDataPeriodEnum, 15000, 15008)

    /// The word for the period in subscription subjects, such as "5MIN"; the token where there is none.
    std::string GetSubscriptionSubjectDescription() const;
};
