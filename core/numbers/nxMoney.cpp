#include "core/numbers/nxMoney.h"

#include "core/text/nxStringHelper.h"

namespace
{

constexpr std::size_t currencyLength = 3;

} // namespace

nxMoney::nxMoney(nxDecimal const& amount, nxCurrencyEnum const& currency)
    : _amount(amount), _currency(currency)
{
}

nxMoney nxMoney::GetNullMoney()
{
    return nxMoney(nxDecimal::GetNullDecimal(), nxCurrencyEnum());
}

void nxMoney::SetNull()
{
    _amount.SetNull();
    _currency.Clear();
}

void nxMoney::SetNoChange()
{
    _amount.SetNoChange();
    _currency.SetNoChange();
}

void nxMoney::InvertSign()
{
    _amount.InvertSign();
}

nxMoney& nxMoney::operator-()
{
    InvertSign();
    return *this;
}

nxErrorEnum nxMoney::SetFromString(std::string const& text, char separator)
{
    if (text.size() < currencyLength)
        return _Refuse();
    std::size_t const amountLength = text.size() - currencyLength;
    if (!_currency.SetFromShortDescriptionString(text.substr(amountLength)))
        return _Refuse();
    if (amountLength == 0)
    {
        _amount.SetNull();
        return nxErrorEnum();
    }
    return _amount.SetFromString(text.substr(0, amountLength), separator).IsOK() ? nxErrorEnum() : _Refuse();
}

nxErrorEnum nxMoney::_Refuse()
{
    SetNull();
    return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
}

std::string nxMoney::GetAsString(char separator) const
{
    std::string text;
    _amount.AppendAsString(text, separator);
    text.append(_currency.IsUndefined() ? "???" : _currency.GetShortDescription());
    return text;
}

std::string nxMoney::GetAsLogString() const
{
    return IsValid() ? GetAsString('.') : _amount.GetAsLogString('.');
}

nxMoney nxMoney::operator+(nxDecimal const& right) const
{
    nxMoney result(*this);
    return result += right;
}

nxMoney nxMoney::operator-(nxDecimal const& right) const
{
    nxMoney result(*this);
    return result -= right;
}

nxMoney nxMoney::operator*(nxDecimal const& right) const
{
    nxMoney result(*this);
    return result *= right;
}

nxMoney nxMoney::operator/(nxDecimal const& right) const
{
    nxMoney result(*this);
    return result /= right;
}

nxMoney& nxMoney::operator+=(nxDecimal const& right)
{
    _amount += right;
    return *this;
}

nxMoney& nxMoney::operator-=(nxDecimal const& right)
{
    _amount -= right;
    return *this;
}

nxMoney& nxMoney::operator*=(nxDecimal const& right)
{
    _amount *= right;
    return *this;
}

nxMoney& nxMoney::operator/=(nxDecimal const& right)
{
    _amount /= right;
    return *this;
}

nxMoney nxMoney::operator+(nxMoney const& right) const
{
    nxMoney result(*this);
    return result += right;
}

nxMoney nxMoney::operator-(nxMoney const& right) const
{
    nxMoney result(*this);
    return result -= right;
}

nxMoney nxMoney::operator*(nxMoney const& right) const
{
    nxMoney result(*this);
    return result *= right;
}

nxMoney nxMoney::operator/(nxMoney const& right) const
{
    nxMoney result(*this);
    return result /= right;
}

nxMoney& nxMoney::operator+=(nxMoney const& right)
{
    return _KeepsCurrency(right) ? *this += right._amount : *this;
}

nxMoney& nxMoney::operator-=(nxMoney const& right)
{
    return _KeepsCurrency(right) ? *this -= right._amount : *this;
}

nxMoney& nxMoney::operator*=(nxMoney const& right)
{
    return _KeepsCurrency(right) ? *this *= right._amount : *this;
}

nxMoney& nxMoney::operator/=(nxMoney const& right)
{
    return _KeepsCurrency(right) ? *this /= right._amount : *this;
}

bool nxMoney::_KeepsCurrency(nxMoney const& right)
{
    if (_currency == right._currency)
        return true;
    SetNull();
    return false;
}

bool nxMoney::operator==(nxMoney const& right) const
{
    return _currency == right._currency && _amount == right._amount;
}

bool nxMoney::operator!=(nxMoney const& right) const
{
    return !(*this == right);
}

bool nxMoney::operator<(nxMoney const& right) const
{
    if (_currency == right._currency)
        return _amount < right._amount;
    return _amount <= right._amount && _currency < right._currency;
}

bool nxMoney::operator<=(nxMoney const& right) const
{
    return _amount <= right._amount && _currency <= right._currency;
}

bool nxMoney::operator>(nxMoney const& right) const
{
    if (_currency == right._currency)
        return _amount > right._amount;
    return _amount >= right._amount && _currency > right._currency;
}

bool nxMoney::operator>=(nxMoney const& right) const
{
    return _amount >= right._amount && _currency >= right._currency;
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, nxMoney& value, char separator)
{
    return value.SetFromString(text, separator);
}
