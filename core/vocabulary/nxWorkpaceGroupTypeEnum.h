#pragma once

#include "core/vocabulary/nxEnum.h"

/// The place for which a user's workspaces are kept: each place has its own stored data.
class NX_CORE_API nxWorkpaceGroupTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxWorkpaceGroupTypeEnum, 18000, 18004)
    NX_ENUM_LESS(nxWorkpaceGroupTypeEnum)

    /// What stands before the names of the group's stored data, such as "Home_"; empty for the office too.
    std::string GetDataInstancePrefix() const;
};
