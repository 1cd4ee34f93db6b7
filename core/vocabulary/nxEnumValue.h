#pragma once

/// @file
/// The one type of all enumerators.

/// Every value of every enumeration of the platform. A number means the same thing in every program, in every log
/// line and on every wire, so numbers are never changed or used again. Any `unsigned int` may be held, with or
/// without an enumerator.
enum nxEnumValue : unsigned int
{
    // Common to all classes.
    NX_UNDEFINED = 0,
    NX_NOT_REGISTERED = 1,
    NX_NO_CHANGE = 2,

#define NX_ENUM_BEGIN(Class)
#define NX_ROW(number, token, text) token = number,
#define NX_WORD(number, token, text) NX_##token = number,
#define NX_TEXT(number, enumerator, token, text) enumerator = number,
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"
};
