#include "core/vocabulary/nxLogLevelEnum.h"

// What the words of applications, messaging, logging and data can tell of themselves.

void nxLogLevelEnum::SetFromNumericLogLevel(unsigned int level)
{
    // Unsigned, so that a huge number wraps round: what it then hits is taken like any other.
    (void)_Set(NX_DBG + level);
}
