#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The states that a product's market is in; several can hold at once.
class NX_CORE_API nxProductStateBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxProductStateBitMask)

    /// True in an auction: pre-open, pre-closed or the closing auction.
    bool IsAuction() const
    {
        return AreAnyBitsSet(_auctionBits);
    }

    /// True in an auction or when open.
    bool IsMarketOpenForAuctionMode() const
    {
        return AreAnyBitsSet(_auctionBits | _open);
    }

    /// True when open, unless an auction has begun that ends the day.
    bool IsMarketOpenForTrading() const
    {
        return AreAllBitsSet(_open) && !AreAnyBitsSet(_preClosed | _closeAuction);
    }

    /// True when pre-open or open, so that orders can be entered.
    bool IsMarketOpenForOrderManagement() const
    {
        return AreAnyBitsSet(_preOpen | _open);
    }

    /// The same as IsMarketOpenForOrderManagement().
    bool IsMarketOpen() const
    {
        return IsMarketOpenForOrderManagement();
    }

    /// The state that an exchange's word for it stands for; several words may mean the same: "OPEN",
    /// "NORMAL".
    /// @param word  in letters of either case
    /// @param state  replaced as a whole
    /// @return false for an unknown word, which leaves `state` as it was.
    static bool GetStateBitMaskValueForTokenString(std::string const& word, nxProductStateBitMask& state);

private:
    static constexpr unsigned int _preOpen = 0x1;
    static constexpr unsigned int _open = 0x2;
    static constexpr unsigned int _preClosed = 0x4;
    static constexpr unsigned int _closeAuction = 0x800000;
    static constexpr unsigned int _auctionBits = _preOpen | _preClosed | _closeAuction;
};
