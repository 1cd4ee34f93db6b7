// The vocabulary is the agreed one: which classes there are, their bounds, and their rows byte for byte.
//
// Numbers and words are shared with stored data and with every other program, so no change to a table passes unseen.
// Whoever adds a row changes its class's line here; a failure prints the line as it now would be.

#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{
struct AgreedEnumeration
{
    char const* className;
    unsigned int lowerBound;
    unsigned int upperBound;
    std::size_t rowCount;
    std::uint64_t checksum;
};

struct AgreedBitMask
{
    char const* className;
    unsigned int width;
    std::size_t rowCount;
    std::uint64_t checksum;
};

// clang-format off
constexpr AgreedEnumeration agreedEnumerations[] = {
    {"nxGenericEnum", 0, 999999, 0, 0xcbf29ce484222325},
    {"nxBoolEnum", 5000, 5003, 2, 0x9774eedfe2c5fd74},
    {"nxBuySellEnum", 10, 13, 2, 0xdafbbdff96e648d8},
    {"nxCaseSensitivityEnum", 25, 28, 2, 0xd4a9acef2064e04d},
    {"nxValueStatusEnum", 240, 244, 3, 0xafc77c30a229bb32},
    {"nxRoundingMethodEnum", 7400, 7405, 4, 0x16c88b81f37eefa4},
    {"nxErrorEnum", 1000000, 1999999, 581, 0x26ea31b84cc83f30},
    {"nxOrderTypeEnum", 1000, 1011, 10, 0x91d470e9f3ba64f5},
    {"nxTimeRestrictionEnum", 1030, 1040, 9, 0x6c1c766428de22de},
    {"nxExecutionRestrictionEnum", 1050, 1057, 6, 0xdb77b567cd36ac5c},
    {"nxOpenCloseEnum", 1060, 1064, 3, 0x2903d25f1614119a},
    {"nxOrderStatusEnum", 1100, 1111, 10, 0x85b12aae0e8df237},
    {"nxOrderTransactionStatusEnum", 1200, 1222, 21, 0x72bde8a350a5aee0},
    {"nxOrderFlagEnum", 8000, 8002, 1, 0xaca7b0f96a56c9f2},
    {"nxOrderVolumeAmendMethodEnum", 8100, 8103, 2, 0x4b84c8656cc2502c},
    {"nxOrderRoutingTypeEnum", 8300, 8304, 3, 0x598bac5e2c46f3bb},
    {"nxOrderEndOfDayTypeEnum", 15500, 15503, 2, 0xa164e9750bd7df3c},
    {"nxConditionalOrderPriceTypeEnum", 6000, 6006, 5, 0x3bdf5627d3cc95d9},
    {"nxSyntheticOrderTypeEnum", 5900, 5928, 27, 0x00cd1a0e3768b723},
    {"nxSyntheticChildOrderTypeEnum", 7000, 7012, 9, 0xd5b1de3188477db8},
    {"nxSpreadChildOrderStateEnum", 7100, 7109, 7, 0x19c0df956769d211},
    {"nxSpreadLegWorkingOrderChoiceEnum", 15600, 15603, 2, 0x0f088a1a3b8b0ea2},
    {"nxSyntheticSpreadPayupMethodEnum", 13000, 13004, 3, 0x5c91da96f05321a5},
    {"nxSpreadMachineHedgeAggressionMethodEnum", 10700, 10703, 2, 0xec5af34c92668452},
    {"nxSyntheticStrategyCalculationTypeEnum", 8800, 8807, 6, 0x86114122acacb74d},
    {"nxSyntheticStrategyLegCalculationPriceTypeEnum", 15700, 15703, 2, 0x7718ba98c3c4436b},
    {"nxSyntheticLegCalculationTypeEnum", 9700, 8804, 3, 0x717b291b2e5ad999},
    {"nxTradeTypeEnum", 2000, 2011, 10, 0x1543dbcd4efb258a},
    {"nxTradeStatusEnum", 1800, 1808, 7, 0x59a94c7af0a4bdc3},
    {"nxTradeTransactionTypeEnum", 1900, 1906, 5, 0x86075b9efdbc8bb8},
    {"nxExchangeTradeTransactionSendReasonEnum", 1950, 1955, 4, 0x32a9af3c8237ea3e},
    {"nxTradeInputSourceEnum", 10900, 10904, 3, 0xe2b9510f9d91b8a0},
    {"nxFillSourceEnum", 12500, 12503, 2, 0x9a6441539650deb1},
    {"nxAggressorIndicatorEnum", 9400, 9403, 2, 0x3d3c4012b83f1a0e},
    {"nxProfTradeOrderCapacityEnum", 10800, 10803, 2, 0x09f3e95ca6ddbb72},
    {"nxAllocationPartyTypeEnum", 10600, 10603, 2, 0xf3373e294f8912e2},
    {"nxPositionTypeEnum", 8900, 8903, 2, 0x6f14e956ed80bf2a},
    {"nxPostingCodeEnum", 2900, 2906, 5, 0x94e6df6b9589df4e},
    {"nxTradingCapacityEnum", 14400, 14404, 3, 0x90e983006c7bc960},
    {"nxClientIDQualifierEnum", 14500, 14503, 2, 0x2a1342df0745fe62},
    {"nxExecutionDecisionQualifierEnum", 14600, 14603, 2, 0x3c09049d87926e39},
    {"nxInvestmentDecisionQualifierEnum", 14700, 14703, 2, 0xdd65a934b6a4e837},
    {"nxMultiLegReportingTypeEnum", 14800, 14804, 3, 0xcf328ad2cfe08721},
    {"nxCTICodeEnum", 9000, 9005, 4, 0xb9b5278998267765},
    {"nxProductTypeEnum", 77, 87, 9, 0x97a8e6e4f5fa6ccd},
    {"nxProductCategoryEnum", 900, 904, 3, 0x49d2087cf1ee50fb},
    {"nxProductStatusEnum", 4000, 4005, 4, 0xd913d2667575e55b},
    {"nxProductIDFieldEnum", 500, 512, 11, 0x28f38bfd26102277},
    {"nxProductNamingMethodEnum", 15900, 15905, 4, 0x6907330f5c9eadf0},
    {"nxSeriesNamingMethodEnum", 16000, 16004, 3, 0x29a73bba8d75d6e4},
    {"nxProductSearchTypeEnum", 15100, 15105, 4, 0x48ba8d9cfedb61e1},
    {"nxTestProductCategoryEnum", 15400, 15404, 3, 0xd33861e65c2ff8f6},
    {"nxExchangeProductLevelEnum", 1700, 1704, 3, 0x98a1e7dbec8a5dd1},
    {"nxCallPutEnum", 20, 23, 2, 0x02a52c32713f505e},
    {"nxOptionExerciseTypeEnum", 90, 93, 2, 0xc8cb5a676c02038c},
    {"nxOptionPremiumEnum", 551, 554, 2, 0xcdab0503d63ce33e},
    {"nxSettlementTypeEnum", 1300, 1303, 2, 0xe75a3869b32d3a04},
    {"nxWarrantTypeEnum", 13300, 13309, 8, 0x4f850bd11bd7e106},
    {"nxTreasuryTypeEnum", 9300, 9304, 3, 0x3e8a2972d6346ba5},
    {"nxBondCompoundingTypeEnum", 10100, 10103, 2, 0xb988d2a22fc64956},
    {"nxBondDayConventionEnum", 9900, 9906, 5, 0xc3e85d2f033ddfc1},
    {"nxBondFrequencyEnum", 9800, 9804, 3, 0xa4cd92dcdcadfc51},
    {"nxYieldCalculationTypeEnum", 10000, 10004, 3, 0x14c7828fbb51bd92},
    {"nxStrategyTypeEnum", 5500, 5574, 73, 0x1d3b02638c74e112},
    {"nxMonthEnum", 220, 233, 12, 0xe9949625e5c4105c},
    {"nxDayOfWeekEnum", 13200, 13208, 7, 0xf5408259ade902e5},
    {"nxExchangeStateEnum", 5300, 5309, 8, 0xc61faa3dd29d8249},
    {"nxMatchingAlgorithmEnum", 12400, 12403, 2, 0x02a46559d1f34af9},
    {"nxTradingPeriodEnum", 1600, 1607, 6, 0x64f22c8a5a737660},
    {"nxTradingSessionTypeEnum", 15200, 15207, 6, 0x9466ce4e076dd6d6},
    {"nxMarketDepthUpdateTypeEnum", 800, 803, 2, 0x61e8ab86cc1e36bd},
    {"nxPriceTradeVolumesUpdateTypeEnum", 6100, 6103, 2, 0xf2d408573d0bf857},
    {"nxMarketByOrderActionTypeEnum", 14300, 14307, 6, 0x1f14d4741a2e5c02},
    {"nxImpliedPricingMethodEnum", 7800, 7807, 6, 0x62640c8c63b973f5},
    {"nxTickContinuationTypeEnum", 14000, 14004, 3, 0x3f349206d8afb45c},
    {"nxTickDataPeriodEnum", 12300, 12319, 18, 0x9e8331d39a726685},
    {"nxPriceTypeEnum", 5800, 5827, 25, 0x5dd0a8b40d1669d3},
    {"nxPriceFormatEnum", 4500, 4529, 28, 0x91e3e17ffe96e34f},
    {"nxVolumeFormatEnum", 15300, 15303, 2, 0xc442687f66cc04b1},
    {"nxPriceChangeDirectionEnum", 7300, 7304, 3, 0xa18b4682adcce3d0},
    {"nxSupplementalPriceTypeEnum", 11200, 11219, 18, 0xeec9e77630eee580},
    {"nxSupplementalPriceValueTypeEnum", 12000, 12008, 7, 0xa928c96250fb29e4},
    {"nxPointValueCalculationMethodEnum", 12200, 12205, 4, 0xac58c335daee14ca},
    {"nxOpenAveragePriceRoundingMethodEnum", 12100, 12103, 2, 0x80a520d63ed586a6},
    {"nxPricePlaybackTypeEnum", 13100, 13105, 4, 0xc27fd539a51bc2a2},
    {"nxPricePlaybackJobStatusEnum", 10200, 10204, 3, 0xd9422f368d804d1c},
    {"nxCurrencyEnum", 1400, 1450, 42, 0xc57aa2e39f8df864},
    {"nxAccountNodeTypeEnum", 2400, 2403, 2, 0xaf518ee67028ccfd},
    {"nxAccountNodeStateEnum", 2800, 2803, 2, 0x97fbbc8614884dac},
    {"nxUserNodeTypeEnum", 2500, 2503, 2, 0xb5e9772137bc919f},
    {"nxUserNodeStateEnum", 2850, 2854, 3, 0x2d2b603ad23ec116},
    {"nxDataActiveStatusEnum", 7700, 7704, 3, 0x11392cee9086463e},
    {"nxLimitCategoryEnum", 2100, 2106, 5, 0x03e38a4af6b1b009},
    {"nxLimitEnum", 2150, 2159, 8, 0xe8f9829cf7fc3fa7},
    {"nxLimitTypeEnum", 2200, 2204, 3, 0xbaaa9de0a52b0520},
    {"nxLimitActionEnum", 2600, 2605, 4, 0x1a8d118d9dea0f08},
    {"nxLimitAccountStateEnum", 2700, 2707, 6, 0x5c7f37a289027af3},
    {"nxLimitServerModeEnum", 7500, 7505, 4, 0x6c3dd40730bcf09e},
    {"nxLimitWildcardAggregationEnum", 7600, 7603, 2, 0xe051f6a1ad647595},
    {"nxLimitWildcardAggregationGUIEnum", 7650, 7654, 3, 0xa94a35b9bc497937},
    {"nxPandLDataPeriodEnum", 15000, 15008, 7, 0x7566b3ba1cd8aaa1},
    {"nxProfitAndLossCalculationPriceTypeEnum", 8400, 8410, 8, 0xa9ffe94376c5f217},
    {"nxProfitAndLossHistoryEntryTypeEnum", 9500, 9504, 3, 0x59539e9ef37ed866},
    {"nxFunctionEnum", 100000, 199999, 442, 0xf2773474d77211d8},
    {"nxApplicationTypeEnum", 400, 499, 16, 0x5adb00e5a336b667},
    {"nxApplicationStatusEnum", 200, 209, 8, 0x6cf7d3a26327227f},
    {"nxExpectedApplicationStatusEnum", 8200, 8205, 4, 0x1e49827e580b3a92},
    {"nxClientServerEnum", 70, 73, 2, 0x36f6ca3e3b06f062},
    {"nxFTStateEnum", 5700, 5703, 2, 0x89dceec54a289ab6},
    {"nxFTActionEnum", 5710, 5714, 3, 0xf49970e2006cb6bc},
    {"nxLogLevelEnum", 30, 39, 8, 0x71ce022dd1b9bd71},
    {"nxMessageTypeEnum", 50, 55, 4, 0x06f716f6f3f90f3d},
    {"nxMessageRecipientTypeEnum", 60, 67, 6, 0xb0192a1717f4837f},
    {"nxMessageChannelEnum", 300, 310, 9, 0xd1019bd64fc681b6},
    {"nxReplyHandlerTypeEnum", 13600, 13603, 2, 0x7c638326c97cdc56},
    {"nxRequestStatusEnum", 250, 254, 3, 0x0583997c9e904e21},
    {"nxInterfaceCategoryEnum", 1500, 1523, 22, 0xa9c2745756a65154},
    {"nxFieldTypeEnum", 100, 148, 46, 0xa0c72c593fe49037},
    {"nxAPIConnectionTypeEnum", 17000, 17010, 3, 0xe81e8ac11c802a89},
    {"nxDataCategoryEnum", 5600, 5605, 3, 0x5b303b9411bc130a},
    {"nxDataInterestCategoryEnum", 12800, 12810, 9, 0xb975254d22b77af7},
    {"nxLocalDataSourceEnum", 12900, 12905, 4, 0x71c284dd3fd6fd0c},
    {"nxFIXMessageTypeEnum", 5200, 5214, 13, 0x1c95a3538c98cc67},
    {"nxFIXMessageSectionEnum", 8500, 8504, 3, 0x49c72054984c22bf},
    {"nxFIXConnectionStateEnum", 8600, 8609, 8, 0xc861c99e9744c274},
    {"nxFIXProductIDMethodEnum", 10400, 10404, 3, 0xf9f96d8bd4ab798a},
    {"nxCMEMarketDataModeEnum", 3150, 3154, 3, 0x6ec266315a6a86d3},
    {"nxComparisonEnum", 13500, 13507, 6, 0xe5e2baccd1a5c015},
    {"nxOrderingEnum", 13400, 13403, 2, 0xe53c116cf224bfce},
    {"nxAddOrSubtractEnum", 13800, 13803, 2, 0xbc83c4ddd60fdd6c},
    {"nxUsingEnum", 13700, 13703, 2, 0x024254abb65a39aa},
    {"nxDatabaseStatementAggregateEnum", 13900, 13906, 5, 0xdc1bcf784e8e3bed},
    {"nxActionEnum", 12450, 12454, 3, 0xd88c3d1cea6fe31b},
    {"nxTalvexJobStatusEnum", 10300, 10305, 4, 0xe77cb113b4f93c81},
    {"nxTalvexParameterTypeEnum", 9600, 9612, 11, 0xf2108671560e3f52},
    {"nxClickTradingActionsEnum", 3000, 3039, 38, 0x364b99b6430756a9},
    {"nxGridEventEnum", 2300, 2314, 13, 0x67c74109c0bd0aff},
    {"nxGridLogCategoryEnum", 5400, 5417, 16, 0x803ce65e2da5e7fa},
    {"nxGridStripeMethodEnum", 3500, 3504, 3, 0x8d73e915f13dc9af},
    {"nxGridBrightnessTypeEnum", 14900, 14904, 3, 0xbd827f65b1e4b440},
    {"nxGridTimePrecisionEnum", 14200, 14204, 3, 0x55ff07e89efba34b},
    {"nxGridDateTimeFormatEnum", 14100, 14104, 3, 0xa557efa4e6eab47b},
    {"nxGridOptionColumGroupEnum", 9100, 9104, 3, 0x4e7df85f3fa53b0e},
    {"nxOrderTicketTypeEnum", 7900, 7907, 6, 0xd66aa4a2d7b09012},
    {"nxTradeGUIActionEnum", 5100, 5105, 4, 0x56f0741cba661f8b},
    {"nxTradeGUICashTradeActionEnum", 5150, 5153, 2, 0x7a73284a6c84d6cf},
    {"nxHoverPriceInfoTypeEnum", 8700, 8703, 2, 0x214fefc45fca1ee0},
    {"nxSpreadOrderColorIndexEnum", 9200, 9217, 16, 0x6d330247d7046a70},
    {"nxWorkpaceGroupTypeEnum", 18000, 18004, 3, 0x1f0513a617719cf8},
};

