#include "core/numbers/nxExchangeRate.h"

#include "core/logging/nxLogSite.h"

nxExchangeRate::nxExchangeRate(nxCurrencyEnum const& source, nxCurrencyEnum const& target,
                               nxDecimal const& rate)
    : _target(target), _rate(rate), _source(source)
{
}

nxExchangeRate::~nxExchangeRate() = default;

nxCurrencyEnum const& nxExchangeRate::GetSourceCurrency() const
{
    return _source;
}

nxCurrencyEnum const& nxExchangeRate::GetTargetCurrency() const
{
    return _target;
}

nxDecimal const& nxExchangeRate::GetConversionRate() const
{
    return _rate;
}

void nxExchangeRate::SetSourceCurrency(nxCurrencyEnum const& source)
{
    _source = source;
}

void nxExchangeRate::SetTargetCurrency(nxCurrencyEnum const& target)
{
    _target = target;
}

void nxExchangeRate::SetConversionRate(nxDecimal const& rate)
{
    _rate = rate;
}

nxMoney nxExchangeRate::ConvertToTargetCurrency(nxMoney const& money) const
{
    if (money.GetCurrency() != _source)
        return nxMoney::GetNullMoney();
    return nxMoney(money.GetDecimalValue() * _rate, _target);
}

std::string nxExchangeRate::GetAsString() const
{
    return _source.GetShortDescription() + ":" + _target.GetShortDescription() + "=" + _rate.GetAsString('.');
}

void nxExchangeRate::Dump(nxLogLevelEnum level) const
{
    NX_LOG(level, _source << ":" << _target << "=" << _rate);
}
