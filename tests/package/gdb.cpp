// Values of every kind that the debugger's script shows, for tests/package/gdb.sh.

#include "core/core.h"

#include <cstdlib>

namespace
{
struct Values
{
    nxBuySellEnum side = NX_BUY;
    nxBuySellEnum noSide;
    nxErrorEnum error = NX_ERR_INVALID_PARAMETER;
    nxExchangePriceFilterBitMask mask = 5U;
    nxExchangePriceFilterBitMask noMask;
    nxDecimal price = nxDecimal("101.50");
    nxDecimal small = nxDecimal("-0.05");
    nxDecimal noPrice = nxDecimal(nxNullInitalizer());
    nxMoney cash = nxMoney(nxDecimal("1.50"), NX_USD);
    nxRatio ratio = nxRatio(1, 2);
    nxExchangeRate rate = nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92"));
    nxVolume volume = 7;
    nxVolume noVolume;
    nxDoubleValueWrapper wrapped = 1.5;
    nxDoubleValueWrapper notWrapped;
    nxStringValue text = "text";
    nxStringValue noText = nxNoChangeInitalizer();
    nxDate day = 20240131U;
    nxTime time;
    nxDateTime moment = 1700000000;
    nxDateTime noMoment = nxNullInitalizer();
    nxTimeStamp stamp = nxTimeStamp(1700000000, 5);
};

[[gnu::noinline]] void Stop(Values const& values)
{
    if (values.side == NX_SELL)
        std::abort();
}
} // namespace

int main()
{
    Values values;
    values.noMask.SetNull();
    if (!values.time.SetFromString("09:30:05").IsOK())
        return 1;
    Stop(values);
}
