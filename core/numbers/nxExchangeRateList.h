#pragma once

#include "core/numbers/nxExchangeRate.h"
#include "core/numbers/nxMoney.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxCurrencyEnum.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <map>
#include <vector>

/// @file
/// A table of exchange rates.

/// One rate for each ordered pair of currencies; owns its rates.
///
/// A pair is only ever converted by its own entry: there is no inverse rate and no way through a third currency. No
/// lock; a list that threads share is guarded by its owner, such as nxExchangeRateConverter.
class NX_CORE_API nxExchangeRateList
{
public:
    /// Rates by 1450 times the target's number plus the source's, 1450 being above every currency's number. A rate put
    /// in by a caller is deleted with the list.
    using RateMap = std::map<unsigned int, nxExchangeRate*>;

    nxExchangeRateList() = default;
    nxExchangeRateList(nxExchangeRateList const& other);
    /// Adds the other's rates to these: a pair that both have gets a copy of the other's rate in place of its own,
    /// and what the other lacks stays.
    nxExchangeRateList& operator=(nxExchangeRateList const& other);
    virtual ~nxExchangeRateList();

    /// Adds a copy. A pair that is there already keeps its object and takes only the new rate, so that pointers from
    /// GetExchangeRates() stay good.
    void SetExchangeRate(nxExchangeRate const& rate);

    /// Deletes every rate from this currency; rates to it stay.
    void RemoveExchangeRates(nxCurrencyEnum const& source);

    /// Replaces what the vector holds by the rates from this currency, in the order of the map. They stay the list's.
    void GetExchangeRates(nxCurrencyEnum const& source, std::vector<nxExchangeRate const*>& rates) const;

    RateMap const& GetExchangeRateMap() const;
    RateMap& GetExchangeRateMap();

    /// @return a copy of money that is in the target currency already, null money for a pair without a rate, else as
    ///         nxExchangeRate::ConvertToTargetCurrency().
    nxMoney ConvertToTargetCurrency(nxMoney const& money, nxCurrencyEnum const& target) const;

    /// Logs a line for each rate, between two lines of dashes.
    void Dump(nxLogLevelEnum level) const;

protected:
    static unsigned int _GetMapKey(nxCurrencyEnum const& source, nxCurrencyEnum const& target);
    static unsigned int _GetMapKey(nxExchangeRate const& rate);

private:
    RateMap _rates;
};
