#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

/// Whether a report speaks of a single instrument, of one leg of a strategy or of the strategy as a whole.
class NX_CORE_API nxMultiLegReportingTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMultiLegReportingTypeEnum, 14800, 14804)

    /// The value of the FIX field of this name: "1" to "3".
    /// @return OK; NX_ERR_INVALID_PARAMETER for any other value, with `code` emptied.
    nxErrorEnum GetAsFIXMultiLegReportingType(std::string& code) const;

    /// Sets the value from the FIX field of this name.
    /// @return OK; NX_ERR_INVALID_PARAMETER for any other text, which clears the value.
    nxErrorEnum SetFromFIXMultiLegReportingType(std::string const& code);
};
