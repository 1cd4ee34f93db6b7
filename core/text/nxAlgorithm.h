#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

struct nxByteArray;

/// @file
/// Hexadecimal text, and the most specific of a set of patterns.

/// Static functions without state. Hexadecimal text is written in capitals, two digits a byte and the high half
/// first, with no prefix and nothing in between. Nothing logs or throws, but for want of memory.
///
/// @code
/// unsigned char byte = 0;
/// if (nxAlgorithm::SetFromHex("0x1F", byte).IsOK()) // byte is 31
/// @endcode
class NX_CORE_API nxAlgorithm
{
public:
    /// Reads one byte from one or two digits of either case, with or without "0x" in front.
    /// @return OK; NX_ERR_INVALID_PARAMETER, with `value` left alone, for any other text.
    static nxErrorEnum SetFromHex(std::string_view const& text, unsigned char& value);

    /// @return four digits, the most significant first.
    static std::string GetAsHex(unsigned short const& value);

    /// The Append... forms add to `out`, the Get... forms replace it.
    static void AppendAsHex(unsigned char const& value, std::string& out);
    static void AppendAsHex(std::vector<unsigned char> const& bytes, std::string& out);
    static void AppendAsHex(nxByteArray const& bytes, std::string& out);
    static void GetAsHex(std::vector<unsigned char> const& bytes, std::string& out);
    static void GetAsHex(nxByteArray const& bytes, std::string& out);

    /// Finds the most specific of the patterns that a key matches.
    ///
    /// Key and patterns are lists of fields. A pattern matches when it has as many fields as the key and each is
    /// equal to the key's or is the wildcard. A field that is equal outweighs all fields that are looked at after it;
    /// of two patterns that are equally specific, the first in the set's order wins. A separator at the very end adds
    /// no field, so `CME.` has one.
    ///
    /// @param patterns         such as `CME.*.ES`.
    /// @param key              such as `CME.FUT.ES`; at most 32 fields.
    /// @param best             takes the pattern that was found, and is left alone when there is none.
    /// @param firstFieldFirst  true looks at the fields from the left, false from the right.
    /// @param wildcard         the field of a pattern that every value matches, such as `*`.
    /// @return whether a pattern matched; false also for an empty key and one with too many fields.
    static bool GetBestMatch(std::set<std::string> const& patterns, std::string const& key, std::string& best,
                             bool firstFieldFirst, char separator, std::string const& wildcard);
};
