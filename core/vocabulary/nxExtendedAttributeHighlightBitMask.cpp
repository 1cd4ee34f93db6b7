#include "core/vocabulary/nxExtendedAttributeHighlightBitMask.h"

bool nxExtendedAttributeHighlightBitMask::IsValid() const
{
    return true;
}

bool nxExtendedAttributeHighlightBitMask::IsNull() const
{
    return false;
}

void nxExtendedAttributeHighlightBitMask::SetNull()
{
}

void nxExtendedAttributeHighlightBitMask::SetNoChange()
{
}
