#include "core/prices/nxVolumeConverter.h"

nxVolumeConverter::~nxVolumeConverter() = default;

bool nxVolumeConverter::_IsControlOrBeyondASCII(int character)
{
    return character < ' ' || character > 127; // 127 itself is left to the format
}
