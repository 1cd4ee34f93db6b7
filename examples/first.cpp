#include "core/core.h"
#include <iostream>

int main()
{
    auto const* const ladder = nxVariableTickTableContainer::GetVariableTickTable("VTT_CHIX_EUZ1");
    nxDecimal price("9.998");
    for (int tick = 0; tick < 4; ++tick, ladder->Increment(price))
        std::cout << price.GetAsString() << '\n';

    nxBuySellEnum const side(NX_SELL);
    nxErrorEnum const error(NX_ERR_ORDER_INVALID_PRICE);
    std::cout << side.GetAsString() << " is " << side.GetValue() << '\n'
              << error.GetAsString() << ": " << error.GetLongDescription() << '\n';
}
