#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxPriceFormatEnum.h"

#include <string>

class nxPriceConverter;

/// @file
/// The price converter of each price format.

/// Makes converters, and turns prices into texts for callers that keep none.
///
/// The texts come from one shared converter for each format, which lives until the process is gone and keeps what was
/// last set on it, between calls and between callers: so a decimal format without a tick shows the places of the last
/// tick that anybody gave it, and none before the first. Every failure is the answer false, with `text` as it was.
///
/// `useLock` takes the one mutex that protects the shared converters. Without it two threads must not use the same
/// format at the same time.
class NX_CORE_API nxPriceConverterHelper
{
public:
    nxPriceConverterHelper() = delete;

    /// @return a new converter, which the caller deletes; null for a format that is none of the registered ones.
    static nxPriceConverter* CreatePriceConverter(nxPriceFormatEnum const& format);

    /// The text of a price that no tick is held against.
    /// @return false for an unknown format, or for a price that is null or no change.
    static bool GetPriceAsString(nxDoubleValueWrapper const& price, nxPriceFormatEnum const& format,
                                 std::string& text, bool useLock);

    /// @param tick      left behind on the format's shared converter, even when the price is refused; the fraction
    ///                  formats have their own and ignore it.
    /// @param validate  true refuses a price that is off the tick.
    /// @return false as above, and for a tick that a decimal format refuses.
    static bool GetPriceAsString(nxDoubleValueWrapper const& price, nxDecimal const& tick,
                                 nxPriceFormatEnum const& format, std::string& text, bool useLock,
                                 bool validate);

private:
    static nxPriceConverter* _GetPriceConverter(nxPriceFormatEnum const& format);
};
