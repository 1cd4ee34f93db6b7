// An order's words: from a token, from a number, refused, and as flags of a mask.
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxException.h"
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"
#include "core/vocabulary/nxOrderStatusEnum.h"

#include <cstdio>
#include <vector>

namespace
{
// What a program does with a word that came over the network.
nxErrorEnum ReadStatus(std::string const& token, nxOrderStatusEnum& status)
{
    if (!status.SetFromString(token))
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    return nxErrorEnum();
}
} // namespace

int main()
{
    nxOrderStatusEnum status;
    if (ReadStatus("ORDER_CONFIRMED", status).IsOK())
    {
        std::printf("%u %s, working: %s\n", status.GetValue(), status.GetLongDescription().c_str(),
                    status.IsWorkingOrder() ? "yes" : "no");
    }

    nxErrorEnum const result = ReadStatus("ORDER_CONFIRMD", status);
    std::printf("%s, and the status is still %s\n", result.GetLongDescription().c_str(),
                status.GetAsString().c_str());

    status = NX_BUY; // a number of another class is refused
    std::printf("%s\n", status.GetAsString().c_str());

    std::vector<nxEnumValue> all;
    status.GetRegisteredEnumValuesForInstance(all);
    std::printf("%zu states, %s to %s\n", all.size(), nxOrderStatusEnum(all.front()).GetAsString().c_str(),
                nxOrderStatusEnum(all.back()).GetAsString().c_str());

    nxExchangePriceFilterBitMask filter(0x1);
    filter.SetBits(0x4);
    std::printf("%u: %s\n", filter.GetValue(), filter.GetShortDescription(", ").c_str());
    filter.SetNull();
    std::printf("%s\n", filter.GetShortDescription(", ").c_str());

    try
    {
        throw nxException(nxErrorEnum(NX_ERR_ORDER_INVALID_PRICE), "112-163 has no half");
    }
    catch (nxException const& failure)
    {
        std::printf("%s: %s\n", failure.GetError().GetAsString().c_str(), failure.GetDescription().c_str());
    }
}
