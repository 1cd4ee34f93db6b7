#pragma once

#include "core/vocabulary/nxEnum.h"

/// Client ID qualifier.
class NX_CORE_API nxClientIDQualifierEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxClientIDQualifierEnum, 14500, 14503)
};
