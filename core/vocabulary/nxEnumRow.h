#pragma once

/// @file
/// A row of an enumeration as the tables hold it.

/// One row; no text in it is null.
struct nxEnumRow
{
    unsigned int number;
    char const* enumerator; ///< its name in C++
    char const* token;
    char const* text;
};
