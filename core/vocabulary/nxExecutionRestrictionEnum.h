#pragma once

#include "core/vocabulary/nxEnum.h"

/// The manner in which an order may execute.
class NX_CORE_API nxExecutionRestrictionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExecutionRestrictionEnum, 1050, 1057)

    /// True for a stop and a trailing stop.
    bool IsVariantOfStop() const;

    /// The restriction whose token ends in this word, whether the token is the long or the shortened form:
    /// "IOC", "ICEBERG"; undefined when there is none. Case matters.
    static nxExecutionRestrictionEnum CreateFromString(std::string const& word);
};
