#pragma once

#include "core/integration/nxStdText.h"

#include <concepts>
#include <ostream>

/// @file
/// Opt-in: values of the library written to a std::ostream, by the text of nxStdTextHelper. The stream's width, fill
/// and alignment count; its locale and precision don't.
///
/// @code
/// std::cout << side << ' ' << volume << " at " << price << '\n'; // BUY 100 at 101.50
/// @endcode
///
/// Files that include this header and files that don't show an nxDateTime in different ways: without it, the stream
/// takes the moment for the number that it converts to.

template <class Value>
requires requires(Value const& value)
{
    nxStdTextHelper::GetText(value);
}
std::ostream& operator<<(std::ostream& stream, Value const& value)
{
    return stream << nxStdTextHelper::GetText(value);
}
