// A host program as small as can be: a step on a ladder, and a number that only registration can know.

#include "core/core.h"

#include <iostream>

int main()
{
    nxVariableTickTable const* const ladder =
        nxVariableTickTableContainer::GetVariableTickTable("VTT_CHIX_EUZ1");
    if (ladder == nullptr)
        return 1;
    nxDecimal price("9.999");
    std::cout << price.GetAsString();
    ladder->Increment(price, 2);
    std::cout << " " << price.GetAsString() << '\n';

    nxErrorEnum error;
    if (!error.SetFromString("NX_ERR_ORDER_INVALID_PRICE"))
        return 1;
    std::cout << error.GetValue() << " " << error.GetLongDescription() << '\n';

    std::cout << nxVersionNumber::GetInstance().GetVersionNumber() << '\n';
}
