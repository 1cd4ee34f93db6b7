#pragma once

#include "core/integration/nxStdText.h"

#include <version>

/// @file
/// Opt-in: values of the library in std::format, by the text of nxStdTextHelper. The format is that of a text, so
/// `{:>12}` puts a price to the right. The header is empty where the compiler has no `<format>`.
///
/// @code
/// std::format("{:<4} {:>10}", side, price); // "BUY      101.50"
/// @endcode

#ifdef __cpp_lib_format

#include <format>
#include <string_view>

template <class Value>
requires requires(Value const& value)
{
    nxStdTextHelper::GetText(value);
}
struct std::formatter<Value, char> : std::formatter<std::string_view, char>
{
    template <class Context>
    auto format(Value const& value, Context& context) const
    {
        return std::formatter<std::string_view, char>::format(nxStdTextHelper::GetText(value), context);
    }
};

#endif
