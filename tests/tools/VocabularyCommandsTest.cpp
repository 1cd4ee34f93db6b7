// What `nxcore describe`, `list` and `mask` show, and how they end.

#include "tests/tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <string>

namespace
{
using Json = nlohmann::json;

struct Case
{
    char const* arguments;
    int status;
    char const* output; // a part of it
    char const* error;  // a part of it; empty when nothing is to be said there
};

template <std::size_t count>
void ExpectRuns(Case const (&cases)[count])
{
    for (Case const& row : cases)
    {
        SCOPED_TRACE(row.arguments);
        ToolRun const run = RunTool(row.arguments);
        EXPECT_EQ(run.status, row.status) << run.error;
        EXPECT_NE(run.output.find(row.output), std::string::npos) << run.output;
        EXPECT_NE(run.error.find(row.error), std::string::npos) << run.error;
        EXPECT_EQ(run.error.empty(), *row.error == '\0') << run.error;
    }
}

/// The document of a run, which has to end with the status.
Json Document(std::string const& arguments, int status = 0)
{
    ToolRun const run = RunTool(arguments + " -json");
    EXPECT_EQ(run.status, status) << run.error;
    return Json::parse(run.output);
}
} // namespace

TEST(DescribeCommand, FindsNumbersWordsAndParts)
{
    static constexpr Case cases[] = {
        {"describe 1103", 0, "NX_ORDER_CONFIRMED", ""},
        {"describe ORDER_CONFIRMED", 0, "working              yes", ""},
        {"describe ORDER_DELETED", 0, "working              no", ""},
        {"describe NX_TRUE", 0, "nxBoolEnum", ""}, // by enumerator
        {"describe order_held", 0, "number               1102", ""},
        {"describe trail_stop", 0, "NX_EXEC_RESTRICTION_TRAIL_STOP", ""},
        {"describe tstp", 0, "NX_EXEC_RESTRICTION_TRAIL_STOP", ""}, // only a text has it
        {"describe MBO_GATEWAY", 0, "short code           MBO", ""},
        {"describe 1000213", 0, "timeout     yes", ""},
        {"describe 1001000", 0, "security    yes", ""},
        {"describe 9701", 0, "nxSyntheticLegCalculationTypeEnum", ""}, // outside the bounds of its own class
        {"describe 0", 0, "UNDEFINED", ""},
        {"describe KEYPAD_GRID", 0, "bits   0x1", ""},
        {"describe 14102", 0, "NX_GRID_DATE_TIME_FORMAT_DATE_AND_TIME\\x09", ""},
    };
    ExpectRuns(cases);
}

TEST(DescribeCommand, SaysWhatItDoesNotFind)
{
    static constexpr Case cases[] = {
        {"describe 139", 1, "", "139: inside the bounds of nxFieldTypeEnum, but without a row"},
        {"describe 5", 1, "", "5: no class has this number"},
        {"describe 99999999999999", 1, "", "no class has this number"},
        {"describe ORDER_CONFRMED", 1, "", "did you mean ORDER_CONFIRMED?"},
        {"describe qqqqqqqqqq", 1, "", "qqqqqqqqqq: no such word"},
        {"describe ''", 1, "", "no such word"},
        {"describe nxErrorEnum", 1, "", "a class, nxcore list shows its rows"},
        {"describe 5 BUY", 1, "nxBuySellEnum", "5: no class"}, // the sound part is shown
        {"describe", 2, "", "too few arguments"},
    };
    ExpectRuns(cases);
}

TEST(DescribeCommand, GivesADocument)
{
    Json const document = Document("describe 100201 nothing_like_this KEYPAD_GRID", 1);
    ASSERT_EQ(document["words"].size(), 2u);
    Json const& function = document["words"][0];
    EXPECT_EQ(function["class"], "nxFunctionEnum");
    EXPECT_EQ(function["number"], 100201);
    EXPECT_EQ(function["text"], "Submit order");
    EXPECT_EQ(function["enumerator"], "NX_FUNCTION_SUBMIT_ORDER");
    EXPECT_EQ(function["grantedToSuperUsers"], true);
    EXPECT_EQ(function["requiresReceipt"], false);
    EXPECT_EQ(function["subjectName"], "SUBMIT_ORDER");
    EXPECT_EQ(document["words"][1]["bits"], 1);
    EXPECT_EQ(document["problems"][0]["column"], "nothing_like_this");

    // What the text shows as an escape is the byte itself here.
    EXPECT_EQ(Document("describe 14102")["words"][0]["token"], "NX_GRID_DATE_TIME_FORMAT_DATE_AND_TIME\t");
}