constexpr AgreedBitMask agreedBitMasks[] = {
    {"nxExchangePriceFilterBitMask", 32, 5, 0x5735d4de5086a796},
    {"nxUserOrderFlagsBitMask", 32, 32, 0x2d29b287a968aafb},
    {"nxOrderTransactionFlagsBitMask", 32, 3, 0x49a18d199e4cba52},
    {"nxConditionalOrderFlagsBitMask", 32, 3, 0xff5e2a3267c7c466},
    {"nxOrderFillSummaryFieldBitMask", 32, 8, 0xa080398913a59c90},
    {"nxOrderTransactionBroadcastBitMask", 32, 1, 0xe8be2c73cd8a88b7},
    {"nxStrategyLegFlagsBitMask", 32, 2, 0xee6af7cce667b307},
    {"nxOrderBookInterestBitMask", 32, 17, 0x2023c4e461cd1b31},
    {"nxProductStateBitMask", 32, 30, 0x11c4a1ea1ff851bb},
    {"nxSettlementPriceBitMask", 32, 8, 0x6d4986cb32365683},
    {"nxIntraDayProductDefinitionUpdateBitMask", 32, 2, 0x82e3f5a83652b13c},
    {"nxPriceInterestBitMask", 32, 9, 0xc0caaff26554e8bc},
    {"nxFixMDTradeConditionBitMask", 32, 4, 0x261a2d94855f24ca},
    {"nxFixMDQuoteConditionBitMask", 32, 3, 0x16e390d9b7498f85},
    {"nxSecurityNodeChangeBitMask", 32, 19, 0xd39de2eb539bf9a7},
    {"nxSecurityNodeAccessBaseBitMask", 32, 4, 0x905c2b911ddf28c6},
    {"nxGenericDataAccessLevelBaseBitMask", 32, 5, 0x725703e040ed928d},
    {"nxDataInterestBitMask", 32, 27, 0xe0c57a711d48531c},
    {"nxDatabaseModeBitMask", 32, 5, 0xe1d1f9dffe57af59},
    {"nxDataObjectCacheObserverBitMask", 32, 3, 0xc8bb087f303912ff},
    {"nxKeyboardModifierBitMask", 32, 3, 0xe07b6fe6bf81a654},
    {"nxHIDEventTargetFilterBitMask", 32, 4, 0x5b82b1afa4058675},
    {"nxProductTypeGUIDisplayBaseBitMask", 32, 9, 0xbecd815722a08cea},
    {"nxProductTreeSelectableNodeBaseBitMask", 32, 7, 0x6e320d3c23b03627},
    {"nxAttributeTreeDrilldownBitMask", 32, 5, 0x9b5c3f1431c2743d},
    {"nxAttributeTrendBitMask", 32, 4, 0xe151616e408f4192},
    {"nxAttributeChangeBitMask", 32, 9, 0x0c7cef08f8984686},
    {"nxProductFlagBitMask", 64, 1, 0x083ad8977a7649e2},
    {"nxAccountNodeFlagBitMask", 64, 2, 0xd8bdd13fdc199c66},
    {"nxAccountNodeDefinitionFieldsBitMask", 64, 17, 0xcd423a0d6031d474},
    {"nxUserNodeDefinitionFieldsBitMask", 64, 14, 0x226bfbc5ff807b7a},
    {"nxServerCapabilityBitMask", 64, 51, 0x5458cdc7a92282b2},
    {"nxExtendedAttributeHighlightBitMask", 64, 0, 0xcbf29ce484222325},
};
// clang-format on

