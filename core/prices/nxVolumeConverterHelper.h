#pragma once

#include "core/platform/nxExport.h"
#include "core/prices/nxVolumeConverter.h"
#include "core/vocabulary/nxVolumeFormatEnum.h"

#include <string>

/// @file
/// The volume converter of each volume format.

/// Makes converters, and formats volumes for callers that keep none. A format that is none of the registered ones has
/// the converter for plain digits. Any thread may call every operation.
class NX_CORE_API nxVolumeConverterHelper
{
public:
    /// Replaces `text`; by nothing for a volume that is null or no change.
    /// @return true.
    static bool GetFormattedDisplayVolume(nxVolumeConverter::LongVolume const& volume,
                                          nxVolumeFormatEnum const& format, std::string& text);
    static bool GetFormattedDisplayVolume(nxVolume const& volume, nxVolumeFormatEnum const& format,
                                          std::string& text);

    /// @return a new converter, which the caller deletes.
    static nxVolumeConverter* CreateVolumeConverter(nxVolumeFormatEnum const& format);

private:
    nxVolumeConverterHelper() = delete;

    static nxVolumeConverter const* _GetVolumeConverter(nxVolumeFormatEnum const& format);
};
