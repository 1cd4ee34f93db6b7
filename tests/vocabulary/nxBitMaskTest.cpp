// Masks: their two reserved states, their bits and their descriptions.

#include "core/vocabulary/nxVocabulary.h"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(sizeof(nxPriceInterestBitMask) <= 2 * sizeof(void*));
static_assert(std::has_virtual_destructor_v<nxBitMask> && std::has_virtual_destructor_v<nxBitMask64>);
static_assert(!std::is_default_constructible_v<nxBitMask> && !std::is_copy_constructible_v<nxBitMask>);
static_assert(std::is_convertible_v<unsigned int, nxPriceInterestBitMask>);
static_assert(!std::is_polymorphic_v<nxAttributeHighlightBitMask>);

namespace
{
constexpr unsigned int null32 = 0x80000000;
constexpr unsigned int noChange32 = 0x40000000;
constexpr unsigned long long null64 = 0x8000000000000000;
constexpr unsigned long long noChange64 = 0x4000000000000000;

/// Sees each addition of bits, as a host's own mask may.
struct CountingMask : nxBitMask
{
    CountingMask() = default;
    using nxBitMask::SetBits;
    void SetBits(unsigned int bits) override
    {
        ++additions;
        nxBitMask::SetBits(bits);
    }
    std::string GetClassNameA() const override
    {
        return "";
    }
    int additions = 0;
};
} // namespace

TEST(nxBitMask, BitsAreHeldAgainstTheClass)
{
    for (unsigned int const bits : {0u, 3u, 4u, 5u, noChange32, null32}) // two bits are valid
        EXPECT_EQ(nxSecurityNodeAccessBaseBitMask(bits).IsValid(), bits <= 3);
    nxSecurityNodeAccessBaseBitMask access(4u);
    access.SetBits(0x2);
    EXPECT_EQ(access.GetValue(), 0x2u); // starts again from nothing
    access |= null32;                   // is not filtered
    EXPECT_EQ(access.GetValue(), null32 | 2);

    nxExchangePriceFilterBitMask const mask(0x25);
    EXPECT_TRUE(mask.AreAllBitsSet(0x5) && mask.AreAnyBitsSet(0x6));
    EXPECT_FALSE(mask.AreAllBitsSet(0x7) || mask.AreAnyBitsSet(0xA) || mask.AreAnyBitsSet(0u));
    EXPECT_EQ(mask.GetLongDescription(""), "Block TradesNew products???");
    for (int bits = 0; bits < 8; ++bits)
    {
        nxKeyboardModifierBitMask const keys(static_cast<unsigned int>(bits));
        EXPECT_EQ(keys.IsShiftKeyDown() + 2 * keys.IsCtrlKeyDown() + 4 * keys.IsAltKeyDown(), bits);
    }
    CountingMask counting;
    counting.SetBits(0x1);
    counting |= 0x2;
    counting |= nxPriceInterestBitMask(0x4);
    counting.SetBits(nxPriceInterestBitMask(0x8));
    EXPECT_TRUE(counting.additions == 4 && counting.GetValue() == 0xF)
        << "each through the virtual operation";
}

TEST(nxGenericBitMask, IsARawBagThatShowsTheBinaryNumber)
{
    nxGenericBitMask mask(null32);
    mask.SetBits(0x1);
    mask |= nxGenericBitMask(0x2);
    EXPECT_EQ(mask.GetValue(), null32 | 3);
    nxGenericBitMask64 wide(noChange64);
    wide |= 1ull;
    wide.SetBits(nxGenericBitMask64(2));
    EXPECT_EQ(wide.GetValue(), noChange64 | 3);

    nxGenericBitMask const five(5);
    EXPECT_EQ(five.GetShortDescription(), "101");
    EXPECT_EQ(five.GetLongDescription(), "101 ( 5 )");
    EXPECT_EQ(five.GetShortDescription(","), "No Description Available");
    EXPECT_EQ(nxGenericBitMask().GetLongDescription(), " ( 0 )");
    // The wide one prints through the forms with a separator and ignores it, whatever its state.
    EXPECT_EQ(nxGenericBitMask64(5).GetShortDescription(","), "101");
    EXPECT_EQ(nxGenericBitMask64(null64).GetLongDescription("-"),
              "1" + std::string(63, '0') + " ( 9223372036854775808 )");
}

