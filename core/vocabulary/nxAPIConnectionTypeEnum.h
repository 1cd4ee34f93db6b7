#pragma once

#include "core/vocabulary/nxEnum.h"

/// By what a process is connected to an API: multicast, a remote daemon, or AWS. The text is a short
/// code.
class NX_CORE_API nxAPIConnectionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAPIConnectionTypeEnum, 17000, 17010)
    NX_ENUM_LESS(nxAPIConnectionTypeEnum)
};
