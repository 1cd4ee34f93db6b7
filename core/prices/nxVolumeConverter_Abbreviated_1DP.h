#pragma once

#include "core/prices/nxVolumeConverter_Abbreviated.h"

/// Abbreviated volumes with one decimal at most: 1999 is "1.9k".
class NX_CORE_API nxVolumeConverter_Abbreviated_1DP : public nxVolumeConverter_Abbreviated
{
public:
    nxVolumeConverter* Clone() const override;

protected:
    /// @return 1.
    unsigned char _GetMaxMillionsPlaces() const override;
    /// @return 1.
    unsigned char _GetMaxThousandsPlaces() const override;
};
