#include "core/vocabulary/nxExchangePriceFilterBitMask.h"

#include "core/logging/nxLogSite.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/text/nxStringHelper.h"
#include "core/text/nxStringParser.h"

#include <deque>
#include <set>

void nxExchangePriceFilterBitMask::ReadFromEnvValue(std::string const& envKey)
{
    std::deque<std::string> pieces;
    nxStringParser::ExtractAllSubstrings(nxCmdLineArgs::GetInstance().GetEnvValue(envKey), pieces, false,
                                         ',');

    std::set<std::string> flags; // sorted, and each once
    for (std::string& piece : pieces)
    {
        nxStringHelper::LeftTrim(piece);
        nxStringHelper::RightTrim(piece);
        flags.insert(piece);
    }
    for (std::string const& flag : flags)
    {
        unsigned int const bit = _GetBitmaskValueForFlag(flag);
        if (bit == 0)
        {
            NX_LOG(NX_ERR, "Detected invalid price filter bitmask: " << flag);
            continue;
        }
        SetBits(bit);
        NX_LOG(NX_INF, "Setting price filter bitmask bit: " << flag);
    }
}

unsigned int nxExchangePriceFilterBitMask::_GetBitmaskValueForFlag(std::string const& flag) const
{
    auto const& rowsOfClasses = _GetDescriptionMap();
    auto const rows = rowsOfClasses.find(GetClassNameA());
    if (rows == rowsOfClasses.end())
        return 0;
    for (auto const& [bits, words] : rows->second)
        if (words.first == flag)
            return bits;
    return 0;
}
