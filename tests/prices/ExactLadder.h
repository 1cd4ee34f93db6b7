#pragma once

#include "core/prices/nxVariableTickTableContainer.h"

#include <algorithm>
#include <string>
#include <vector>

/// @file
/// The ladders of the catalogue in whole numbers of 128 bits, for those who hold them against exact arithmetic.

__extension__ typedef __int128 Wide;

constexpr char const* ladderNames[] = {
#define NX_LADDER_BEGIN(name) #name,
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
};

constexpr unsigned char finest = 10; // places at which every number of the catalogue is whole

constexpr Wide PowerOfTen(unsigned int places)
{
    return places == 0 ? 1 : 10 * PowerOfTen(places - 1);
}

constexpr Wide Magnitude(Wide value)
{
    return value < 0 ? -value : value;
}

inline Wide Exact(nxDecimal const& number)
{
    return number.GetValue() * PowerOfTen(finest - number.GetDecimalPlaces());
}

/// Cuts what lies behind the places.
inline nxDecimal MakeDecimal(Wide exact, unsigned char places)
{
    return nxDecimal::ConstructFromValueAndDecimalPlaces(
        static_cast<long long>(exact / PowerOfTen(finest - places)), places);
}

inline bool IsSame(nxDecimal const& a, nxDecimal const& b)
{
    return a.GetValue() == b.GetValue() && a.GetDecimalPlaces() == b.GetDecimalPlaces();
}

/// One ladder, and where its prices lead.
struct ExactLadder
{
    explicit ExactLadder(std::string const& name)
        : table(*nxVariableTickTableContainer::GetVariableTickTable("VTT_" + name))
    {
        for (auto const& [top, tick] : table.GetRangeData())
            ranges.push_back({Exact(top), Exact(tick), tick.GetDecimalPlaces()});
    }

    /// Only if each top is a price of its range, and one tick more is one of the next, do steps down undo
    /// those up.
    bool IsEven() const
    {
        auto const isUneven = [](Range const& range, Range const& next)
        { return range.top % range.tick != 0 || (range.top + range.tick) % next.tick != 0; };
        return std::ranges::adjacent_find(ranges, isUneven) == ranges.end();
    }

    std::size_t FindRange(Wide price) const
    {
        auto const holds = [price](Range const& range) { return Magnitude(price) <= range.top; };
        return static_cast<std::size_t>(std::ranges::find_if(ranges, holds) - ranges.begin());
    }

    nxDecimal PriceAt(Wide price) const
    {
        return MakeDecimal(price, ranges[FindRange(price)].places);
    }

    /// One tick up or down, at the places of where that leads.
    nxDecimal Step(Wide price, bool isUp) const
    {
        bool const isAway = price == 0 || isUp == (price > 0);
        std::size_t range = FindRange(price);
        if (!isAway && range != 0 && Magnitude(price) - ranges[range].tick <= ranges[range - 1].top)
            --range; // down into the next range
        price += isUp ? ranges[range].tick : -ranges[range].tick;
        if (isAway && range + 1 < ranges.size() && Magnitude(price) > ranges[range].top)
            ++range;
        return MakeDecimal(price, ranges[range].places);
    }

    /// Between a top and one tick above it, the lower one.
    std::size_t FindRoundingRange(Wide price) const
    {
        std::size_t const range = FindRange(price);
        return range != 0 && Magnitude(price) < ranges[range - 1].top + ranges[range - 1].tick ? range - 1
                                                                                               : range;
    }

    /// To a multiple of the tick.
    nxDecimal Round(Wide price, nxEnumValue method) const
    {
        auto const& [top, tick, places] = ranges[FindRoundingRange(price)];
        Wide const rest = Magnitude(price % tick);
        bool const isAway = method == NX_ROUNDING_METHOD_DOWN               ? price < 0 && rest != 0
                            : method == NX_ROUNDING_METHOD_UP               ? price > 0 && rest != 0
                            : method == NX_ROUNDING_METHOD_MODIFIED_NEAREST ? 2 * rest > tick
                                                                            : 2 * rest >= tick;
        return MakeDecimal(price + (price < 0 ? -1 : 1) * (isAway ? tick - rest : -rest), places);
    }

    struct Range
    {
        Wide top, tick;
        unsigned char places;
    };
    std::vector<Range> ranges;
    nxVariableTickTable const& table;
};
