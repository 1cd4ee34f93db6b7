#pragma once

#include "core/logging/nxLog.h"

#include <cstddef>
#include <string_view>

/// @file
/// Foreign text in a log line.

/// Shows a text of unknown origin in a log line, each byte below 32 and the byte 127 as `\xNN`, so that the text can't end
/// the line, forge another one or move a terminal's cursor. A backslash shows as `\x5C`: what the log holds is then never
/// ambiguous. All other bytes stay, those of UTF-8 too.
///
/// The log itself changes no byte that it is told. A host wraps what it did not write:
/// @code
/// NX_LOG(NX_WRN, "Unknown symbol: " << nxPrintable(symbol));
/// @endcode
///
/// Borrows the text, which has to live until the statement is ended. Allocates nothing of its own.
class nxPrintable
{
public:
    explicit nxPrintable(std::string_view text) : _text(text)
    {
    }

    /// A text of a length that includes zero bytes; they show as `\x00`.
    nxPrintable(char const* data, std::size_t size) : _text(data, size)
    {
    }

    friend nxLog& operator<<(nxLog& log, nxPrintable const& printable)
    {
        std::string_view rest = printable._text;
        while (!rest.empty())
        {
            std::size_t plain = 0;
            while (plain < rest.size() && !_IsShownAsNumber(rest[plain]))
                ++plain;
            log << nxLogCharLenPair(rest.data(), plain);
            rest.remove_prefix(plain);
            if (!rest.empty())
            {
                constexpr char digits[] = "0123456789ABCDEF";
                auto const byte = static_cast<unsigned char>(rest.front());
                char const number[] = {'\\', 'x', digits[byte >> 4], digits[byte & 0xf]};
                log << nxLogCharLenPair(number, sizeof number);
                rest.remove_prefix(1);
            }
        }
        return log;
    }

private:
    static bool _IsShownAsNumber(char character)
    {
        auto const byte = static_cast<unsigned char>(character);
        constexpr unsigned char firstPrintable = 32;
        constexpr unsigned char deleteCharacter = 127;
        return byte < firstPrintable || byte == deleteCharacter || character == '\\';
    }

    std::string_view _text;
};
