#pragma once

#include "core/vocabulary/nxEnumValue.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <vector>

/// @file
/// Asks a whole class one question.

using Numbers = std::vector<unsigned int>;

/// The numbers inside the bounds of the class, and of the common rows, for which the predicate is true.
template <typename Enumeration>
Numbers WhereTrue(bool (Enumeration::*predicate)() const)
{
    Numbers numbers;
    auto const ask = [&numbers, predicate](unsigned int number)
    {
        if ((Enumeration(static_cast<nxEnumValue>(number)).*predicate)())
            numbers.push_back(number);
    };
    ask(NX_UNDEFINED);
    ask(NX_NO_CHANGE);
    nxOpenEnum<Enumeration> const bounds;
    for (unsigned int number = bounds._MinValue() + 1; number < bounds._MaxValue(); ++number)
        ask(number);
    return numbers;
}

/// The numbers of a closed interval.
inline Numbers Span(unsigned int first, unsigned int last)
{
    Numbers numbers;
    for (unsigned int number = first; number <= last; ++number)
        numbers.push_back(number);
    return numbers;
}