/// FNV-1a over the rows in ascending order, each as number, token and text with tabs between them and a line end.
class Checksum
{
public:
    void Add(unsigned long long number, char const* token, char const* text)
    {
        _lines.push_back({number, std::to_string(number) + '\t' + token + '\t' + text + '\n'});
    }

    std::uint64_t Get()
    {
        std::ranges::sort(_lines);
        std::uint64_t sum = 0xcbf29ce484222325;
        for (auto const& [number, line] : _lines)
            for (char const byte : line)
                sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
        return sum;
    }

private:
    std::vector<std::pair<unsigned long long, std::string>> _lines;
};

AgreedEnumeration Actual(nxVocabularyCatalogue::Enumeration const& enumeration)
{
    Checksum checksum;
    for (nxEnumRow const& row : enumeration.rows)
        checksum.Add(row.number, row.token, row.text);
    return {enumeration.className, enumeration.lowerBound, enumeration.upperBound, enumeration.rows.size(),
            checksum.Get()};
}

AgreedBitMask Actual(nxVocabularyCatalogue::BitMask const& mask)
{
    Checksum checksum;
    for (nxBitMaskRow const& row : mask.rows)
        checksum.Add(row.bits, row.token, row.text);
    return {mask.className, mask.width, mask.rows.size(), checksum.Get()};
}

