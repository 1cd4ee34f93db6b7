#pragma once

#include "core/vocabulary/nxEnum.h"

/// The tag before each field of a serialised message or object; it says what the bytes are. A nested
/// object or collection stands between its begin and end tags.
class NX_CORE_API nxFieldTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFieldTypeEnum, 100, 148)
};
