#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxRoundingMethodEnum.h"

class nxVariableTickTable;

/// @file
/// One face for a fixed tick and a ladder of ticks.

/// The tick rule of a product: a tick table, which governs when there is one, or else a fixed tick.
///
/// Without a table and with a tick that is not above zero, or not VALID, the manipulator is unset: IsValid() is
/// false and prices step by whole units. A plain value that points at its table and doesn't own it; copying
/// allocates nothing. Prices that are not VALID pass through every operation unchanged.
///
/// @code
/// nxPriceManipulator const quarters(nxDecimal(0.25, 2));
/// nxDecimal price("100.00", '.');
/// quarters.Increment(price, 3); // 100.75
/// @endcode
class NX_CORE_API nxPriceManipulator
{
public:
    /// Unset: tick 0, no table.
    nxPriceManipulator();
    nxPriceManipulator(nxDecimal const& tick);
    /// @param table  may be null; must outlive this object and its copies.
    nxPriceManipulator(nxVariableTickTable const* table);
    nxPriceManipulator(nxPriceManipulator const&) = default;

    /// @return the right operand, not this object; a chain of assignments passes the first value on all the same.
    nxPriceManipulator const& operator=(nxPriceManipulator const& other);

    /// Sets the fixed tick and drops the table.
    void Init(nxDecimal const& tick);
    /// Sets the table and keeps the fixed tick, which is in force again once the table is set to null.
    void Init(nxVariableTickTable const* table);

    /// @return whether there is a table or a fixed tick above zero.
    bool IsValid() const;
    bool IsVariableTick() const;

    /// The fixed tick, as it is; with a table the increment of its first range.
    nxDecimal const& GetMinimumTickIncrement() const;

    /// Places of the tick of the range that holds `price`, or of the fixed tick; 0 when that is not VALID.
    unsigned char NumberOfDecimalPlaces(nxDecimal const& price) const;

    /// One tick up; a whole unit at the price's own places when unset.
    void Increment(nxDecimal& price) const;
    /// One tick down; a whole unit at the price's own places when unset.
    void Decrement(nxDecimal& price) const;
    /// @param ticks  downward when negative. A table walks them one by one; a fixed tick is multiplied once.
    void Increment(nxDecimal& price, int ticks) const;

    /// Rounds to the table's increment at this price, or to the fixed tick; a zero tick rounds nothing.
    void RoundToValidPrice(nxRoundingMethodEnum const& method, nxDecimal& price) const;

    /// Counts the single steps up that lead from the lower price to the higher, in time linear in the answer.
    ///
    /// A step that jumps over the higher price counts. The walk ends at a step that leaves the price where it is.
    /// It need not end where a table's ticks don't meet: a step is cut to the places of the range in which it lands,
    /// so with the ranges (0.5, 0.25) and (`_maxPositiveValue`, 1) 0.50 steps "up" to 0.
    /// @return the count, the same for both orders of the arguments; null when either is not VALID.
    nxVolume GetPriceDifferenceInTicks(nxDecimal const& a, nxDecimal const& b) const;

private:
    friend class nxDecimal;

    bool _HasFixedTick() const;
    /// The step that rounds `price`.
    nxDecimal const& _GetStepForPrice(nxDecimal const& price) const;

    nxDecimal _fixedTick;
    nxVariableTickTable const* _tickTable;
};
