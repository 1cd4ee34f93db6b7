#pragma once

#include "core/vocabulary/nxEnum.h"

/// How long an order stays good, or at which phase of the market it enters.
class NX_CORE_API nxTimeRestrictionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTimeRestrictionEnum, 1030, 1040)

    /// The restriction whose token ends in this word, whether the token is the long or the shortened form:
    /// "GFD", "ON_OPEN_GTC"; undefined when there is none. Case matters.
    static nxTimeRestrictionEnum CreateFromString(std::string const& word);
};
