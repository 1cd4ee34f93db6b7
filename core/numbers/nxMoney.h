#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxCurrencyEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <string>

/// @file
/// An amount in a currency.

/// A decimal tied to a currency, so that amounts of different currencies are not mixed by accident.
///
/// Its state (valid, null, "no change") is that of the amount, and so is the arithmetic. Between two currencies that
/// gives null money without a currency: nothing is converted, see nxExchangeRateConverter. A plain value, as nxDecimal.
///
/// @code
/// nxMoney fee;
/// if (fee.SetFromString("2.50USD").IsOK())
///     fee = fee * nxDecimal(3, 0);        // 7.50USD
/// @endcode
class NX_CORE_API nxMoney
{
public:
    /// A valid 0 without a currency.
    nxMoney() = default;
    nxMoney(nxDecimal const& amount, nxCurrencyEnum const& currency);

    static nxMoney GetNullMoney();

    void SetNull();     ///< Clears the currency too.
    void SetNoChange(); ///< Also the currency, whose own "no change" it becomes.

    bool IsValid() const
    {
        return _amount.IsValid();
    }

    bool IsNull() const
    {
        return _amount.IsNull();
    }

    bool IsNoChange() const
    {
        return _amount.IsNoChange();
    }

    nxDecimal const& GetDecimalValue() const
    {
        return _amount;
    }

    nxDecimal& GetDecimalValue()
    {
        return _amount;
    }

    void SetDecimalValue(nxDecimal const& amount)
    {
        _amount = amount;
    }

    nxCurrencyEnum const& GetCurrency() const
    {
        return _currency;
    }

    nxCurrencyEnum& GetCurrency()
    {
        return _currency;
    }

    void SetCurrency(nxCurrencyEnum const& currency)
    {
        _currency = currency;
    }

    void InvertSign();
    /// Changes the sign of the object itself and returns it.
    nxMoney& operator-();

    /// Reads an amount directly followed by a currency's three letters: "100.50USD". The letters alone are a null
    /// amount of that currency.
    /// @return NX_ERR_INVALID_PARAMETER for anything else, which leaves null money.
    nxErrorEnum SetFromString(std::string const& text, char separator = '.');
    /// The amount's plain text and the currency's token, "???" for none: "100.50USD". For a null amount it is
    /// the currency only; "no change" reads "NO_CHANGE", by its currency.
    std::string GetAsString(char separator = '.') const;
    /// "NULL", "NO_CHANGE", or the plain text.
    std::string GetAsLogString() const;

    nxMoney operator+(nxDecimal const& right) const;
    nxMoney operator-(nxDecimal const& right) const;
    nxMoney operator*(nxDecimal const& right) const;
    nxMoney operator/(nxDecimal const& right) const;
    nxMoney& operator+=(nxDecimal const& right);
    nxMoney& operator-=(nxDecimal const& right);
    nxMoney& operator*=(nxDecimal const& right);
    nxMoney& operator/=(nxDecimal const& right);

    nxMoney operator+(nxMoney const& right) const;
    nxMoney operator-(nxMoney const& right) const;
    nxMoney operator*(nxMoney const& right) const; ///< Dollars by dollars are dollars.
    nxMoney operator/(nxMoney const& right) const;
    nxMoney& operator+=(nxMoney const& right);
    nxMoney& operator-=(nxMoney const& right);
    nxMoney& operator*=(nxMoney const& right);
    nxMoney& operator/=(nxMoney const& right);

    /// @name Comparison
    /// Within one currency that of the amounts. Across currencies nothing is equal, and `<` holds if the left amount is
    /// not the larger and the left currency has the lower number; `>` is its mirror. That is no strict weak order, so
    /// money of several currencies can't be a key of a map or be sorted.
    /// @{
    bool operator==(nxMoney const& right) const;
    bool operator!=(nxMoney const& right) const;
    bool operator<(nxMoney const& right) const;
    bool operator<=(nxMoney const& right) const;
    bool operator>(nxMoney const& right) const;
    bool operator>=(nxMoney const& right) const;
    /// @}

private:
    nxErrorEnum _Refuse();
    /// Whether the currencies are the same; makes this null money if not.
    bool _KeepsCurrency(nxMoney const& right);

    nxDecimal _amount;
    nxCurrencyEnum _currency;
};
