#pragma once

#include "core/vocabulary/nxEnum.h"

/// What kind of order it is: one that rests at a limit or goes at market, or one of the wholesale trades that
/// are agreed outside the order book and reported to it.
class NX_CORE_API nxOrderTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderTypeEnum, 1000, 1011)

    /// True for all kinds but limit and market orders; false for a number without a row.
    bool IsWholesaleTrade() const;

    /// The type whose token ends in this word: "LIMIT"; undefined when there is none. Case matters.
    static nxOrderTypeEnum CreateFromString(std::string const& word);
};
