#include "core/vocabulary/nxAttributeHighlightAndExtendedHightBitMaskPair.h"

std::string nxAttributeHighlightAndExtendedHightBitMaskPair::GetClassNameA() const
{
    return "nxAttributeHighlightAndExtendedHightBitMaskPair";
}
