#pragma once

#include "core/vocabulary/nxEnum.h"

/// The state of a gateway's link to its exchange. Nothing here says which state may follow which. The text of
/// "logged off" reads "logged on", and stays so.
class NX_CORE_API nxExchangeStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExchangeStateEnum, 5300, 5309)
};
