#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/numbers/nxExchangeRate.h"
#include "core/numbers/nxMoney.h"
#include "core/numbers/nxRatio.h"
#include "core/numbers/nxStringValue.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTime.h"
#include "core/time/nxTimeStamp.h"
#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxBitMask64.h"
#include "core/vocabulary/nxEnum.h"

#include <concepts>
#include <string>

/// @file
/// The one text that the opt-in headers for streams and formats show of a value.

/// @cond
namespace nxStdText
{
template <class Value>
concept HasLogString = requires(Value const& value)
{
    {
        value.GetAsLogString()
        } -> std::convertible_to<std::string>;
};
} // namespace nxStdText
/// @endcond

/// The token of an enumeration, the tokens of a mask with blanks between them, and of every other value its log form:
/// "NULL" and "NO_CHANGE" for these states.
class nxStdTextHelper
{
public:
    static std::string const& GetText(nxEnum const& value)
    {
        return value.GetShortDescription();
    }

    static std::string GetText(nxBitMask const& value)
    {
        return value.GetShortDescription(" ");
    }

    static std::string GetText(nxBitMask64 const& value)
    {
        return value.GetShortDescription(" ");
    }

    template <nxStdText::HasLogString Value>
    static std::string GetText(Value const& value)
    {
        return value.GetAsLogString();
    }

    static std::string GetText(nxExchangeRate const& value) ///< "USD:EUR=0.92"
    {
        return value.GetAsString();
    }

    static std::string GetText(nxTimeStamp const& value) ///< local time as 15Nov26 09:30:05.123
    {
        return value.GetAsString();
    }

    template <class T, long long NullValue, long long NoChangeValue>
    static std::string GetText(nxValueWrapper<T, NullValue, NoChangeValue> const& value)
    {
        if (value.IsNull())
            return "NULL";
        return value.IsNoChange() ? "NO_CHANGE" : std::to_string(value.GetValue());
    }

    nxStdTextHelper() = delete;
};
