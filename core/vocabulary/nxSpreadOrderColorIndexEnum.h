#pragma once

#include "core/vocabulary/nxEnum.h"

/// The colour slot of a spread order. The text is the slot's number.
class NX_CORE_API nxSpreadOrderColorIndexEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadOrderColorIndexEnum, 9200, 9217)
    NX_ENUM_LESS(nxSpreadOrderColorIndexEnum)
};
