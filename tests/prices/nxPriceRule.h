#pragma once

#include "core/prices/nxPriceManipulator.h"
#include "core/prices/nxVariableTickTableContainer.h"

#include <map>
#include <sstream>
#include <string>

/// @file
/// Numbers and rules of prices in words.

/// A null, of which the double is this one.
constexpr double null = 4503599627370495.0;

inline nxDecimal Number(std::string const& text)
{
    return nxDecimal(text, '.');
}

/// A ladder of ranges in words, such as "9.999:0.001 0.005": a topmost range has no top.
struct Ladder : nxVariableTickTable
{
    using nxVariableTickTable::_AddTopRange;
    using nxVariableTickTable::_CheckConstraints;

    explicit Ladder(std::string const& ranges)
    {
        std::istringstream words(ranges);
        for (std::string word; words >> word;)
            if (std::size_t const colon = word.find(':'); colon == std::string::npos)
                _AddTopRange(Number(word));
            else
                _AddRange(Number(word.substr(0, colon)), Number(word.substr(colon + 1)));
    }

    void _SetCache(_Ranges::const_iterator range) const override
    {
        ++searches;
        nxVariableTickTable::_SetCache(range);
    }

    std::string Tick(std::string const& price) const
    {
        return GetTickIncrement(Number(price)).GetAsString('.');
    }

    mutable int searches = 0; // counted under the lock
};

/// Of a fixed tick, of a ladder of the catalogue or in words, or of nothing.
inline nxPriceManipulator Manipulator(std::string const& rule)
{
    static std::map<std::string, Ladder> ladders;
    if (rule.starts_with("VTT_"))
        return nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable(rule));
    if (rule.find(':') != std::string::npos)
        return nxPriceManipulator(&ladders.try_emplace(rule, rule).first->second);
    return rule.empty() ? nxPriceManipulator() : nxPriceManipulator(Number(rule));
}
