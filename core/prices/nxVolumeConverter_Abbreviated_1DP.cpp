#include "core/prices/nxVolumeConverter_Abbreviated_1DP.h"

nxVolumeConverter* nxVolumeConverter_Abbreviated_1DP::Clone() const
{
    return new nxVolumeConverter_Abbreviated_1DP;
}

unsigned char nxVolumeConverter_Abbreviated_1DP::_GetMaxMillionsPlaces() const
{
    return 1;
}

unsigned char nxVolumeConverter_Abbreviated_1DP::_GetMaxThousandsPlaces() const
{
    return 1;
}
