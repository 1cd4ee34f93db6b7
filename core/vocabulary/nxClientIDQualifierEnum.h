#pragma once

#include "core/vocabulary/nxEnum.h"

/// What the client's identification in a regulatory report denotes.
class NX_CORE_API nxClientIDQualifierEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxClientIDQualifierEnum, 14500, 14503)
};
