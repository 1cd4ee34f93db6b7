// What `nxcore convert` makes of amounts and files of rates.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

namespace
{
bool Holds(std::string const& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}
} // namespace

TEST(ConvertCommand, ConvertsByThePairsOwnRate)
{
    std::string const file =
        MakeFile("rates.txt", "# note\nUSD:EUR=0.50\n\n USD:EUR = 0.92 \nEUR:USD=1.087\n");
    ToolRun const run = RunTool("convert 100.50USD EUR -rates " + file);
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.output,
              "amount     100.50USD\nrate       USD:EUR=0.92\nconverted  92.46EUR\n"); // the last line holds
    EXPECT_TRUE(Holds(RunTool("convert -2EUR USD -rates " + file).output, "-2.174USD"));
    EXPECT_TRUE(Holds(RunTool("convert 1.5GBP GBP -rates " + file).output, "converted  1.5GBP"));
    EXPECT_TRUE(Holds(RunTool("convert 1USD EUR -json -rates " + file).output, "\"converted\": \"0.92EUR\""));
}

TEST(ConvertCommand, SaysWhatIsMissing)
{
    std::string const file = MakeFile("rates.txt", "USD:EUR=0.92\n");
    ToolRun const inverse = RunTool("convert 1EUR USD -rates " + file);
    EXPECT_EQ(inverse.status, 1);
    EXPECT_TRUE(Holds(inverse.error, "EUR:USD")) << inverse.error;
    EXPECT_TRUE(Holds(inverse.output, "converted  none")) << inverse.output;

    ToolRun const currency = RunTool("convert 1EUR USX -rates " + file);
    EXPECT_EQ(currency.status, 2);
    EXPECT_TRUE(Holds(currency.error, "did you mean US")) << currency.error;
    for (char const* amount : {"100", "USD", "1,5USD", "1usd", "BUY"})
    {
        EXPECT_EQ(RunTool(std::string("convert ") + amount + " EUR -rates " + file).status, 2) << amount;
    }
    EXPECT_EQ(RunTool("convert 1USD EUR").status, 2);
    EXPECT_EQ(RunTool("convert 1USD EUR -rates /nowhere/at/all").status, 2);
}

TEST(ConvertCommand, NamesFaultyLinesAndUsesTheOthers)
{
    std::string const file = MakeFile(
        "rates.txt", "; note\nUSD:EUR\nUSD=EUR=1\nUSB:EUR=1\nUSD:EUR=-1\nUSD:EUR=one\nUSD:EUR=0.92\n");
    ToolRun const run = RunTool("convert 1USD EUR -rates " + file);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.output, "converted  0.92EUR")) << run.output;
    for (char const* line : {":2", ":3", ":4", ":5", ":6"})
    {
        EXPECT_TRUE(Holds(run.error, file + line)) << run.error;
    }
    EXPECT_FALSE(Holds(run.error, file + ":7")) << run.error;
}
