// The commands of prices: the board of a file with its faults, one price, and the ladders.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
std::string Example(std::string const& name)
{
    return "'" NX_EXAMPLES_PATH "/" + name + "'";
}

constexpr char header[] =
    "symbol,exchange,description,type,currency,price_format,tick,tick_table,last,volume\n";

/// A board of one row under the usual first row.
ToolRun BoardOf(std::string const& row)
{
    return RunTool("board '" + MakeFile("products.csv", header + row + "\n") + "'");
}

bool Holds(std::string const& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}
} // namespace

TEST(Board, ShowsEveryProductOfTheExample)
{
    ToolRun const run = RunTool("board " + Example("products.csv"));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(std::ranges::count(run.output, '\n'), 34); // 33 products under their titles
    for (char const* const part : {"103-186    103-185   103-187  0.00390625  103.5859375  812.4k",
                                   "114-08+    114-08    114-09     0.015625   114.265625  355.1k",
                                   "432-6      432-4     433-0", "4.95       4.90      5.00        0.05",
                                   "GB Pounds          Decimal", "Modified Half 1/32nd ticks"})
    {
        EXPECT_TRUE(Holds(run.output, part)) << part << " is not in\n" << run.output;
    }
}

TEST(Board, NamesTenFaultsAndShowsTheSoundRows)
{
    std::string const file = NX_EXAMPLES_PATH "/products-with-faults.csv";
    static constexpr char const* faults[] = {
        ":4: last: \"112-163\" is no price in Half 1/32nd ticks, which look like 112-025",
        ":5: last: 6852.30 is off its tick of 0.25, between 6852.25 and 6852.50",
        ":6: tick: a tick of zero moves no price",
        (":7: price_format: unknown price format NX_PRICE_FORMAT_DECIMAL, did you mean "
         "NX_PRICE_FORMAT_DECIMALS?"),
        ":8: tick_table: unknown ladder CXE_mifid_9, did you mean CXE_mifid_1?",
        ":9: currency: unknown currency \"GBX\"",
        ":10: type: unknown product type \"Q\"",
        ":11: last: \"9l2.4\" is no number",
        ":12: volume: \"3.3M\" is no whole number",
        ":13: type: too few columns: 3 columns in place of 10",
    };
    std::string expected;
    for (char const* const fault : faults)
        expected += file + fault + "\n";
    ToolRun const run = RunTool("board '" + file + "'");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, expected);
    EXPECT_EQ(std::ranges::count(run.output, '\n'), 3);
    EXPECT_TRUE(Holds(run.output, "ZNZ6") && Holds(run.output, "EQNR")) << run.output;
}

TEST(Board, SaysWhatIsWrongWithARow)
{
    struct Row
    {
        char const* row;
        char const* fault; // a part of it; empty for a sound row
    };
    static constexpr Row rows[] = {
        {"A,X,,E,EUR,NX_PRICE_FORMAT_DECIMALS,0.01,,,", ""}, // no price and no volume yet
        {"A,X,,E,EUR,DECIMALS,0.01,,1.5,0", ""},
        {"A,X,\"a, b\",E,EUR,DECIMALS,0.01,,1.5,4294967293", ""},
        {"A,X,,E,EUR,DECIMALS,,,1.5,1", ":2: tick: neither a tick nor a tick table"},
        {"A,X,,E,EUR,DECIMALS,x,,1.5,1", ":2: tick: \"x\" is no number"},
        {"A,X,,E,EUR,DECIMALS,-0.5,,1.5,1", ":2: tick: a tick is above zero"},
        {"A,X,,E,EUR,DECIMALS,0.000000001,,1.5,1", ":2: tick: 0.000000001 is smaller"},
        {"A,X,,E,EUR,FRACTION_FULL_TICK,1,,1.5,1", ":2: last: \"1.5\" is no whole number"},
        {"A,X,,E,EUR,FRACTION_FULL_TICK,5,,13,1", ":2: last: 13 is off its tick of 5, between 10 and 15"},
        {"A,X,,E,EUR,DECIMALS,,CHIX_EUZ1,10.001,1", "off its tick of 0.005, between 10.000 and 10.005"},
        {"A,X,,E,EUR,DECIMALS,0.01,,1.5,4294967294", ":2: volume: 4294967294 is more than a volume holds"},
        {"A,X,,E,EUR,DECIMALS,0.01,,1.5,4294967297", ":2: volume: 4294967297 is more than a volume holds"},
        {"A,X,,E,EUR,DECIMALS,0.01,,1.5,-1", ":2: volume: \"-1\" is no whole number"},
        {"A,X,,E,ORDER_HELD,DECIMALS,0.01,,1.5,1", ":2: currency: unknown currency"},
        {"A,X,a, b,E,EUR,DECIMALS,0.01,,1.5,1", ":2: too many columns: 11 columns"},
    };
    for (Row const& row : rows)
    {
        ToolRun const run = BoardOf(row.row);
        EXPECT_EQ(run.status, *row.fault == '\0' ? 0 : 1) << row.row << '\n' << run.error;
        EXPECT_TRUE(Holds(run.error, row.fault)) << row.row << '\n' << run.error;
        EXPECT_EQ(run.error.empty(), *row.fault == '\0') << run.error;
        EXPECT_EQ(std::ranges::count(run.output, '\n'), *row.fault == '\0' ? 2 : 1) << run.output;
    }
    ToolRun const two = BoardOf("A,X,,Q,GBX,DECIMALS,0.01,,1.5,x"); // every fault of a row
    EXPECT_EQ(std::ranges::count(two.error, '\n'), 3) << two.error;
}

