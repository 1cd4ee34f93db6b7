#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Which kinds of price a price gateway leaves out.
class NX_CORE_API nxExchangePriceFilterBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxExchangePriceFilterBitMask)

    /// Adds the bits that a configuration value names: tokens as in the table, in capitals, parted by commas, with
    /// blanks around them. Bits that are set already stay. Logs each bit at Info, and each word that is no token at
    /// Error; the others count all the same.
    ///
    /// @param envKey  the name of the environment variable, read through nxCmdLineArgs. Without a value nothing
    ///                happens.
    void ReadFromEnvValue(std::string const& envKey);

private:
    /// @return 0 for what is no token.
    unsigned int _GetBitmaskValueForFlag(std::string const& flag) const;
};
