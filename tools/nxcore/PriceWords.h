#pragma once

#include "core/prices/nxVariableTickTable.h"
#include "core/vocabulary/nxPriceFormatEnum.h"
#include "core/vocabulary/nxRoundingMethodEnum.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// The words of a command line or a file that name something of the library, and the hints for those that don't.

namespace nxTool
{
/// Every ladder's name, in the order of the catalogue.
std::span<std::string_view const> LadderNames();

/// @param word  a ladder's name or its identifier, such as CHIX_EUZ1 or VTT_CHIX_EUZ1
/// @return null when there is no such ladder
nxVariableTickTable const* FindLadder(std::string const& word);

/// @param word  the token with or without its NX_PRICE_FORMAT_
std::optional<nxPriceFormatEnum> FindPriceFormat(std::string const& word);

/// Every price format's token without its NX_PRICE_FORMAT_.
std::vector<std::string> PriceFormatNames();

/// @param word  the token with or without its NX_ROUNDING_METHOD_
std::optional<nxRoundingMethodEnum> FindRoundingMethod(std::string const& word);

/// The four rounding methods, in the order of their numbers.
std::span<nxEnumValue const> RoundingMethods();

/// The token without its NX_ROUNDING_METHOD_.
std::string ShortNameOf(nxRoundingMethodEnum const& method);

/// "unknown ladder FOO", with the nearest name if one is near.
std::string UnknownLadder(std::string const& word);
std::string UnknownPriceFormat(std::string const& word);
std::string UnknownRoundingMethod(std::string const& word);
} // namespace nxTool