TEST(Board, CountsLinesAndFindsColumnsByName)
{
    std::string const reordered =
        "# a comment\n\n"
        "volume,last,tick_table,tick,price_format,currency,type,description,exchange,symbol\n"
        "# another\n1500,101-16,,,FRACTION_32NDS_TICK,USD,F,,X,A\n"
        "1500,101-32,,,FRACTION_32NDS_TICK,USD,F,,X,B\n1500,101-16\n";
    ToolRun const run = RunTool("board '" + MakeFile("reordered.csv", reordered) + "'");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.output, "101-16     101-15   101-17  0.03125  101.5    1.5k")) << run.output;
    EXPECT_TRUE(Holds(run.error, "reordered.csv:6: last: ")) << run.error;
    EXPECT_TRUE(Holds(run.error, "reordered.csv:7: tick_table: too few columns: 2 columns")) << run.error;
}

TEST(Board, NeedsAFileOfProducts)
{
    EXPECT_EQ(RunTool("board").status, 2);
    EXPECT_EQ(RunTool("board /nonexistent").error, "/nonexistent: can't be read\n");
    EXPECT_EQ(RunTool("board /nonexistent").status, 2);
    EXPECT_EQ(RunTool("board /dev/null").status, 2);
    ToolRun const untitled = RunTool("board '" + MakeFile("untitled.csv", "A,X\n") + "'");
    EXPECT_EQ(untitled.status, 2);
    EXPECT_TRUE(Holds(untitled.error, ":1: symbol: the first row does not name this column"))
        << untitled.error;
    // What stands before a line that is too long is shown.
    std::string const sound = "A,X,,E,EUR,DECIMALS,0.01,,1.5,1\n";
    ToolRun const cut =
        RunTool("board '" + MakeFile("cut.csv", header + sound + std::string(9000, 'x')) + "'");
    EXPECT_EQ(cut.status, 1);
    EXPECT_TRUE(Holds(cut.error, "cut.csv:3: can't be read from here on")) << cut.error;
    EXPECT_EQ(std::ranges::count(cut.output, '\n'), 2);
}

TEST(Board, IsOneJsonDocument)
{
    ToolRun const run = RunTool("board -json " + Example("products-with-faults.csv"));
    EXPECT_EQ(run.status, 1);
    for (char const* const part : {"\"symbol\": \"ZNZ6\"", "\"last\": \"112-165\"", "\"tick\": 0.015625",
                                   "\"value\": 112.515625", "\"volume\": 1998877", "\"line\": 13"})
    {
        EXPECT_TRUE(Holds(run.output, part)) << part;
    }
}

namespace
{
struct CommandRow
{
    char const* arguments;
    int status;
    std::vector<char const*> parts; // of the output, or of what went wrong
};

void ExpectRun(CommandRow const& row)
{
    ToolRun const run = RunTool(row.arguments);
    EXPECT_EQ(run.status, row.status) << row.arguments;
    for (char const* const part : row.parts)
        EXPECT_TRUE(Holds(run.output + run.error, part)) << row.arguments << " says\n"
                                                         << run.output << run.error;
    EXPECT_EQ(run.error.empty(), row.status == 0) << run.error;
}
} // namespace

