#pragma once

#include "core/vocabulary/nxEnum.h"

/// Multi leg reporting type.
class NX_CORE_API nxMultiLegReportingTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMultiLegReportingTypeEnum, 14800, 14804)
};
