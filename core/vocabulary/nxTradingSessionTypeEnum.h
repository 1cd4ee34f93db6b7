#pragma once

#include "core/vocabulary/nxEnum.h"

/// The trading sessions that an exchange may hold within one day.
class NX_CORE_API nxTradingSessionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradingSessionTypeEnum, 15200, 15207)
    NX_ENUM_LESS(nxTradingSessionTypeEnum)

    /// The session whose token ends in this word: "DAY_2"; undefined when there is none. Case matters.
    static nxTradingSessionTypeEnum CreateFromString(std::string const& word);
};
