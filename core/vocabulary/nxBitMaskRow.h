#pragma once

/// @file
/// A row of a bit mask as the tables hold it.

/// One row; the row after the last has no token.
template <typename Number>
struct nxBitMaskRow
{
    Number bits;
    char const* token;
    char const* text;
};