TEST(ListCommand, ShowsClassesRowsAndSearches)
{
    static constexpr Case cases[] = {
        {"list", 0, "nxErrorEnum                                     1000000  1999999   581", ""},
        {"list", 0, "33 bit masks, 316 rows", ""},
        {"list nxopencloseenum", 0, "  1063  NX_CLOSE_TODAY  Cls Today", ""},
        {"list nxDatabaseModeBitMask", 0, " 0x6  THREADED_UNMUTEXED  threaded, not mutex locked", ""},
        {"list -search 'cls tod'", 0, "nxOpenCloseEnum    1063  NX_CLOSE_TODAY", ""},
        {"list nxBuySellEnum -search close", 1, "", "close: no row holds this text"},
        {"list nxOpenClosedEnum", 2, "", "did you mean nxOpenCloseEnum?"},
        {"list one two", 2, "", "unexpected argument two"},
    };
    ExpectRuns(cases);
}

TEST(ListCommand, GivesADocument)
{
    Json const all = Document("list");
    std::size_t rows = 0;
    for (Json const& enumeration : all["enumerations"])
        rows += enumeration["rows"].get<std::size_t>();
    EXPECT_EQ(rows, 1993u);
    EXPECT_EQ(all["bitMasks"].size(), 33u);

    Json const one = Document("list nxBuySellEnum");
    EXPECT_EQ(one["lowerBound"], 10);
    EXPECT_EQ(one["upperBound"], 13);
    EXPECT_EQ(one["rows"], Json::parse(R"([{"number":11,"token":"BUY","text":"Buy"},
                                           {"number":12,"token":"SELL","text":"Sell"}])"));
}

TEST(MaskCommand, ReadsNumbersAndTokens)
{
    static constexpr Case cases[] = {
        {"mask nxExchangePriceFilterBitMask 5", 0, "BLOCK_TRADES,NEW_PRODUCTS", ""},
        {"mask nxExchangePriceFilterBitMask 0x25 -separator ' | '", 0, "BLOCK_TRADES | NEW_PRODUCTS | ???",
         ""},
        {"mask nxExchangePriceFilterBitMask implieds,SETTLEMENTS", 0, "hexadecimal  0xa", ""},
        {"mask nxServerCapabilityBitMask NX_SERVER_CAPABILITY_MARGIN_RISK", 0, "0x800000000", ""},
        {"mask nxServerCapabilityBitMask 0x8000000000000000", 0, "state        null", ""},
        {"mask nxExchangePriceFilterBitMask 0x40000001", 0, "state        no change", ""},
        {"mask nxSecurityNodeAccessBaseBitMask 4", 0, "state        not valid", ""},
        {"mask nxExtendedAttributeHighlightBitMask 1", 0, "No Description Available", ""},
    };
    ExpectRuns(cases);
}

TEST(MaskCommand, SaysWhatItCannotRead)
{
    static constexpr Case cases[] = {
        {"mask nxExchangePriceFilterBitMask IMPLIED,SETTLEMENTS", 1, "hexadecimal  0x8", "mean IMPLIEDS?"},
        {"mask nxExchangePriceFilterBitMask qqqq", 2, "", "qqqq: no token of nxExchangePriceFilterBitMask"},
        {"mask nxExchangePriceFilterBitMask 0x100000000", 2, "", "no number of 32 bits"},
        {"mask nxExchangePriceFilterBitMask 5x", 2, "", "no number of 32 bits"},
        {"mask nxServerCapabilityBitMask 18446744073709551616", 2, "", "no number of 64 bits"},
        {"mask nxErrorEnum 4", 2, "", "nxErrorEnum: no such bit mask"},
        {"mask nxKeyboardModifierBitMsk 4", 2, "", "did you mean nxKeyboardModifierBitMask?"},
        {"mask nxKeyboardModifierBitMask", 2, "", "too few arguments"},
    };
    ExpectRuns(cases);
}

TEST(MaskCommand, GivesADocument)
{
    Json const document = Document("mask nxKeyboardModifierBitMask 0xd");
    EXPECT_EQ(document["value"], 13);
    EXPECT_EQ(document["tokens"], "Shift,Alt,???");
    ASSERT_EQ(document["bits"].size(), 3u);
    EXPECT_EQ(document["bits"][1], Json::parse(R"({"bit":4,"token":"Alt","text":"Alt"})"));
}
