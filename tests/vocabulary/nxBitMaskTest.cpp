// Masks: their two reserved states, their bits and their descriptions.

#include "core/vocabulary/nxVocabulary.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <type_traits>

static_assert(sizeof(nxPriceInterestBitMask) <= 2 * sizeof(void*));
static_assert(std::has_virtual_destructor_v<nxBitMask> && std::has_virtual_destructor_v<nxBitMask64>);
static_assert(!std::is_default_constructible_v<nxBitMask> && !std::is_copy_constructible_v<nxBitMask>);
static_assert(std::is_convertible_v<unsigned int, nxPriceInterestBitMask>);
static_assert(std::is_same_v<decltype(nxProductFlagBitMask().GetValue()), unsigned long long>);
static_assert(!std::is_polymorphic_v<nxAttributeHighlightBitMask>);

namespace
{
constexpr unsigned int null32 = 0x80000000;
constexpr unsigned int noChange32 = 0x40000000;
constexpr unsigned long long null64 = 0x8000000000000000;
constexpr unsigned long long noChange64 = 0x4000000000000000;

/// Sees each addition of bits, as a host's own mask may.
class CountingMask : public nxBitMask
{
public:
    CountingMask() = default;
    using nxBitMask::SetBits;
    void SetBits(unsigned int bits) override
    {
        ++additions;
        nxBitMask::SetBits(bits);
    }
    std::string GetClassNameA() const override
    {
        return "CountingMask";
    }
    int additions = 0;
};

template <typename Mask, typename Number>
void ExpectReservedStates(Number nullBit, Number noChangeBit)
{
    Mask mask;
    EXPECT_TRUE(mask.IsValid() && !mask.IsNull() && !mask.IsNoChange() && mask == Number{0});
    mask.SetValue(5);
    mask.SetNull();
    EXPECT_TRUE(mask == nullBit && mask.IsNull() && !mask.IsNoChange() && !mask.IsValid());
    mask.SetNoChange();
    EXPECT_TRUE(mask == noChangeBit && mask.IsNoChange() && !mask.IsNull() && !mask.IsValid());
    EXPECT_EQ(mask.GetShortDescription(","), "No Change");

    Mask both(nullBit | noChangeBit);
    EXPECT_TRUE(both.IsNull() && both.IsNoChange() && !both.IsValid());
    EXPECT_EQ(both.GetLongDescription(","), "Null");

    // Adding to a state that is not valid starts from 0, taking away leaves the state.
    mask.SetBits(1);
    EXPECT_TRUE(mask == Number{1});
    both |= Mask(2);
    EXPECT_TRUE(both == Number{2});
    mask.SetNull();
    mask.ClearBits(1);
    EXPECT_TRUE(mask.IsNull());
    mask.ClearBits(Mask(nullBit));
    EXPECT_TRUE(mask == Number{0});

    // The bits that are added are not filtered.
    mask = Number{1};
    mask |= nullBit;
    EXPECT_TRUE(mask == (nullBit | 1));
    mask.Clear();
    EXPECT_TRUE(mask.IsValid());
}
} // namespace

TEST(nxBitMaskStates, LieInTheTwoTopBits)
{
    ExpectReservedStates<nxPriceInterestBitMask>(null32, noChange32);
    ExpectReservedStates<nxProductFlagBitMask>(null64, noChange64);
}

TEST(nxBitMaskBits, AreAskedForAllOrAny)
{
    nxPriceInterestBitMask const mask(0x5);
    EXPECT_TRUE(mask.AreAllBitsSet(0x5) && mask.AreAllBitsSet(0x4) && mask.AreAllBitsSet(0u));
    EXPECT_FALSE(mask.AreAllBitsSet(0x7) || mask.AreAllBitsSet(nxPriceInterestBitMask(0x2)));
    EXPECT_TRUE(mask.AreAnyBitsSet(0x6) && mask.AreAnyBitsSet(nxPriceInterestBitMask(0x1)));
    EXPECT_FALSE(mask.AreAnyBitsSet(0xA) || mask.AreAnyBitsSet(0u));
    EXPECT_TRUE(mask == 0x5u && mask != 0x4u && mask == nxOrderBookInterestBitMask(0x5));
}

