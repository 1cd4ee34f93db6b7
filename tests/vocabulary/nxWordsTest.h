#pragma once

#include "core/vocabulary/nxEnumValue.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <sstream>
#include <string>

/// @file
/// Asks a whole class one question: all numbers inside its bounds, with and without a row, and the common rows 0 and 2.

template <typename Enumeration>
Enumeration Make(unsigned int number)
{
    return Enumeration(static_cast<nxEnumValue>(number));
}

template <typename Enumeration, typename Ask>
void ForEachNumber(Ask ask)
{
    nxOpenEnum<Enumeration> const bounds;
    ask(NX_UNDEFINED);
    ask(NX_NO_CHANGE);
    for (unsigned int number = bounds._MinValue() + 1; number < bounds._MaxValue(); ++number)
        ask(number);
}

/// @return the numbers and spans of numbers for which the predicate is true, as "0 2 402-404".
template <typename Enumeration>
std::string WhereTrue(bool (Enumeration::*predicate)() const)
{
    std::string text;
    unsigned int first = 0;
    unsigned int next = 0; // behind the span that is open, which is none at first
    auto const closeSpan = [&]
    {
        if (next - first > 1)
            text += '-' + std::to_string(next - 1);
    };
    ForEachNumber<Enumeration>(
        [&](unsigned int number)
        {
            if (!(Make<Enumeration>(number).*predicate)())
                return;
            if (number != next || text.empty())
            {
                closeSpan();
                text += (text.empty() ? "" : " ") + std::to_string(number);
                first = number;
            }
            next = number + 1;
        });
    closeSpan();
    return text;
}

/// @return what an operation makes of the numbers, as "402=P 403=O"; a number of an empty word is left out.
template <typename Enumeration, typename Word>
std::string Words(Word (Enumeration::*operation)() const)
{
    std::string text;
    ForEachNumber<Enumeration>(
        [&](unsigned int number)
        {
            std::ostringstream word;
            word << (Make<Enumeration>(number).*operation)();
            if (!word.str().empty())
                text += (text.empty() ? "" : " ") + std::to_string(number) + '=' + word.str();
        });
    return text;
}
