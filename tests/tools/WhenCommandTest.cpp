// What `nxcore when` reads and shows.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

#include <ctime>

namespace
{
bool Holds(std::string const& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}
} // namespace

TEST(WhenCommand, ShowsEveryForm)
{
    ToolRun const run = RunTool("when '20261105 09:03:01.042007' -zone Asia/Kolkata");
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.output, "epoch seconds  1793849581\n"
                          "state          valid\n"
                          "Form              Local                        Greenwich\n"
                          "zone              IST +0530                    GMT +0000\n"
                          "day of week       Thursday                     Thursday\n"
                          "quarter           Q4                           Q4\n"
                          "ISO date          20261105                     20261105\n"
                          "time of day       09:03:01                     03:33:01\n"
                          "seconds           05 Nov 2026 09:03:01         05 Nov 2026 03:33:01\n"
                          "milliseconds      05 Nov 2026 09:03:01.042     05 Nov 2026 03:33:01.042\n"
                          "microseconds      05 Nov 2026 09:03:01.042007  05 Nov 2026 03:33:01.042007\n"
                          "in a log message  05 Nov 2026 09:03:01.042007  05 Nov 2026 03:33:01.042007\n"
                          "as read           20261105 09:03:01.042007     20261105 03:33:01.042007\n"
                          "console line      05Nov26 09:03:01.042\n"
                          "log file line     05Nov26 09:03:01.042.007\n");
}

TEST(WhenCommand, ReadsEveryForm)
{
    struct
    {
        char const* arguments;
        char const* output; // a part of it
    } const rows[] = {
        {"when 1700000000 -zone UTC", "14 Nov 2023 22:13:20.000 "},
        {"when 20240131 -zone UTC", "31 Jan 2024 00:00:00.000 "},
        {"when @20240131 -zone UTC", "23 Aug 1970 06:15:31.000 "},
        {"when 20240131 09:30:15 -zone EST5EDT", "31 Jan 2024 14:30:15.000"},
        {"when 20241331 09:30:15 -zone UTC", "31 Jan 2025 09:30:15.000 "},
        {"when 0 -zone America/New_York", "NULL"},
        {"when 1", "NO_CHANGE"},
        {"when 09:30 -zone UTC", "09:30:00.000"},
        {"when 20241103 01:30:00 -zone America/New_York", "comes again    1730615400\n"},
        {"when 20240310 02:30:00 -zone America/New_York", "EDT -0400"}, // skipped: counts on to 03:30
        {"when 1700000000 -json", "\"epochSeconds\": 1700000000,"},
    };
    for (auto const& row : rows)
    {
        ToolRun const run = RunTool(row.arguments);
        EXPECT_EQ(run.status, 0) << row.arguments << run.error;
        EXPECT_TRUE(Holds(run.output, row.output)) << row.arguments << '\n' << run.output;
    }
    EXPECT_TRUE(Holds(RunTool("when 1700000000", "TZ=Asia/Kolkata").output, "IST +0530"));
}

TEST(WhenCommand, IsNowByItself)
{
    std::time_t const before = std::time(nullptr);
    std::string const output = RunTool("when").output;
    long long const seconds = std::stoll(output.substr(sizeof("epoch seconds")));
    EXPECT_GE(seconds + 1, before);
    EXPECT_LE(seconds, std::time(nullptr) + 1);
}

TEST(WhenCommand, RefusesWhatIsNoMomentAndNoZone)
{
    for (char const* arguments :
         {"yesterday", "20240131 09:30", "19691231 23:59:59 -zone UTC", "-5", "99999999999999999999",
          "999999999999999999", "24:00", "'' -zone Europe/Londno", "1 -zone America", "1 -zone ../zoneinfo"})
    {
        ToolRun const run = RunTool(std::string("when ") + arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_NE(run.error, "") << arguments;
    }
}
