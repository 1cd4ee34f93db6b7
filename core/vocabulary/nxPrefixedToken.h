#pragma once

#include "core/vocabulary/nxEnum.h"

#include <concepts>
#include <string>
#include <string_view>

/// @file
/// Values by the bare word of their token.

/// The value of the class whose token is the prefix with the word behind it; undefined when the class has
/// none.
template <std::derived_from<nxEnum> Enumeration>
Enumeration nxFromPrefixedToken(std::string_view prefix, std::string const& word)
{
    Enumeration value;
    (void)value.SetFromShortDescriptionString(std::string(prefix) +
                                              word); // an unknown token leaves undefined
    return value;
}
