#pragma once

#include "core/vocabulary/nxBitMaskRow.h"

#include <span>
#include <string_view>

/// @file
/// The rows of all bit masks for the compiler; part of the library's inside.

// An array for each class, called by the class: nxProductStateBitMaskRows. The compiler takes an array far faster than a
// call a row. Not inline: each unit's own, which is gone where only nxBitsOf() reads it.
// clang-format off
#define NX_MASK_BEGIN(Class) constexpr nxBitMaskRow Class##Rows[] = {
#define NX_BIT(bits, token, text) {bits, token, text},
#define NX_MASK_END(Class) {}};
#include "core/vocabulary/tables/masks.def"
// clang-format on

/// The bits of the row that has the token, so that no source repeats them.
/// A token that the class has not does not compile.
consteval unsigned long long nxBitsOf(std::span<nxBitMaskRow const> rows, std::string_view token)
{
    for (nxBitMaskRow const& row : rows)
        if (row.token != nullptr && row.token == token)
            return row.bits;
    throw "no row of the mask has this token";
}
