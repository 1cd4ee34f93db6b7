#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxEnumValue.h"

#include <limits>

/// Accepts every number but the largest, and shows what the base keeps for its classes.
struct nxAnyEnum : nxEnum
{
    nxAnyEnum() = default;
    explicit nxAnyEnum(unsigned int value)
    {
        _value = value;
    }
    using nxEnum::operator=;
    using nxEnum::_Register;
    using nxEnum::_Set;

    std::string GetClassNameA() override
    {
        return "nxAnyEnum";
    }
    unsigned int _MinValue() const override
    {
        return 0;
    }
    unsigned int _MaxValue() const override
    {
        return std::numeric_limits<unsigned int>::max();
    }
};

/// A class of the library with its upper bound opened.
template <typename Enumeration>
struct nxWiderEnum : Enumeration
{
    using Enumeration::Enumeration;
    using Enumeration::operator=;

    unsigned int _MaxValue() const override
    {
        return 100000;
    }
};

/// A class of the library with its bounds to be read.
template <typename Enumeration>
struct nxOpenEnum : Enumeration
{
    using Enumeration::_MaxValue;
    using Enumeration::_MinValue;
};

/// A mask of the library with its rows to be read.
template <typename Mask>
struct nxOpenMask : Mask
{
    using Mask::_GetDescriptionMap;
};
