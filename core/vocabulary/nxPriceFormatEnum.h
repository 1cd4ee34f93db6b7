#pragma once

#include "core/vocabulary/nxEnum.h"

class nxDecimal;

/// The way in which a product's prices are written: as decimals, or with fractions of a given kind. It
/// selects the converter between texts and prices.
class NX_CORE_API nxPriceFormatEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceFormatEnum, 4500, 4529)

    /// The smallest step of the format: 1/32 for 32nds. The count of decimal places comes with it.
    /// @param step  becomes null for any value that is no format
    void GetDefaultNumericValue(nxDecimal& step) const;
};
