#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the price of a leg enters that of its synthetic strategy.
///
/// The lower bound lies above the upper one, and stays there: the rows are registered and print, but an
/// instance refuses all of them and holds only undefined and "no change".
class NX_CORE_API nxSyntheticLegCalculationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticLegCalculationTypeEnum, 9700, 8804)
};
