#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// The further highlights of a screen attribute. It gives the two reserved states up, so that all 64 bits are usable:
/// it is always valid, never null, and can't be set to null or "no change". IsNoChange() alone still tests its bit.
class NX_CORE_API nxExtendedAttributeHighlightBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxExtendedAttributeHighlightBitMask)

    bool IsValid() const override;
    bool IsNull() const override;

    /// Neither does anything.
    void SetNull() override;
    void SetNoChange() override;
};