TEST(nxAttributeHighlightBitMasks, CanUseAllBitsAndUserOrderFlagsTakeNumbersAndMasks)
{
    nxUserOrderFlagsBitMask flags;
    flags = 0x1u;
    flags |= nxUserOrderFlagsBitMask(0x4);
    EXPECT_TRUE(flags == 0x5u && flags != 0x6u && flags == nxUserOrderFlagsBitMask(0x5));
    flags = nxPriceInterestBitMask(0x8);
    EXPECT_TRUE(flags != nxUserOrderFlagsBitMask(0x7) && flags == nxPriceInterestBitMask(0x8));
    EXPECT_EQ(nxOrderTransactionFlagsBitMask::GetNoChangeInstance().GetValue(), noChange32);

    nxExtendedAttributeHighlightBitMask mask(1);
    mask.SetBits(null64 | noChange64);
    mask.SetBits(2);
    EXPECT_EQ(mask.GetValue(), null64 | noChange64 | 3);
    EXPECT_TRUE(mask.IsValid() && !mask.IsNull() && mask.IsNoChange()); // the last is left as it was
    mask.SetNull();
    mask.SetNoChange();
    EXPECT_EQ(mask.GetValue(), null64 | noChange64 | 3);

    nxAttributeHighlightBitMask plain(null64);
    plain |= 1;
    plain.SetBits(noChange64);
    EXPECT_TRUE(plain == (null64 | noChange64 | 1) && plain.AreAllBitsSet(null64) && !plain.AreAnyBitsSet(6));
    plain.ClearBits(null64);
    EXPECT_TRUE(plain != null64 && plain == nxAttributeHighlightBitMask(noChange64 | 1));

    nxAttributeHighlightAndExtendedHightBitMaskPair pair; // keeps its two masks apart
    pair.SetBits(1);
    pair.SetExtendedBits(null64 | 2);
    EXPECT_TRUE(pair == nxAttributeHighlightAndExtendedHightBitMaskPair(1ull, null64 | 2));
    EXPECT_TRUE(pair.AreAllExtendedBitsSet(2) && !pair.AreAnyExtendedBitsSet(1));
    pair.ClearExtendedBits(2);
    EXPECT_TRUE(pair != nxAttributeHighlightAndExtendedHightBitMaskPair(1ull, null64 | 2));
    EXPECT_EQ(pair.GetExtendedHighlights().GetValue(), null64);
}

TEST(nxAccountNodeFlagBitMask, SetsConvertsAndMergesItsFlags)
{
    constexpr unsigned long long exchangeField = 0x8000; // and that of synthetic ones is the next bit
    nxAccountNodeFlagBitMask flags(null64);
    flags.SetGenerateExchangeStrategyPositions(false);
    EXPECT_TRUE(flags.IsNull());
    flags.SetGenerateExchangeStrategyPositions(true);
    flags.SetGenerateSyntheticStrategyPositions(true);
    flags.SetGenerateExchangeStrategyPositions(false);
    EXPECT_EQ(flags.GetValue(), 0x2u);
    for (unsigned long long bits = 0; bits < 4; ++bits)
    {
        nxAccountNodeDefinitionFieldsBitMask fields(0x7F);
        nxAccountNodeFlagBitMask(bits).ConvertToAccountNodeDefinitionFieldsBitMask(fields);
        EXPECT_EQ(fields.GetValue(), bits * exchangeField);
        nxAccountNodeFlagBitMask back(0xF0);
        fields.SetBits(0x7F); // other fields don't matter
        back.ConvertFromAccountNodeDefinitionFieldsBitMask(fields);
        EXPECT_EQ(back.GetValue(), bits);
    }
    for (unsigned int row = 0; row < 64; ++row)
    {
        unsigned long long const before = row % 4, other = row / 4 % 4, present = row / 16;
        unsigned long long const after = (before & ~present) | (other & present);
        nxAccountNodeFlagBitMask merged(before);
        merged.MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
            nxAccountNodeFlagBitMask(other | 0xF4),
            nxAccountNodeDefinitionFieldsBitMask(present * exchangeField | 0x7F));
        EXPECT_EQ(merged.GetValue(), after) << row;
    }
    flags.SetNull(); // even then bits are added, which makes it valid
    flags.MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(nxAccountNodeFlagBitMask(3),
                                                                     nxAccountNodeDefinitionFieldsBitMask(0));
    EXPECT_EQ(flags.GetValue(), 0u);
}
