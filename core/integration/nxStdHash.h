#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxMoney.h"
#include "core/numbers/nxRatio.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxBitMask64.h"
#include "core/vocabulary/nxEnum.h"

#include <concepts>
#include <cstddef>
#include <functional>

/// @file
/// Opt-in: values of the library as keys of std::unordered_map and its kin.
///
/// A hash goes with `==`: values that compare equal have the same. So there is none for nxTime and
/// nxDoubleValueWrapper, whose comparison is no equivalence (midnight equals a null, and a chain of near doubles equals
/// from link to link), and none for nxStringValue and nxTimeStamp, which have no comparison.
///
/// Numbers of different enumerations are different, so an nxGenericEnum has the hash of the enumeration that it equals.

/// @cond
namespace nxStdHash
{
/// The second hash changes what the first one gave in all its bits.
inline std::size_t Combine(std::size_t first, std::size_t second)
{
    constexpr std::size_t goldenRatio =
        0x9e3779b97f4a7c15; // 2^64 divided by it, an odd number without a pattern
    return first ^ (second + goldenRatio + (first << 6) + (first >> 2));
}
} // namespace nxStdHash
/// @endcond

template <std::derived_from<nxEnum> Enumeration>
struct std::hash<Enumeration>
{
    std::size_t operator()(Enumeration const& value) const noexcept
    {
        return std::hash<unsigned int>()(value.GetValue());
    }
};

template <class Mask>
requires std::derived_from<Mask, nxBitMask> || std::derived_from<Mask, nxBitMask64>
struct std::hash<Mask>
{
    std::size_t operator()(Mask const& value) const noexcept
    {
        return std::hash<unsigned long long>()(value.GetValue());
    }
};

/// By the number, so that 1.5 and 1.50 are one key. From 16 decimal places on, numbers of different places compare
/// equal that differ; they have hashes of their own, and as keys they count as different or as equal by chance.
template <>
struct std::hash<nxDecimal>
{
    std::size_t operator()(nxDecimal const& value) const noexcept
    {
        return value.IsValid() ? std::hash<double>()(value.GetAsDouble())
                               : std::hash<nxValueStatusEnum>()(value.GetStatus());
    }
};

/// As that of its amount.
template <>
struct std::hash<nxMoney>
{
    std::size_t operator()(nxMoney const& value) const noexcept
    {
        return nxStdHash::Combine(std::hash<nxDecimal>()(value.GetDecimalValue()),
                                  std::hash<nxCurrencyEnum>()(value.GetCurrency()));
    }
};

template <>
struct std::hash<nxRatio>
{
    std::size_t operator()(nxRatio const& value) const noexcept
    {
        if (!value.IsValid())
            return value.IsNull() ? 0 : 1;
        return nxStdHash::Combine(std::hash<unsigned int>()(value.GetLHS()),
                                  std::hash<unsigned int>()(value.GetRHS()));
    }
};

template <>
struct std::hash<nxDate>
{
    std::size_t operator()(nxDate const& value) const noexcept
    {
        return std::hash<unsigned int>()(value.GetAsISODate().GetValue());
    }
};

template <>
struct std::hash<nxDateTime>
{
    std::size_t operator()(nxDateTime const& value) const noexcept
    {
        return nxStdHash::Combine(std::hash<long long>()(value.GetAsTimeValue()),
                                  std::hash<unsigned int>()(value.GetMicroseconds()));
    }
};

template <class T, long long NullValue, long long NoChangeValue>
struct std::hash<nxValueWrapper<T, NullValue, NoChangeValue>>
{
    std::size_t operator()(nxValueWrapper<T, NullValue, NoChangeValue> const& value) const noexcept
    {
        return std::hash<T>()(value.GetValue());
    }
};
