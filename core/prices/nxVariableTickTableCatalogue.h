#pragma once

#include "core/prices/nxVariableTickTable.h"

/// @file
/// The classes of the catalogue's ladders: `nxVariableTickTable` and the ladder's name, as in
/// `nxVariableTickTableCHIX_EUZ1`. Each has a default constructor that adds its ranges, and nothing else.
///
/// A host that wants the one shared table of a name asks nxVariableTickTableContainer.

#define NX_LADDER_BEGIN(name)                                                                                \
    class NX_CORE_API nxVariableTickTable##name : public nxVariableTickTable                                 \
    {                                                                                                        \
    public:                                                                                                  \
        nxVariableTickTable##name();                                                                         \
    };
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
