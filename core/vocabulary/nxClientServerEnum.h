#pragma once

#include "core/vocabulary/nxEnum.h"

/// Client server.
class NX_CORE_API nxClientServerEnum : public nxEnum
{
    NX_ENUM_CLASS(nxClientServerEnum, 70, 73)
};
