// The lines that the classes of this folder log, and that a device may call them back while it writes one.
#include "core/logging/nxLog.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

// Before anybody logs: lines arrive at once, and not on the console.
bool const isLogSet =
    ::setenv("KVT_LOG_FORCE_FLUSH", "TRUE", 1) == 0 && ::setenv("KVT_LOG_TO_CONSOLE", "NO", 1) == 0;

using Lines = std::vector<std::string>;

// Keeps lines as "LEVEL message", and asks the process for names and values in the middle of each.
class AskingDevice : public nxLogDevice
{
public:
    AskingDevice()
    {
        nxLogManager::GetInstance().RegisterLogDevice(this);
    }

    ~AskingDevice() override
    {
        nxLogManager::GetInstance().UnregisterLogDevice(this);
    }

    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        std::map<std::string, std::string> envs;
        nxCmdLineArgs::GetInstance().GetEnvs(envs);
        (void)nxCmdLineArgs::GetInstance().GetEnvValue("KVT_LOG_DIRECTORY");
        (void)nxApplicationData::GetApplicationName();
        (void)nxApplicationData::GetProcessID();
        std::string const* const entry = log.GetLogEntry();
        lines.push_back(log.GetLogLevel().GetShortDescription() + " " + (entry == nullptr ? "" : *entry));
        file = log.GetSourceFile();
    }

    void Flush() override
    {
    }

    Lines lines;
    std::string file;
};

} // namespace

TEST(nxProcessLog, ToldOfChangedVariables)
{
    ASSERT_TRUE(isLogSet);
    AskingDevice device;
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    EXPECT_FALSE(arguments.SetEnvValue("", "v"));
    EXPECT_FALSE(arguments.SetEnvValue("A=B", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_LOG", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_LOG", ""));
    EXPECT_EQ(device.lines, (Lines{"ERR Failed to change environment variable. A=B=v",
                                   "INF Successfully changed environment variable.  NX_TEST_LOG=v",
                                   "INF Successfully changed environment variable.  NX_TEST_LOG="}));
}

TEST(nxProcessLog, ToldOfThePriceFilter)
{
    ASSERT_TRUE(nxCmdLineArgs::GetInstance().SetEnvValue("NX_TEST_FILTER", "IMPLIEDS, BOGUS,,IMPLIEDS"));
    AskingDevice device;
    nxExchangePriceFilterBitMask mask;
    mask.ReadFromEnvValue("NX_TEST_FILTER");
    EXPECT_EQ(device.lines, (Lines{"ERR Detected invalid price filter bitmask: ",
                                   "ERR Detected invalid price filter bitmask: BOGUS",
                                   "INF Setting price filter bitmask bit: IMPLIEDS"}));
    device.lines.clear();
    mask.ReadFromEnvValue("NX_TEST_NOT_SET");
    EXPECT_EQ(device.lines, Lines());
}

TEST(nxProcessLog, DumpsWhatWasRead)
{
    class Arguments : public nxCmdLineArgs
    {
    public:
        Arguments() = default;
    };
    char const* const argv[] = {"prog", "loose", "-b", "2", "-a", nullptr};
    char const* const envp[] = {"Y=2", "X=", nullptr};
    Arguments arguments;
    arguments.Initialise(const_cast<char**>(argv), const_cast<char**>(envp));
    AskingDevice device;
    arguments.Dump(nxLogLevelEnum(NX_WRN));
    EXPECT_EQ(device.lines, (Lines{"WRN Command Line Args:", "WRN a ", "WRN b 2",
                                   "WRN Environment Variables:", "WRN X=", "WRN Y=2"}));
    EXPECT_EQ(device.file.substr(device.file.rfind('/') + 1), "nxCmdLineArgs.cpp");
    device.lines.clear();
    arguments.Dump(nxLogLevelEnum(NX_DBG));
    EXPECT_EQ(device.lines, Lines());
}

TEST(nxProcessLog, ToldOfAMissingAddress)
{
    AskingDevice device;
    std::string const address = nxApplicationData::GetIPAddress();
    Lines const expected = address.empty() ? Lines{"INF ERROR - Failed to get IP address for host"} : Lines();
    EXPECT_EQ(device.lines, expected);
}
