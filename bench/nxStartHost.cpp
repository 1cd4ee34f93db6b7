// The smallest host: the library is loaded and knows its words.
#include "core/vocabulary/nxBuySellEnum.h"

int main()
{
    return nxBuySellEnum(NX_BUY).GetAsString() == "BUY" ? 0 : 1;
}
