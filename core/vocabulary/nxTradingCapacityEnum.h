#pragma once

#include "core/vocabulary/nxEnum.h"

/// The capacity in which the firm trades, for reports to the regulator.
class NX_CORE_API nxTradingCapacityEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxTradingCapacityEnum, 14400, 14404)
    NX_ENUM_LESS(nxTradingCapacityEnum)

    /// The code of the report: "DEAL", "MTCH" or "AOTC"; nothing for any other value.
    std::string GetMIFIDCode() const;
};
