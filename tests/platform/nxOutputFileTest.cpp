// A file that is written without a buffer: overwriting, cutting off, and files that refuse.

#include "core/platform/nxOutputFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{

TEST(OutputFile, OverwritesAndCutsOff)
{
    std::string path = (std::filesystem::temp_directory_path() / "nxfileXXXXXX").string();
    ASSERT_NE(mkdtemp(path.data()), nullptr);
    std::string const name = path + "/file";
    (void)(std::ofstream(name) << "much longer than what follows");
    nxPlatform::OutputFile file;
    EXPECT_FALSE(file.IsOpen());
    ASSERT_TRUE(file.Open(name.c_str()));
    EXPECT_EQ(file.Write("line\ntorn", 9), 9u);
    EXPECT_TRUE(file.CutOff(4));
    EXPECT_FALSE(file.CutOff(100)); // more than there is
    EXPECT_EQ(file.Write("next\n", 5), 5u);
    file.Close();
    std::ifstream stream(name);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "line\nnext\n");
    std::filesystem::remove_all(path);
}

TEST(OutputFile, TellsWhatIsRefused)
{
    nxPlatform::OutputFile file;
    errno = 0;
    EXPECT_FALSE(file.Open("/no/such/directory/file"));
    EXPECT_EQ(errno, ENOENT);
    ASSERT_TRUE(file.Open("/dev/full"));
    errno = 0;
    EXPECT_EQ(file.Write("x", 1), 0u);
    EXPECT_EQ(errno, ENOSPC);
}

} // namespace