std::string Hexadecimal(std::uint64_t number)
{
    std::ostringstream text;
    text << "0x" << std::hex << std::setfill('0') << std::setw(16) << number;
    return text.str();
}

/// A line as it stands above.
std::string Line(AgreedEnumeration const& row)
{
    std::ostringstream line;
    line << "{\"" << row.className << "\", " << row.lowerBound << ", " << row.upperBound << ", "
         << row.rowCount << ", " << Hexadecimal(row.checksum) << "},";
    return line.str();
}

std::string Line(AgreedBitMask const& row)
{
    std::ostringstream line;
    line << "{\"" << row.className << "\", " << row.width << ", " << row.rowCount << ", "
         << Hexadecimal(row.checksum) << "},";
    return line.str();
}

/// Names the lines that only one side has, rather than printing all of both.
template <typename Agreed, typename Classes>
void ExpectAgreement(Agreed const& agreed, Classes const& classes)
{
    std::set<std::string> missing;
    for (auto const& row : agreed)
        missing.insert(Line(row));
    for (auto const& actual : classes)
    {
        std::string const line = Line(Actual(actual));
        if (missing.erase(line) == 0)
            ADD_FAILURE() << "is so, but not agreed: " << line;
    }
    for (std::string const& line : missing)
        ADD_FAILURE() << "agreed, but not so: " << line;
}
} // namespace

TEST(VocabularyAgreement, Enumerations)
{
    ExpectAgreement(agreedEnumerations, nxVocabularyCatalogue::GetEnumerations());
}

TEST(VocabularyAgreement, BitMasks)
{
    ExpectAgreement(agreedBitMasks, nxVocabularyCatalogue::GetBitMasks());
}

TEST(VocabularyAgreement, NothingIsMissing)
{
    std::size_t enumerationRows = 0;
    for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
        enumerationRows += enumeration.rows.size();
    // With the three rows common to all classes: 1,992, and the four of the packaged strategies.
    EXPECT_EQ(enumerationRows + 3, 1992u + 4u);
    EXPECT_EQ(nxVocabularyCatalogue::GetEnumerations().size(), 149u);

    std::size_t maskRows = 0;
    for (auto const& mask : nxVocabularyCatalogue::GetBitMasks())
        maskRows += mask.rows.size();
    EXPECT_EQ(maskRows, 316u);
}
