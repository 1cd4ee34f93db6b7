// Where log files lie and how they are named.

#include "core/logging/nxLogDevice.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace
{

namespace files = std::filesystem;

class nxFileLogDeviceName : public testing::Test
{
protected:
    nxFileLogDeviceName()
    {
        std::string name = (files::temp_directory_path() / "nxlogXXXXXX").string();
        _directory = mkdtemp(name.data());
        SetDirectory(_directory + "/log");
        nxApplicationData::SetApplicationName("server");
        nxApplicationData::SetApplicationInstanceName("inst");
    }

    ~nxFileLogDeviceName() override
    {
        nxApplicationData::SetApplicationInstanceName("");
        SetDirectory("");
        std::error_code error;
        files::remove_all(_directory, error);
    }

    static void SetDirectory(std::string const& directory)
    {
        (void)nxCmdLineArgs::GetInstance().SetEnvValue("KVT_LOG_DIRECTORY", directory);
    }

    /// The directory of today with a separator behind it.
    std::string Today() const
    {
        return _directory + "/log/" + nxDateTime().GetAsString("%d%b%Y") + "/";
    }

    std::string _directory;
};

TEST_F(nxFileLogDeviceName, JoinsWhatIsAskedFor)
{
    nxDateTime const time(2026, 11, 15, 9, 30, 0, 0); // its day has no part in the directory
    std::string const process = std::to_string(nxApplicationData::GetProcessID());
    struct
    {
        bool addSequence;
        bool addTime;
        bool addProcessID;
        std::string name;
    } const rows[] = {
        {false, false, false, "server_inst.log"},
        {false, true, true, "server_inst_093000_" + process + ".log"},
        {true, true, true, "server_inst_093000_" + process + "_7.log"},
        {true, false, false, "server_inst_7.log"},
    };
    for (auto const& row : rows)
    {
        EXPECT_EQ(nxFileLogDevice::GenerateFileName(".log", row.addSequence, 7, time, row.addTime,
                                                    row.addProcessID),
                  Today() + row.name);
    }
    nxApplicationData::SetApplicationInstanceName("");
    EXPECT_EQ(nxFileLogDevice::GenerateFileName(".txt", true, 1, time, false, false),
              Today() + "server_1.txt");
    EXPECT_EQ(nxFileLogDevice::GenerateFileName("", false, 1, true, false),
              Today() + "server_" + nxApplicationData::GetStartTime().GetAsString("%H%M%S"));
}

TEST_F(nxFileLogDeviceName, MakesOneLevelAndFallsBack)
{
    nxDateTime const time;
    EXPECT_EQ(nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(time), Today());
    EXPECT_TRUE(files::is_directory(Today()));

    // The key is asked for at each call, and a separator at its end stays.
    SetDirectory(_directory + "/log/");
    std::string const day = nxDateTime().GetAsString("%d%b%Y");
    EXPECT_EQ(nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(time), _directory + "/log//" + day + "/");

    // A file in the place of the day's directory: the one above it serves.
    files::remove(Today());
    (void)std::ofstream(_directory + "/log/" + day);
    SetDirectory(_directory + "/log");
    testing::internal::CaptureStdout();
    EXPECT_EQ(nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(time), _directory + "/log/");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Failed to create directory " + _directory + "/log/" + day + ", errno: 17\n");

    SetDirectory(_directory + "/no/parent");
    testing::internal::CaptureStdout();
    EXPECT_EQ(nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(time), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Failed to create directory " + _directory + "/no/parent, errno: 2\n");
}

} // namespace
