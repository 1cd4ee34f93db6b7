// Where log files lie. The fuzz target of statements holds how they are named.

#include "core/logging/nxLogDevice.h"
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
    }

    ~nxFileLogDeviceName() override
    {
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
