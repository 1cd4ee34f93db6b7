#pragma once

#include "core/vocabulary/nxEnum.h"

#include <limits>

/// @file
/// An enumeration as a host would write one, for tests.

/// Accepts every number but the largest, and shows what the base keeps for its classes.
class nxAnyEnum : public nxEnum
{
public:
    nxAnyEnum() = default;
    explicit nxAnyEnum(unsigned int value)
    {
        _value = value;
    }

    std::string GetClassNameA() override
    {
        return "nxAnyEnum";
    }

    using nxEnum::operator=;
    using nxEnum::_Register;
    using nxEnum::_Set;

protected:
    unsigned int _MinValue() const override
    {
        return 0;
    }
    unsigned int _MaxValue() const override
    {
        return std::numeric_limits<unsigned int>::max();
    }
};

/// A class of the library with its bounds opened.
template <typename Enumeration>
class nxWiderEnum : public Enumeration
{
public:
    using Enumeration::Enumeration;
    using Enumeration::operator=;

protected:
    unsigned int _MinValue() const override
    {
        return 0;
    }
    unsigned int _MaxValue() const override
    {
        return 100000;
    }
};

/// A class of the library with its bounds to be read.
template <typename Enumeration>
class nxOpenEnum : public Enumeration
{
public:
    using Enumeration::_MaxValue;
    using Enumeration::_MinValue;
};
