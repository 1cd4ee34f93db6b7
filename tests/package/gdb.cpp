// Values of every kind that the debugger's script shows, and how, for tests/package/gdb.sh.

#include "core/core.h"

#include <cstdlib>

struct Values
{
    nxBuySellEnum side = NX_BUY;                       // BUY (11)
    nxBuySellEnum noSide;                              // UNDEFINED (0)
    nxErrorEnum error = NX_ERR_INVALID_PARAMETER;      // NX_ERR_INVALID_PARAMETER (1000002)
    nxExchangePriceFilterBitMask mask = 5U;            // BLOCK_TRADES NEW_PRODUCTS (0x5)
    nxExchangePriceFilterBitMask noMask;               // NULL
    nxDecimal price = nxDecimal("101.50");             // 101.50
    nxDecimal small = nxDecimal("-0.05");              // -0.05
    nxDecimal noPrice = nxDecimal(nxNullInitalizer()); // NULL
    nxMoney cash = nxMoney(nxDecimal("1.50"), NX_USD); // 1.50USD
    nxRatio ratio = nxRatio(1, 2);                     // 1:2
    nxExchangeRate rate = nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92")); // USD:EUR=0.92
    nxVolume volume = 7;                                                     // 7
    nxVolume noVolume;                                                       // NULL
    nxDoubleValueWrapper wrapped = 1.5;                                      // 1.5
    nxDoubleValueWrapper notWrapped;                                         // NULL
    nxStringValue text = "text";                                             // "text"
    nxStringValue noText = nxNoChangeInitalizer();                           // NO_CHANGE
    nxDate day = 20240131U;                                                  // 2024-01-31
    nxTime time;                                                             // 09:30:05
    nxDateTime moment = 1700000000;                                          // 2023-11-14 22:13:20.000000 UTC
    nxDateTime noMoment = nxNullInitalizer();                                // NULL
    nxTimeStamp stamp = nxTimeStamp(1700000000, 5); // 2023-11-14 22:13:20.000000005 UTC
};

[[gnu::noinline]] static void Stop(Values const& values)
{
    if (values.side == NX_SELL)
        std::abort();
}

int main()
{
    Values values;
    values.noMask.SetNull();
    if (!values.time.SetFromString("09:30:05").IsOK())
        return 1;
    Stop(values);
}
