#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxNonCopyable.h"
#include "core/numbers/nxDecimal.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxRoundingMethodEnum.h"

#include <atomic>
#include <cstddef>
#include <utility>
#include <vector>

class nxPriceManipulator;
class nxVariableTickTableContainer;
struct nxTickRangeRow;

/// @file
/// A ladder of ticks: how far a price moves at each height.

/// The tick rule of a product whose tick grows with its price.
///
/// A table is a list of ranges, each with a top and an increment. The top is inclusive: it is the highest price
/// from which the range's increment is the step up. The next range begins above it, the first one at zero. With
/// the ranges (9.999, 0.001) and (`_maxPositiveValue`, 0.005) the tick is 0.001 up to and including 9.999 and
/// 0.005 above, so that 9.999 steps up to 10.000 and 10.000 steps up to 10.005. Prices are symmetric around zero:
/// a negative price is looked up by its magnitude.
///
/// A subclass adds the ranges in its constructor, from the lowest; afterwards the list is read only. Every public
/// operation may then be called from any thread. A lookup allocates nothing, and one that stays in the range of
/// the last lookup takes no lock. Prices that are not VALID pass through unchanged. A table of a host's own is not for
/// a child of fork() if another thread may have been inside it; those of the catalogue are.
class NX_CORE_API nxVariableTickTable : private nxNonCopyable
{
public:
    nxVariableTickTable();

    /// Not virtual: delete a table through its own class only.
    ~nxVariableTickTable();

    /// @return the first range's increment, which is taken to be the smallest; 1 when there is no range.
    nxDecimal const& GetMinimumTickIncrement() const;

    /// The increment of the range that holds `price`. Unlike rounding, it takes a price between a range's top and
    /// one tick above it for a price of the upper range.
    nxDecimal const& GetTickIncrement(nxDecimal const& price) const;

    /// Decimal places of GetTickIncrement(); those of the first range for a null price.
    unsigned char NumberOfDecimalPlaces(nxDecimal const& price) const;

    /// One tick up. The price takes the decimal places of the tick of the range in which it lands; digits beyond
    /// them are cut off, not rounded.
    void Increment(nxDecimal& price) const;

    /// One tick down, through zero if need be; places as in Increment().
    void Decrement(nxDecimal& price) const;

    /// @param ticks  single steps, each by the tick in force there; downward when negative.
    void Increment(nxDecimal& price, int ticks) const;

    /// Rounds to a multiple of the increment, counted from zero and not from the bottom of the range. A price
    /// between a range's top and one tick above it is rounded by the lower range's increment.
    void RoundToValidTick(nxRoundingMethodEnum const& method, nxDecimal& price) const;

    /// The ranges from the lowest up, each as (top, increment).
    std::vector<std::pair<nxDecimal, nxDecimal>> const& GetRangeData() const;

protected:
    using _Ranges = std::vector<std::pair<nxDecimal, nxDecimal>>;

    /// 9223372036854775807, the top of a topmost range.
    static nxDecimal const _maxPositiveValue;
    /// 1, the increment where a table has none.
    static nxDecimal const _defaultMinimumTickIncrement;

    /// Appends a range; nothing sorts them. Only for constructors: lookups keep positions in the list.
    void _AddRange(nxDecimal const& top, nxDecimal const& increment);
    void _AddTopRange(nxDecimal const& increment);
    /// As _AddRange() for each row in turn.
    void _AddRanges(nxTickRangeRow const* rows, std::size_t count);

    /// @return whether the table is sound: tops that rise strictly from above zero up to `_maxPositiveValue`, and
    ///         every increment above zero.
    bool _CheckConstraints() const;

    /// @return the first range whose top is not below the price's magnitude, or the end of the list.
    _Ranges::const_iterator _FindRange(nxDecimal const& price) const;

    /// The increment by which `price` is rounded: that of its range, or that of the range below while the price is
    /// less than one tick above that range's top, where it lies off the ladder.
    nxDecimal const& _GetIncrementForPrice(nxDecimal const& price) const;

    /// Steps by the increment of `range` and scales the price to the tick of the range in which it lands.
    void _IncreasePrice(nxDecimal& price, _Ranges::const_iterator range) const;
    void _DecreasePrice(nxDecimal& price, _Ranges::const_iterator range) const;

    /// Called under the table's mutex with every range that had to be searched for.
    virtual void _SetCache(_Ranges::const_iterator range) const;

private:
    friend class nxDecimal;
    friend class nxPriceManipulator;
    friend class nxVariableTickTableContainer;

    bool _IsCached(_Ranges::const_iterator range, nxDecimal const& magnitude) const;
    bool _IsPlainHit(_Ranges::const_iterator range, nxDecimal const& price) const;
    _Ranges::const_iterator _FindRangeOfMagnitude(nxDecimal const& price) const;
    _Ranges::const_iterator _SearchRange(nxDecimal const& magnitude) const;
    nxDecimal const& _GetIncrementForMagnitude(nxDecimal const& magnitude) const;
    void _ScaleAfterStep(nxDecimal& price, _Ranges::const_iterator range, bool hasLeftRange) const;

    _Ranges _rangeData;
    mutable nxMutex _mutex;
    /// The range found last. Atomic, so that a lookup which stays in its range needs no lock.
    mutable std::atomic<_Ranges::const_iterator> _cache;
};
