#pragma once

#include "core/vocabulary/nxBitMask.h"

/// How an observer of a cache of data objects is told of changes.
class NX_CORE_API nxDataObjectCacheObserverBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxDataObjectCacheObserverBitMask)
};
