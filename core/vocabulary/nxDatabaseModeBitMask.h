#pragma once

#include "core/vocabulary/nxBitMask.h"

/// How a database works: threaded, without mutexes, on shared data structures. The rows of no bit and of
/// two bits are for readers of the registry and never print.
class NX_CORE_API nxDatabaseModeBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxDatabaseModeBitMask)
};