TEST(nxBitMaskBits, AreAddedThroughTheVirtualOperation)
{
    CountingMask mask;
    mask.SetBits(0x1);
    mask |= 0x2;
    mask |= nxPriceInterestBitMask(0x4);
    mask.SetBits(nxPriceInterestBitMask(0x8));
    EXPECT_EQ(mask.additions, 4);
    EXPECT_EQ(mask.GetValue(), 0xFu);
    mask.SetNull();
    mask |= nxPriceInterestBitMask(0x1);
    EXPECT_EQ(mask.GetValue(), 1u);
}

TEST(nxBitMaskDescription, GoesFromTheLowestBitUpward)
{
    using Row = std::tuple<unsigned int, char const*, char const*, char const*>;
    for (auto const& [bits, separator, shortForm, longForm] :
         {Row{0x0, ",", "", ""}, Row{0x5, ",", "BLOCK_TRADES,NEW_PRODUCTS", "Block Trades,New products"},
          Row{0x25, ",", "BLOCK_TRADES,NEW_PRODUCTS,???", "Block Trades,New products,???"},
          Row{0x20000001, " | ", "BLOCK_TRADES | ???", "Block Trades | ???"},
          Row{0x12, "", "IMPLIEDSPREV_SETTLEMENTS", "ImpliedsPrev Settlements"},
          Row{null32 | 0x1, ",", "Null", "Null"}, Row{noChange32 | 0x1, ",", "No Change", "No Change"}})
    {
        nxExchangePriceFilterBitMask const mask(bits);
        EXPECT_EQ(mask.GetShortDescription(separator), shortForm);
        EXPECT_EQ(mask.GetLongDescription(separator), longForm);
    }
    // Rows of no bit or of several are for readers of the registry, and never printed.
    EXPECT_EQ(nxGenericDataAccessLevelBaseBitMask(0x3).GetShortDescription("+"), "Read+Write");
    EXPECT_EQ(nxSecurityNodeAccessBaseBitMask(0x3).GetShortDescription(","), "Read,Write");
    EXPECT_EQ(nxSecurityNodeChangeBitMask(0u).GetShortDescription(","), "");
    EXPECT_EQ(nxServerCapabilityBitMask(0x2000000000000000).GetShortDescription(","), "???");
}

TEST(nxGenericBitMask, IsARawBagThatShowsTheBinaryNumber)
{
    nxGenericBitMask mask(null32);
    mask.SetBits(0x1);
    EXPECT_EQ(mask.GetValue(), null32 | 1);
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
    EXPECT_EQ(nxGenericBitMask().GetShortDescription(), "");
    EXPECT_EQ(nxGenericBitMask().GetLongDescription(), " ( 0 )");
    EXPECT_EQ(nxGenericBitMask(0xFFFFFFFF).GetShortDescription(), std::string(32, '1'));

    // The wide one prints through the forms with a separator and ignores it, whatever its state.
    EXPECT_EQ(nxGenericBitMask64(5).GetShortDescription(","), "101");
    EXPECT_EQ(nxGenericBitMask64(null64).GetLongDescription("-"),
              "1" + std::string(63, '0') + " ( 9223372036854775808 )");
    EXPECT_EQ(nxGenericBitMask64().GetLongDescription(","), " ( 0 )");
}

