#pragma once

#include "core/vocabulary/nxEnum.h"

/// Field type.
class NX_CORE_API nxFieldTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFieldTypeEnum, 100, 148)
};
