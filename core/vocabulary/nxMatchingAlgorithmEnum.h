#pragma once

#include "core/vocabulary/nxEnum.h"

/// How an exchange shares a fill among the orders at one price.
class NX_CORE_API nxMatchingAlgorithmEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMatchingAlgorithmEnum, 12400, 12403)
};