TEST(nxAttributeHighlightBitMasks, CanUseAllBits)
{
    nxExtendedAttributeHighlightBitMask mask(1);
    mask.SetBits(null64 | noChange64);
    mask.SetBits(2);
    EXPECT_EQ(mask.GetValue(), null64 | noChange64 | 3);
    EXPECT_TRUE(mask.IsValid() && !mask.IsNull() && mask.IsNoChange()); // the last is left as it was
    EXPECT_EQ(mask.GetShortDescription(","), "No Change");
    mask.SetNull();
    mask.SetNoChange();
    EXPECT_EQ(mask.GetValue(), null64 | noChange64 | 3);
    EXPECT_EQ(nxExtendedAttributeHighlightBitMask(null64).GetShortDescription(","),
              "No Description Available");
    EXPECT_EQ(nxExtendedAttributeHighlightBitMask().GetLongDescription(","), "No Description Available");

    nxAttributeHighlightBitMask plain(null64);
    plain |= 1;
    plain.SetBits(noChange64);
    EXPECT_TRUE(plain == (null64 | noChange64 | 1) && plain.AreAllBitsSet(null64) && !plain.AreAnyBitsSet(6));
    plain.ClearBits(null64);
    EXPECT_TRUE(plain != null64 && plain == nxAttributeHighlightBitMask(noChange64 | 1));
    plain.Clear();
    EXPECT_EQ(plain.GetValue(), 0u);
}

TEST(nxAttributeHighlightPair, KeepsItsTwoMasksApart)
{
    nxAttributeHighlightAndExtendedHightBitMaskPair pair;
    pair.SetBits(1);
    pair.SetExtendedBits(null64 | 2);
    EXPECT_EQ(pair.GetHighlights().GetValue(), 1u);
    EXPECT_EQ(pair.GetExtendedHighlights().GetValue(), null64 | 2);
    EXPECT_TRUE(pair.AreAllExtendedBitsSet(2) && !pair.AreAnyExtendedBitsSet(1));

    nxAttributeHighlightAndExtendedHightBitMaskPair const same(1ull, null64 | 2);
    EXPECT_TRUE(pair == same);
    pair.ClearExtendedBits(2);
    EXPECT_TRUE(pair != same);
    pair.Clear();
    EXPECT_TRUE(pair == nxAttributeHighlightAndExtendedHightBitMaskPair());
    EXPECT_EQ(pair.GetClassNameA(), "nxAttributeHighlightAndExtendedHightBitMaskPair");
}

TEST(nxUserOrderFlagsBitMaskOperators, TakeNumbersAndMasks)
{
    nxUserOrderFlagsBitMask flags;
    flags = 0x1u;
    flags |= 0x2u;
    flags |= nxUserOrderFlagsBitMask(0x4);
    EXPECT_TRUE(flags == 0x7u && flags != 0x6u && flags == nxUserOrderFlagsBitMask(0x7));
    flags = nxPriceInterestBitMask(0x8);
    EXPECT_TRUE(flags != nxUserOrderFlagsBitMask(0x7) && flags == nxPriceInterestBitMask(0x8));
    flags.SetNull();
    flags |= 0x20000000u;
    EXPECT_EQ(flags.GetShortDescription(","), "NX_USER_ORDER_FLAG_30");
    flags.SetNull();
    EXPECT_EQ(flags.GetShortDescription(","), "Null"); // not the row that the bit has
    EXPECT_EQ(nxOrderTransactionFlagsBitMask::GetNoChangeInstance().GetValue(), noChange32);
}

TEST(nxSecurityNodeAccessBaseBitMaskValidity, EndsAtThree)
{
    for (unsigned int const bits : {0u, 1u, 2u, 3u})
        EXPECT_TRUE(nxSecurityNodeAccessBaseBitMask(bits).IsValid());
    for (unsigned int const bits : {4u, 5u, noChange32, null32})
    {
        nxSecurityNodeAccessBaseBitMask access(bits);
        EXPECT_FALSE(access.IsValid());
        access.SetBits(0x2);
        EXPECT_EQ(access.GetValue(), 0x2u); // starts again from nothing
    }
    EXPECT_EQ(nxSecurityNodeAccessBaseBitMask(0x4).GetShortDescription(","), "???");
}