TEST(Price, ShowsWhatSurroundsIt)
{
    CommandRow const rows[] = {
        {"price FRACTION_HALF_32NDS_TICK 101-165 -steps 3",
         0,
         {"Value          101.515625\n", "Text           101-165\n", "On the tick    yes\n",
          "One tick down  101-160  (101.5)\n", "One tick up    101-170  (101.53125)\n",
          "Stepped by 3   101-180  (101.5625)\n"}},
        {"price NX_PRICE_FORMAT_DECIMALS 9.999 -ladder CHIX_EUZ1 -steps -2",
         0,
         {"Tick           0.001\n", "One tick up    10.000  (10)\n", "Stepped by -2  9.997"}},
        {"price MODIFIED_DECIMALS_100THS 98.50",
         0,
         {"Value          9850\n", "One tick up    98.51  (9851)\n"}},
        {"price DECIMALS -1.5 -tick 0.5", 0, {"One tick down  -2.0  (-2)\n"}},
        {"price FRACTION_12THS_TICK 100-11", 0, {"One tick up    101-00"}},
        {"price DECIMALS 6852.30 -tick 0.25",
         1,
         {"On the tick    no\n", "One tick down  6852.25", "One tick up    6852.50",
          "TEXT: 6852.30 is off its tick of 0.25, between 6852.25 and 6852.50\n"}},
        {"price DECIMALS 6852.30 -tick 0.25 -round UP", 0, {"Rounded UP     6852.50  (6852.5)\n"}},
        {"price FRACTION_HALF_32NDS_TICK 112-165 -tick 0.03125 -round NX_ROUNDING_METHOD_DOWN",
         0,
         {"112-160  (112.5)\n"}},
        {"price FRACTION_HALF_32NDS_TICK 101-163", 2, {"TEXT: \"101-163\" is no price in Half 1/32nd ticks"}},
        {"price FRACTION_32ND_TICK 1", 2, {"FORMAT: unknown price format FRACTION_32ND_TICK, did you mean"}},
        {"price DECIMALS 1 -tick 0", 2, {"-tick: a tick of zero moves no price"}},
        {"price DECIMALS 1 -tick 1 -ladder CHIX_EUZ1", 2, {"-tick: a price has either a tick or a ladder"}},
        {"price DECIMALS 1 -ladder CHIX_EUZ",
         2,
         {"-ladder: unknown ladder CHIX_EUZ, did you mean CHIX_EUZ1?"}},
        {"price DECIMALS 1 -steps 1.5", 2, {"-steps: no whole number"}},
        {"price DECIMALS 1 -round UPP", 2, {"-round: unknown rounding method UPP, did you mean UP?"}},
        {"price DECIMALS", 2, {"too few arguments"}},
    };
    for (CommandRow const& row : rows)
        ExpectRun(row);
}

TEST(Ladder, ShowsTheCatalogueALadderOrAPriceOnIt)
{
    ToolRun const list = RunTool("ladder");
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(std::ranges::count(list.output, '\n'), 151);
    CommandRow const rows[] = {
        {"ladder CHIX_EUZ1", 0, {" 0.000      9.999  0.001\n10.000  and above  0.005\n"}},
        {"ladder VTT_CHIX_EUZ1 9.9995",
         0,
         {"Increment       0.005\n", "DOWN               9.999\n", "UP                10.000\n",
          "NEAREST           10.000\n", "MODIFIED_NEAREST   9.999\n"}},
        {"ladder CHIX_EUZ1 -10", 0, {"+1   -9.999\n", "0      -10\n", "-1  -10.005\n", "-5  -10.025\n"}},
        {"ladder CHIX_EUZ1 9.998 -json", 0, {"\"ticks\": 3,\n      \"price\": \"10.005\""}},
        {"ladder CHIX_EUZ", 2, {"NAME: unknown ladder CHIX_EUZ, did you mean CHIX_EUZ1?"}},
        {"ladder CHIX_EUZ1 x", 2, {"PRICE: \"x\" is no number"}},
    };
    for (CommandRow const& row : rows)
        ExpectRun(row);
}
