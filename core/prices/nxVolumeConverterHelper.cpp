#include "core/prices/nxVolumeConverterHelper.h"

#include "core/prices/nxVolumeConverter_Abbreviated.h"
#include "core/prices/nxVolumeConverter_Abbreviated_1DP.h"
#include "core/prices/nxVolumeConverter_Raw.h"
#include "core/vocabulary/nxEnumValue.h"

bool nxVolumeConverterHelper::GetFormattedDisplayVolume(nxVolumeConverter::LongVolume const& volume,
                                                        nxVolumeFormatEnum const& format, std::string& text)
{
    _GetVolumeConverter(format)->GetFormattedDisplayVolume(volume, text);
    return true;
}

bool nxVolumeConverterHelper::GetFormattedDisplayVolume(nxVolume const& volume,
                                                        nxVolumeFormatEnum const& format, std::string& text)
{
    _GetVolumeConverter(format)->GetFormattedDisplayVolume(volume, text);
    return true;
}

nxVolumeConverter* nxVolumeConverterHelper::CreateVolumeConverter(nxVolumeFormatEnum const& format)
{
    return _GetVolumeConverter(format)->Clone();
}

// The shared converters are never destroyed: a thread may still show volumes while the process exits.
nxVolumeConverter const* nxVolumeConverterHelper::_GetVolumeConverter(nxVolumeFormatEnum const& format)
{
    static nxVolumeConverter const* const raw = new nxVolumeConverter_Raw;
    static nxVolumeConverter const* const abbreviated = new nxVolumeConverter_Abbreviated;
    static nxVolumeConverter const* const abbreviated1DP = new nxVolumeConverter_Abbreviated_1DP;
    switch (format.GetEnumValue())
    {
    case NX_VOLUME_FORMAT_ABBREVIATED: return abbreviated;
    case NX_VOLUME_FORMAT_ABBREVIATED_1DP: return abbreviated1DP;
    default: return raw;
    }
}

// Built at load: a child of fork() could not wait for another thread to finish them.
[[maybe_unused]] static bool const areBuiltAtLoad = []
{
    std::string text;
    return nxVolumeConverterHelper::GetFormattedDisplayVolume(nxVolume(), nxVolumeFormatEnum(), text);
}();
