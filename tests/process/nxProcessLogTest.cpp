// The lines that the classes of this folder log, and that a device may call them back while it writes one.
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <cstdlib>
#include <tuple>

namespace
{

// Before anybody logs: lines arrive at once, and not on the console.
bool const isLogSet =
    ::setenv("KVT_LOG_FORCE_FLUSH", "TRUE", 1) == 0 && ::setenv("KVT_LOG_TO_CONSOLE", "NO", 1) == 0;

} // namespace

// The device asks the process for names and values in the middle of each line.
class nxProcessLog : public nxRecordingTest
{
protected:
    nxProcessLog()
    {
        _device.onWrite = [](std::string const&)
        {
            std::map<std::string, std::string> envs;
            nxCmdLineArgs::GetInstance().GetEnvs(envs);
            (void)nxCmdLineArgs::GetInstance().GetEnvValue("KVT_LOG_DIRECTORY");
            (void)nxApplicationData::GetApplicationName();
            (void)nxApplicationData::GetProcessID();
        };
    }
};

TEST_F(nxProcessLog, ToldOfChangedVariables)
{
    ASSERT_TRUE(isLogSet);
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    EXPECT_FALSE(arguments.SetEnvValue("", "v"));
    EXPECT_FALSE(arguments.SetEnvValue("A=B", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_LOG", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_LOG", ""));
    EXPECT_EQ(Take(), (Lines{"ERR Failed to change environment variable. A=B=v",
                             "INF Successfully changed environment variable.  NX_TEST_LOG=v",
                             "INF Successfully changed environment variable.  NX_TEST_LOG="}));
}

TEST_F(nxProcessLog, ToldOfThePriceFilter)
{
    std::tuple<char const*, unsigned int, Lines> const rows[] = {
        {"", 0, {}},
        {"IMPLIEDS, BOGUS,,IMPLIEDS",
         0x2,
         {"ERR Detected invalid price filter bitmask: ", "ERR Detected invalid price filter bitmask: BOGUS",
          "INF Setting price filter bitmask bit: IMPLIEDS"}},
        {" NEW_PRODUCTS\t,\r\nBLOCK_TRADES ,",
         0x5,
         {"INF Setting price filter bitmask bit: BLOCK_TRADES",
          "INF Setting price filter bitmask bit: NEW_PRODUCTS"}},
        {"implieds", 0, {"ERR Detected invalid price filter bitmask: implieds"}},
    };
    for (auto const& [value, bits, lines] : rows)
    {
        ASSERT_TRUE(nxCmdLineArgs::GetInstance().SetEnvValue("NX_TEST_FILTER", value));
        (void)Take();
        nxExchangePriceFilterBitMask mask(0x100);
        mask.ReadFromEnvValue("NX_TEST_FILTER");
        EXPECT_EQ(mask.GetValue(), bits | 0x100) << value;
        EXPECT_EQ(Take(), lines) << value;
    }
}

TEST_F(nxProcessLog, ToldOfAMissingAddress)
{
    bool const isMissing = nxApplicationData::GetIPAddress().empty();
    EXPECT_EQ(Take(), isMissing ? Lines{"INF ERROR - Failed to get IP address for host"} : Lines());
}

TEST_F(nxProcessLog, DumpsWhatWasRead)
{
    struct Arguments : public nxCmdLineArgs
    {
    } arguments;
    char const* const argv[] = {"prog", "loose", "-b", "2", "-a", nullptr};
    char const* const envp[] = {"Y=2", "X=", nullptr};
    arguments.Initialise(const_cast<char**>(argv), const_cast<char**>(envp));
    arguments.Dump(nxLogLevelEnum(NX_WRN));
    EXPECT_EQ(Take(), (Lines{"WRN Command Line Args:", "WRN a ", "WRN b 2",
                             "WRN Environment Variables:", "WRN X=", "WRN Y=2"}));
    arguments.Dump(nxLogLevelEnum(NX_DBG));
    EXPECT_EQ(Take(), Lines());
}
