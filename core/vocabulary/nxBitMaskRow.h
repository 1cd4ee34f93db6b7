#pragma once

/// @file
/// A row of a bit mask as the tables hold it.

/// One row, of a mask of either width; the row after the last has no token.
struct nxBitMaskRow
{
    unsigned long long bits;
    char const* token;
    char const* text;
};
