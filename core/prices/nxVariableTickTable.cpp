#include "core/prices/nxVariableTickTable.h"

#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLogSite.h"
#include "core/numbers/nxArithmetic.h"
#include "core/prices/nxTickRangeRow.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace
{
bool IsUnbounded(nxDecimal const& top)
{
    return top.GetValue() == std::numeric_limits<long long>::max() && top.GetDecimalPlaces() == 0;
}

// Out of line: a sound table never gets here.
[[gnu::noinline]] void LogLookupOffTheTable()
{
    NX_LOG(NX_FTL, "Fatal error in variable tick table");
}

long long PowerOfTen(int exponent)
{
    return static_cast<long long>(nxArithmetic::PowerOfTen(static_cast<unsigned char>(exponent)));
}

bool HasAtMostDigits(long long number, int digits)
{
    return number >= 0 && number < PowerOfTen(digits);
}

// Out of line, so that the comparison below stays small enough to be part of a lookup.
[[gnu::noinline]] bool BringToScale(nxDecimal const& top, long long magnitude, unsigned char places,
                                    long long& value)
{
    constexpr int exactDigits = 15;
    if (top.GetDecimalPlaces() > places || places > exactDigits)
        return false;
    int const added = places - top.GetDecimalPlaces();
    if (!HasAtMostDigits(top.GetValue(), exactDigits - added) || !HasAtMostDigits(magnitude, exactDigits))
        return false;
    value = top.GetValue() * PowerOfTen(added);
    return true;
}

// Compares a top with a price's magnitude in whole numbers, where that gives what the comparison of the decimals gives:
// at one scale always; at two, which compare as doubles, where both have fifteen digits at most and so differ by more
// than the doubles' rounding and tolerance.
// @return false for the other decimals, with nothing compared.
inline bool Compare(nxDecimal const& top, long long magnitude, unsigned char places, bool& isBelow)
{
    long long value = top.GetValue();
    if (top.GetDecimalPlaces() != places && !BringToScale(top, magnitude, places, value))
        return false;
    isBelow = value < magnitude;
    return top.IsValid();
}
} // namespace

// The class's constants are defined in nxVariableTickTableContainer.cpp, before the catalogue that needs them.

// Whether the cached range holds the price, for the prices of which whole numbers tell. False says nothing.
inline bool nxVariableTickTable::_IsPlainHit(_Ranges::const_iterator range, nxDecimal const& price) const
{
    if (range == _rangeData.cend() || !price.IsValid())
        return false;
    unsigned char const places = price.GetDecimalPlaces();
    long long const magnitude =
        price.IsNegative() ? nxArithmetic::Negate(price.GetValue()) : price.GetValue();
    constexpr unsigned char exactPlaces = 19; // beyond, the power of ten wraps at 64 bits
    bool isBelow = false;
    if (IsUnbounded(range->first))
        isBelow = places > exactPlaces;
    else if (!Compare(range->first, magnitude, places, isBelow))
        return false;
    if (isBelow || range == _rangeData.cbegin())
        return !isBelow;
    return Compare(std::prev(range)->first, magnitude, places, isBelow) && isBelow;
}

nxVariableTickTable::_Ranges::const_iterator nxVariableTickTable::_FindRange(nxDecimal const& price) const
{
    // The list never changes once lookups may run, so the cached position is all that a hit has to agree on.
    auto const cached = _cache.load(std::memory_order_acquire);
    return _IsPlainHit(cached, price) ? cached : _FindRangeOfMagnitude(price);
}

nxVariableTickTable::nxVariableTickTable() : _cache(_rangeData.cbegin())
{
}

nxVariableTickTable::~nxVariableTickTable() = default;

nxDecimal const& nxVariableTickTable::GetMinimumTickIncrement() const
{
    return _rangeData.empty() ? _defaultMinimumTickIncrement : _rangeData.front().second;
}

nxDecimal const& nxVariableTickTable::GetTickIncrement(nxDecimal const& price) const
{
    auto const range = _FindRange(price);
    return range == _rangeData.cend() ? _defaultMinimumTickIncrement : range->second;
}

unsigned char nxVariableTickTable::NumberOfDecimalPlaces(nxDecimal const& price) const
{
    return GetTickIncrement(price).GetDecimalPlaces();
}

void nxVariableTickTable::Increment(nxDecimal& price) const
{
    if (!price.IsValid())
        return;
    auto range = _FindRange(price);
    if (range == _rangeData.cend())
    {
        LogLookupOffTheTable();
        price += _defaultMinimumTickIncrement;
        return;
    }
    // A negative price moves toward zero: it takes the lower range's tick once its own would carry it onto that
    // range's top or beyond.
    if (price.IsNegative() && range != _rangeData.cbegin())
    {
        auto const lower = std::prev(range);
        if (nxDecimal::Abs(price) - range->second <= lower->first)
            range = lower;
    }
    _IncreasePrice(price, range);
}

void nxVariableTickTable::Decrement(nxDecimal& price) const
{
    if (!price.IsValid())
        return;
    auto range = _FindRange(price);
    if (range == _rangeData.cend())
    {
        LogLookupOffTheTable();
        price -= _defaultMinimumTickIncrement;
        return;
    }
    if (!price.IsNegative() && range != _rangeData.cbegin())
    {
        auto const lower = std::prev(range);
        if (price - range->second <= lower->first)
            range = lower;
    }
    _DecreasePrice(price, range);
}

