#pragma once

#include "PriceRule.h"
#include "Result.h"

#include "core/numbers/nxValueWrapper.h"
#include "core/vocabulary/nxCurrencyEnum.h"
#include "core/vocabulary/nxProductTypeEnum.h"

#include <optional>
#include <string>
#include <vector>

namespace nxTool
{
struct Product
{
    std::string symbol;
    std::string exchange;
    nxProductTypeEnum type;
    nxCurrencyEnum currency;
    nxPriceFormatEnum format;
    PriceRule rule;
    std::optional<nxDecimal> last; ///< nothing where the file has no price
    nxVolume volume;               ///< null where the file has none
};

/// Reads a file of products: commas between columns, which a first row names in any order; `#` begins a comment.
///
/// Each fault becomes a problem of the result, with its line and column, and leaves its row out.
/// @return the sound rows; nothing at all when the file can't be read or has no row of columns' names.
std::optional<std::vector<Product>> ReadProducts(std::string const& path, Result& result);
} // namespace nxTool
