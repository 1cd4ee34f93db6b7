#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/numbers/nxExchangeRateList.h"
#include "core/numbers/nxMoney.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxCurrencyEnum.h"

#include <memory>

/// @file
/// The process's current exchange rates.

/// Holds one list of rates and a default target currency for the whole process. Lives until the process ends.
///
/// Every operation takes the one mutex, so that any thread may call it, but for those whose name ends in NoLock: their
/// caller holds Lock(), over as many calls as must see the same rates. The mutex is not recursive.
/// Between Lock() and Unlock() a thread may fork, and its child then holds the mutex too; in the child of any other
/// thread nobody holds it.
///
/// @code
/// nxExchangeRateConverter& converter = nxExchangeRateConverter::GetInstance();
/// converter.SetExchangeRateList(rates);
/// nxMoney const inEuros = converter.ConvertToTargetCurrency(fee, NX_EUR);
/// @endcode
class NX_CORE_API nxExchangeRateConverter
{
public:
    static nxExchangeRateConverter& GetInstance();

    /// Replaces the list by a copy of this one.
    void SetExchangeRateList(nxExchangeRateList const& list);
    /// Replaces the list by this one, which the caller no longer touches. The list that is held already stays as it is;
    /// a null pointer leaves no list.
    void SetAndOwnExchangeRateList(nxExchangeRateList* list);

    void SetDefaultTargetCurrency(nxCurrencyEnum const& target);
    nxCurrencyEnum GetDefaultTargetCurrency() const;
    nxCurrencyEnum GetDefaultTargetCurrencyNoLock() const;

    /// @return a copy of money that is in the target currency already; null money without a list; else as
    ///         nxExchangeRateList::ConvertToTargetCurrency().
    nxMoney ConvertToTargetCurrency(nxMoney const& money, nxCurrencyEnum const& target) const;
    nxMoney ConvertToTargetCurrencyNoLock(nxMoney const& money, nxCurrencyEnum const& target) const;
    /// To the default target currency; a copy of the money if there is none.
    nxMoney ConvertToTargetCurrency(nxMoney const& money) const;
    nxMoney ConvertToTargetCurrencyNoLock(nxMoney const& money) const;

    void Lock() const;
    void Unlock() const;

private:
    static nxExchangeRateConverter* _Create();

    nxExchangeRateConverter() = default;
    nxExchangeRateConverter(nxExchangeRateConverter const&) = delete;
    nxExchangeRateConverter& operator=(nxExchangeRateConverter const&) = delete;
    virtual ~nxExchangeRateConverter();

    std::unique_ptr<nxExchangeRateList> _list; // null at first
    nxCurrencyEnum _defaultTarget;
    mutable nxMutex _mutex;
};
