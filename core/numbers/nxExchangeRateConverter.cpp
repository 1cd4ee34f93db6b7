#include "core/numbers/nxExchangeRateConverter.h"

#include "core/concurrency/nxMutexGuard.h"

namespace
{
/// Whether this thread is between Lock() and Unlock(). It may fork there; the child then is there, too.
constinit thread_local bool isHolding = false;

// Built at load: a child of fork() could not wait for another thread to finish it.
[[maybe_unused]] nxExchangeRateConverter const& builtAtLoad = nxExchangeRateConverter::GetInstance();
} // namespace

nxExchangeRateConverter::~nxExchangeRateConverter() = default;

nxExchangeRateConverter& nxExchangeRateConverter::GetInstance()
{
    // Never destroyed: threads may still convert while the process ends.
    static nxExchangeRateConverter* const instance = _Create();
    return *instance;
}

nxExchangeRateConverter* nxExchangeRateConverter::_Create()
{
    auto const close = []
    {
        if (!isHolding)
        {
            (void)GetInstance()._mutex.Lock();
        }
    };
    auto const open = []
    {
        if (!isHolding)
        {
            (void)GetInstance()._mutex.Unlock();
        }
    };
    (void)pthread_atfork(close, open, open);
    return new nxExchangeRateConverter;
}

void nxExchangeRateConverter::SetExchangeRateList(nxExchangeRateList const& list)
{
    auto copy = std::make_unique<nxExchangeRateList>(list);
    nxMutexGuard guard(_mutex);
    _list = std::move(copy);
}

void nxExchangeRateConverter::SetAndOwnExchangeRateList(nxExchangeRateList* list)
{
    nxMutexGuard guard(_mutex);
    if (list != _list.get())
    {
        _list.reset(list);
    }
}

void nxExchangeRateConverter::SetDefaultTargetCurrency(nxCurrencyEnum const& target)
{
    nxMutexGuard guard(_mutex);
    _defaultTarget = target;
}

nxCurrencyEnum nxExchangeRateConverter::GetDefaultTargetCurrency() const
{
    nxMutexGuard guard(_mutex);
    return _defaultTarget;
}

nxCurrencyEnum nxExchangeRateConverter::GetDefaultTargetCurrencyNoLock() const
{
    return _defaultTarget;
}

nxMoney nxExchangeRateConverter::ConvertToTargetCurrency(nxMoney const& money,
                                                         nxCurrencyEnum const& target) const
{
    nxMutexGuard guard(_mutex);
    return ConvertToTargetCurrencyNoLock(money, target);
}

nxMoney nxExchangeRateConverter::ConvertToTargetCurrencyNoLock(nxMoney const& money,
                                                               nxCurrencyEnum const& target) const
{
    if (money.GetCurrency() == target)
    {
        return money;
    }
    return _list == nullptr ? nxMoney::GetNullMoney() : _list->ConvertToTargetCurrency(money, target);
}

nxMoney nxExchangeRateConverter::ConvertToTargetCurrency(nxMoney const& money) const
{
    nxMutexGuard guard(_mutex);
    return ConvertToTargetCurrencyNoLock(money);
}

nxMoney nxExchangeRateConverter::ConvertToTargetCurrencyNoLock(nxMoney const& money) const
{
    return _defaultTarget.IsUndefined() ? money : ConvertToTargetCurrencyNoLock(money, _defaultTarget);
}

void nxExchangeRateConverter::Lock() const
{
    (void)_mutex.Lock();
    isHolding = true;
}

void nxExchangeRateConverter::Unlock() const
{
    isHolding = false;
    (void)_mutex.Unlock();
}
