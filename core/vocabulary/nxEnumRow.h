#pragma once

/// @file
/// A row of an enumeration as the tables hold it.

/// One row; the row after the last has no token.
struct nxEnumRow
{
    unsigned int number;
    char const* enumerator; ///< its name in C++
    char const* token;
    char const* text;
};
