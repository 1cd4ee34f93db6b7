#pragma once

#include "core/vocabulary/nxEnum.h"

/// Reply handler type.
class NX_CORE_API nxReplyHandlerTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxReplyHandlerTypeEnum, 13600, 13603)
    NX_ENUM_LESS(nxReplyHandlerTypeEnum)
};
