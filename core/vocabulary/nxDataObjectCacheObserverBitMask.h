#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Data object cache observer.
class NX_CORE_API nxDataObjectCacheObserverBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxDataObjectCacheObserverBitMask)
};
