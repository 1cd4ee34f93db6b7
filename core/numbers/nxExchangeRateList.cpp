#include "core/numbers/nxExchangeRateList.h"

#include "core/logging/nxLogSite.h"

#include <memory>

namespace
{

constexpr unsigned int keyFactor = 1450; // above every currency's number
constexpr char const line[] = "----------------------------------------";

} // namespace

nxExchangeRateList::nxExchangeRateList(nxExchangeRateList const& other) : nxExchangeRateList()
{
    *this = other;
}

nxExchangeRateList& nxExchangeRateList::operator=(nxExchangeRateList const& other)
{
    if (this == &other)
        return *this;
    for (auto const& [key, rate] : other._rates)
    {
        auto copy = std::make_unique<nxExchangeRate>(*rate);
        nxExchangeRate*& held = _rates[key];
        delete held;
        held = copy.release();
    }
    return *this;
}

nxExchangeRateList::~nxExchangeRateList()
{
    for (auto const& [key, rate] : _rates)
        delete rate;
}

void nxExchangeRateList::SetExchangeRate(nxExchangeRate const& rate)
{
    auto const found = _rates.find(_GetMapKey(rate));
    if (found != _rates.end())
    {
        found->second->SetConversionRate(rate.GetConversionRate());
        return;
    }
    auto copy = std::make_unique<nxExchangeRate>(rate);
    _rates.emplace(_GetMapKey(rate), copy.get());
    (void)copy.release();
}

void nxExchangeRateList::RemoveExchangeRates(nxCurrencyEnum const& source)
{
    nxCurrencyEnum const removed(source); // which may lie in one of the rates that go
    for (auto at = _rates.begin(); at != _rates.end();)
    {
        if (at->second->GetSourceCurrency() == removed)
        {
            delete at->second;
            at = _rates.erase(at);
        }
        else
        {
            ++at;
        }
    }
}

void nxExchangeRateList::GetExchangeRates(nxCurrencyEnum const& source,
                                          std::vector<nxExchangeRate const*>& rates) const
{
    rates.clear();
    for (auto const& [key, rate] : _rates)
        if (rate->GetSourceCurrency() == source)
            rates.push_back(rate);
}

nxExchangeRateList::RateMap const& nxExchangeRateList::GetExchangeRateMap() const
{
    return _rates;
}

nxExchangeRateList::RateMap& nxExchangeRateList::GetExchangeRateMap()
{
    return _rates;
}

nxMoney nxExchangeRateList::ConvertToTargetCurrency(nxMoney const& money, nxCurrencyEnum const& target) const
{
    if (money.GetCurrency() == target)
        return money;
    auto const found = _rates.find(_GetMapKey(money.GetCurrency(), target));
    return found == _rates.end() ? nxMoney::GetNullMoney() : found->second->ConvertToTargetCurrency(money);
}

void nxExchangeRateList::Dump(nxLogLevelEnum level) const
{
    NX_LOG(level, line);
    for (auto const& [key, rate] : _rates)
        rate->Dump(level);
    NX_LOG(level, line);
}

unsigned int nxExchangeRateList::_GetMapKey(nxCurrencyEnum const& source, nxCurrencyEnum const& target)
{
    return target.GetValue() * keyFactor + source.GetValue();
}

unsigned int nxExchangeRateList::_GetMapKey(nxExchangeRate const& rate)
{
    return _GetMapKey(rate.GetSourceCurrency(), rate.GetTargetCurrency());
}
