#include "core/numbers/nxExchangeRateConverter.h"

#include "core/concurrency/nxMutexGuard.h"

#include <new>
#include <thread>
#include <utility>

namespace
{
/// Whether this thread is between Lock() and Unlock(). It may fork there; the child then is there, too.
constinit thread_local bool isHolding = false;

/// Whether this thread, which forks, holds the mutex for the fork.
constinit thread_local bool isHoldingForFork = false;

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
    // A fork lets those finish who are inside for a moment. Whoever holds the mutex across calls may want, meanwhile,
    // what the fork has locked already, such as the log: he is not waited for, and the child has a mutex made anew.
    auto const close = []
    {
        constexpr int patience = 100;
        for (int attempt = 0; attempt < patience && !isHolding && !isHoldingForFork; ++attempt)
        {
            isHoldingForFork = GetInstance()._mutex.TryLock().IsOK();
            if (!isHoldingForFork)
            {
                std::this_thread::yield();
            }
        }
    };
    auto const open = []
    {
        if (std::exchange(isHoldingForFork, false))
        {
            (void)GetInstance()._mutex.Unlock();
        }
    };
    auto const openInChild = []
    {
        if (!isHolding && !std::exchange(isHoldingForFork, false))
        {
            new (&GetInstance()._mutex) nxMutex;
        }
        else if (!isHolding)
        {
            (void)GetInstance()._mutex.Unlock();
        }
    };
    (void)pthread_atfork(close, open, openInChild);
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
        _list.reset(list);
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
        return money;
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