void nxVariableTickTable::Increment(nxDecimal& price, int ticks) const
{
    for (; ticks > 0; --ticks)
        Increment(price);
    for (; ticks < 0; ++ticks)
        Decrement(price);
}

void nxVariableTickTable::RoundToValidTick(nxRoundingMethodEnum const& method, nxDecimal& price) const
{
    if (price.IsValid())
        price.Round(_GetIncrementForPrice(price), method);
}

std::vector<std::pair<nxDecimal, nxDecimal>> const& nxVariableTickTable::GetRangeData() const
{
    return _rangeData;
}

void nxVariableTickTable::_AddRange(nxDecimal const& top, nxDecimal const& increment)
{
    nxMutexGuard const guard(_mutex);
    _rangeData.emplace_back(top, increment);
    // After the append, which may have moved the list. Not by _SetCache(), since constructors call this.
    _cache.store(_rangeData.cbegin(), std::memory_order_release);
}

void nxVariableTickTable::_AddTopRange(nxDecimal const& increment)
{
    _AddRange(_maxPositiveValue, increment);
}

void nxVariableTickTable::_AddRanges(nxTickRangeRow const* rows, std::size_t count)
{
    nxMutexGuard const guard(_mutex);
    _rangeData.reserve(_rangeData.size() + count);
    std::for_each_n(
        rows, count,
        [this](nxTickRangeRow const& row)
        {
            _rangeData.emplace_back(
                nxDecimal::ConstructFromValueAndDecimalPlaces(row.top, row.topPlaces),
                nxDecimal::ConstructFromValueAndDecimalPlaces(row.increment, row.incrementPlaces));
        });
    _cache.store(_rangeData.cbegin(), std::memory_order_release);
}

bool nxVariableTickTable::_CheckConstraints() const
{
    if (_rangeData.empty() || _rangeData.back().first != _maxPositiveValue)
        return false;
    // A top or an increment that is null sorts below every number and is refused like one that is too small.
    nxDecimal const zero = nxDecimal::ConstructFromValueAndDecimalPlaces(0, 4);
    nxDecimal const* previousTop = &zero;
    for (auto const& [top, increment] : _rangeData)
    {
        if (top == *previousTop || top < *previousTop || increment == zero || increment < zero)
            return false;
        previousTop = &top;
    }
    return true;
}

nxDecimal const& nxVariableTickTable::_GetIncrementForPrice(nxDecimal const& price) const
{
    return price.IsNegative() ? _GetIncrementForMagnitude(nxDecimal::Abs(price))
                              : _GetIncrementForMagnitude(price);
}

void nxVariableTickTable::_IncreasePrice(nxDecimal& price, _Ranges::const_iterator range) const
{
    price += range->second;
    // Judged by where the price is now: one that was zero is above it.
    _ScaleAfterStep(price, range, price.IsPositive() && price > range->first);
}

void nxVariableTickTable::_DecreasePrice(nxDecimal& price, _Ranges::const_iterator range) const
{
    price -= range->second;
    _ScaleAfterStep(price, range, price.IsNegative() && nxDecimal::Abs(price) > range->first);
}

void nxVariableTickTable::_SetCache(_Ranges::const_iterator range) const
{
    _cache.store(range, std::memory_order_release);
}

bool nxVariableTickTable::_IsCached(_Ranges::const_iterator range, nxDecimal const& magnitude) const
{
    return range != _rangeData.cend() && !(range->first < magnitude) &&
           (range == _rangeData.cbegin() || std::prev(range)->first < magnitude);
}

nxVariableTickTable::_Ranges::const_iterator
nxVariableTickTable::_FindRangeOfMagnitude(nxDecimal const& price) const
{
    nxDecimal const magnitude = price.IsNegative() ? nxDecimal::Abs(price) : price;
    auto const cached = _cache.load(std::memory_order_acquire);
    return _IsCached(cached, magnitude) ? cached : _SearchRange(magnitude);
}

nxVariableTickTable::_Ranges::const_iterator
nxVariableTickTable::_SearchRange(nxDecimal const& magnitude) const
{
    nxMutexGuard const guard(_mutex);
    // Another thread may have found the same range meanwhile; _SetCache() then hears of it only once.
    auto const cached = _cache.load(std::memory_order_relaxed);
    if (_IsCached(cached, magnitude))
        return cached;
    auto const found = std::find_if(_rangeData.cbegin(), _rangeData.cend(),
                                    [&magnitude](auto const& range) { return !(range.first < magnitude); });
    if (found != _rangeData.cend())
        _SetCache(found);
    return found;
}

nxDecimal const& nxVariableTickTable::_GetIncrementForMagnitude(nxDecimal const& magnitude) const
{
    auto const range = _FindRange(magnitude);
    if (range == _rangeData.cend())
    {
        LogLookupOffTheTable();
        return _defaultMinimumTickIncrement;
    }
    if (range != _rangeData.cbegin())
    {
        auto const lower = std::prev(range);
        if (magnitude < lower->first + lower->second)
            return lower->second;
    }
    return range->second;
}

void nxVariableTickTable::_ScaleAfterStep(nxDecimal& price, _Ranges::const_iterator range,
                                          bool hasLeftRange) const
{
    auto const next = std::next(range);
    auto const landing = hasLeftRange && next != _rangeData.cend() ? next : range;
    price.SetDecimalPlaces(landing->second.GetDecimalPlaces(), false);
}
