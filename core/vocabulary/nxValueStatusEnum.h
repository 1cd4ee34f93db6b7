#pragma once

#include "core/vocabulary/nxEnum.h"

/// The state that stands beside a value: valid, null or "no change". Its row 243 "NOCHANGE" is not the number
/// 2 "NO_CHANGE" that every enumeration can hold.
class NX_CORE_API nxValueStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxValueStatusEnum, 240, 244)
};
