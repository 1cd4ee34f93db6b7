#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxMoney.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxCurrencyEnum.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <string>

/// @file
/// The rate from one currency to another.

/// One unit of the source currency is worth so many units of the target currency. Never used backward.
class NX_CORE_API nxExchangeRate
{
public:
    /// No currencies and a rate of 0.
    nxExchangeRate() = default;
    nxExchangeRate(nxCurrencyEnum const& source, nxCurrencyEnum const& target, nxDecimal const& rate);
    nxExchangeRate(nxExchangeRate const&) = default;
    nxExchangeRate& operator=(nxExchangeRate const&) = default;
    virtual ~nxExchangeRate();

    nxCurrencyEnum const& GetSourceCurrency() const;
    nxCurrencyEnum const& GetTargetCurrency() const;
    nxDecimal const& GetConversionRate() const;
    void SetSourceCurrency(nxCurrencyEnum const& source);
    void SetTargetCurrency(nxCurrencyEnum const& target);
    void SetConversionRate(nxDecimal const& rate);

    /// The amount times the rate, rounded half up to the larger of their places. A rate that is not valid leaves the
    /// amount as it is, and an amount that is not valid stays so, both now in the target currency.
    /// @return null money for money that is not in the source currency.
    nxMoney ConvertToTargetCurrency(nxMoney const& money) const;

    std::string GetAsString() const; ///< "USD:EUR=0.92"
    /// Logs the same form as one line, with NULL and NO_CHANGE for a rate that is not valid.
    void Dump(nxLogLevelEnum level) const;

private:
    nxCurrencyEnum _target;
    nxDecimal _rate;
    nxCurrencyEnum _source;
};
