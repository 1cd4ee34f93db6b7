#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whose name for a product is shown: the platform's own, the exchange's, another vendor's or an alias.
class NX_CORE_API nxProductNamingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductNamingMethodEnum, 15900, 15905)
    NX_ENUM_LESS(nxProductNamingMethodEnum)

    /// True when the name can only be told with the product's definition at hand, which is so for all methods
    /// but the platform's own.
    bool RequiresProductDefinition() const;
};
