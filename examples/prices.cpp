// The road of a price: a trader's text, the tick of the product, and the text again.
#include "core/prices/nxPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxPriceManipulator.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "core/prices/nxVolumeConverterHelper.h"

#include <cstdio>
#include <memory>

namespace
{
using Ticks = nxValueWrapper<int, 2147483647, 2147483646>;

/// A note of the treasury is quoted in half 32nds: 112-165 is 112 and 16.5/32.
void ShowNote()
{
    std::unique_ptr<nxPriceConverter> const converter(nxPriceConverterHelper::CreatePriceConverter(
        nxPriceFormatEnum(NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK)));
    if (!converter->SetPriceFromString("112-165"))
        return;
    std::printf("%s is %.6f", converter->GetPriceAsString().c_str(),
                static_cast<double>(converter->GetPrice()));
    (void)converter->ChangePrice(Ticks(1));
    std::printf(", one tick up %s\n", converter->GetPriceAsString().c_str());

    bool const isRead = converter->SetPriceFromString("112-163"); // no half
    std::printf("112-163 is %s\n", isRead ? "a price" : "refused");
}

/// A share moves along the ladder of its exchange.
void ShowShare()
{
    nxPriceManipulator const ticks(nxVariableTickTableContainer::GetVariableTickTable("VTT_CXE_mifid_5"));
    nxDecimal price("88.527", '.');
    ticks.RoundToValidPrice(NX_ROUNDING_METHOD_NEAREST, price);
    std::printf("rounded %s", price.GetAsString().c_str());
    ticks.Increment(price, 3);
    std::printf(", three ticks up %s", price.GetAsString().c_str());
    nxDecimal const above("100.05", '.');
    std::printf(", %u ticks to %s\n", ticks.GetPriceDifferenceInTicks(price, above).GetValue(),
                above.GetAsString().c_str());
}
} // namespace

int main()
{
    ShowNote();
    ShowShare();

    std::string volume;
    (void)nxVolumeConverterHelper::GetFormattedDisplayVolume(
        nxVolume(1998877), nxVolumeFormatEnum(NX_VOLUME_FORMAT_ABBREVIATED_1DP), volume);
    std::printf("%s lots\n", volume.c_str());
}
