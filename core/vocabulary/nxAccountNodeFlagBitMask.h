#pragma once

#include "core/vocabulary/nxAccountNodeDefinitionFieldsBitMask.h"
#include "core/vocabulary/nxBitMask64.h"

/// The positions that are made up for an account beside those that it trades.
class NX_CORE_API nxAccountNodeFlagBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxAccountNodeFlagBitMask)

    bool GetGenerateExchangeStrategyPositions() const;
    bool GetGenerateSyntheticStrategyPositions() const;

    /// Setting a flag of a mask that is null or "no change" starts it from 0; taking a flag away leaves these
    /// states.
    void SetGenerateExchangeStrategyPositions(bool generate);
    void SetGenerateSyntheticStrategyPositions(bool generate);

    /// Replaces `fields` by the field of each flag that is set.
    void ConvertToAccountNodeDefinitionFieldsBitMask(nxAccountNodeDefinitionFieldsBitMask& fields) const;

    /// Replaces this mask by the flag of each of the two fields that are set.
    void ConvertFromAccountNodeDefinitionFieldsBitMask(nxAccountNodeDefinitionFieldsBitMask const& fields);

    /// Takes over those flags whose field is present and keeps the others. A mask that is null or "no change"
    /// starts from 0, even when nothing is present.
    void MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
        nxAccountNodeFlagBitMask const& other, nxAccountNodeDefinitionFieldsBitMask const& presence);
};
