// How the companion finds its commands, reads its arguments and ends.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

struct FrameRow
{
    char const* arguments;
    int status;
    char const* output; // a part of it
    char const* error;  // a part of it
};

TEST(Frame, SaysWhatThereIsAndWhatIsWrong)
{
    static constexpr FrameRow rows[] = {
        {"", 0, "Usage: nxcore COMMAND", ""},
        {"-help", 0, "Exit status: 0 all good", ""},
        {"manual -help", 0, "Usage: nxcore manual", ""},
        {"manuel", 2, "", "did you mean manual?"},
        {"qqqqqqqqq", 2, "", "unknown command qqqqqqqqq"},
        {"manual -nothing", 2, "", "unknown switch -nothing"},
        {"manual one", 2, "", "unexpected argument one"},
        {"manual -json", 0, "\"problems\": []", ""},
    };
    for (FrameRow const& row : rows)
    {
        SCOPED_TRACE(row.arguments);
        ToolRun const run = RunTool(row.arguments);
        EXPECT_EQ(run.status, row.status) << run.error;
        EXPECT_NE(run.output.find(row.output), std::string::npos) << run.output;
        EXPECT_NE(run.error.find(row.error), std::string::npos) << run.error;
        EXPECT_EQ(run.error.empty(), *row.error == '\0') << run.error;
    }
}
