#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxEnumValue.h"

#include <limits>

/// @file
/// Enumerations as a host would write them, and any number of a class of the library, for tests.

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

template <typename Enumeration>
Enumeration Make(unsigned int number)
{
    return Enumeration(static_cast<nxEnumValue>(number));
}

/// Asks a class about all numbers inside its bounds, with and without a row, and the common rows 0 and 2.
template <typename Enumeration, typename Ask>
void ForEachNumber(Ask ask)
{
    nxOpenEnum<Enumeration> const bounds;
    ask(NX_UNDEFINED);
    ask(NX_NO_CHANGE);
    for (unsigned int number = bounds._MinValue() + 1; number < bounds._MaxValue(); ++number)
        ask(number);
}
