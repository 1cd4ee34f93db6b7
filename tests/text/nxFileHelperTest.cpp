// Sizes, times and directories, the last line of a file, and names without their suffix.
#include "core/text/nxFileHelper.h"
#include "core/time/nxDateTime.h"
#include "tests/text/nxTestFile.h"

#include <gtest/gtest.h>

#include <tuple>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

TEST(nxFileHelper, TellsSizeAndTime)
{
    nxTestFile const file("12345");
    EXPECT_EQ(nxFileHelper::GetFileSize(file.Path()), 5u);
    timespec const times[2] = {{1700000000, 0}, {1700000001, 999999999}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.Path().c_str(), times, 0), 0);
    nxDateTime const modified = nxFileHelper::GetModificationTime(file.Path());
    EXPECT_EQ(modified.GetAsTimeValue(), 1700000001);
    EXPECT_EQ(modified.GetMicroseconds(), 0u);
    EXPECT_EQ(nxFileHelper::GetFileSize(file.Path() + ".none"), 0u);
    EXPECT_TRUE(nxFileHelper::GetModificationTime(file.Path() + ".none").IsNull());

    // Large sizes are cut to a signed number.
    ASSERT_EQ(::truncate(file.Path().c_str(), 2147483647), 0);
    EXPECT_EQ(nxFileHelper::GetFileSize(file.Path()), 2147483647u);
    ASSERT_EQ(::truncate(file.Path().c_str(), 3000000000), 0);
    EXPECT_EQ(nxFileHelper::GetFileSize(file.Path()), 18446744072414584320u);
}

TEST(nxFileHelper, MakesOneDirectory)
{
    nxTestFile const place;
    EXPECT_FALSE(nxFileHelper::DoesDirectoryExist(place.Path()));
    EXPECT_TRUE(nxFileHelper::CreateDirectoryA(place.Path()));
    EXPECT_TRUE(nxFileHelper::DoesDirectoryExist(place.Path()));

    testing::internal::CaptureStdout();
    EXPECT_FALSE(nxFileHelper::CreateDirectoryA(place.Path()));
    EXPECT_FALSE(nxFileHelper::CreateDirectoryA(place.Path() + "/no/parents"));
    std::string const failed = "Failed to create directory " + place.Path();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              failed + ", errno: 17\n" + failed + "/no/parents, errno: 2\n");
    EXPECT_FALSE(nxFileHelper::DoesDirectoryExist(nxTestFile("").Path()));

    // Wide paths are taken as UTF-8.
    std::string const narrow = place.Path() + "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\x88";
    std::wstring const wide =
        std::wstring(place.Path().begin(), place.Path().end()) + L"\u00E4\u20AC\U0001F4C8";
    EXPECT_TRUE(nxFileHelper::CreateDirectoryA(wide) && nxFileHelper::DoesDirectoryExist(wide));
    EXPECT_EQ(::rmdir(narrow.c_str()), 0);
    EXPECT_FALSE(nxFileHelper::DoesDirectoryExist(std::wstring(1, wchar_t{0xD800}))); // no character
}

TEST(nxFileHelperLastLine, ComesWithoutItsEnd)
{
    // The content, the length and the line, which is "old" when it is left alone.
    using Row = std::tuple<std::string, unsigned int, std::string>;
    for (auto const& [content, maxLength, expected] :
         {Row{"a\nb\r\n", 100, "b"}, Row{"a\nb", 100, "b"}, Row{"one", 100, "one"}, Row{"\n", 100, "old"},
          Row{"\r\n", 100, ""}, Row{"a\n\n", 100, "a\n"}, // only the very last line feed is passed over
          Row{"a\n\nb\n", 100, "b"}, Row{"first\nsecond\n", 4, "ond"}, // cut at the front
          Row{"first\nsecond\n", 1, "old"}, Row{"first\nsecond", 6, "second"},
          Row{"first\nsecond", 7, "second"}, Row{"a\rb\r", 100, "a\rb\r"}})
    {
        nxTestFile const file(content);
        std::FILE* const stream = std::fopen(file.Path().c_str(), "rb");
        std::string line("old");
        EXPECT_TRUE(nxFileHelper::GetLastLineOfFile(stream, maxLength, line).IsOK()) << content;
        EXPECT_EQ(line, expected) << content;
        EXPECT_EQ(std::ftell(stream), static_cast<long>(content.size()));
        (void)std::fclose(stream);
    }
}

TEST(nxFileHelperLastLine, TellsWhatFailed)
{
    std::string line("old");
    nxTestFile const file("");
    std::FILE* const stream = std::fopen(file.Path().c_str(), "rb");
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(nullptr, 10, line), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(stream, 0, line), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(stream, 10, line), NX_ERR_FILE_READ_ERR);
    (void)std::fclose(stream);

    std::FILE* const pipe = ::popen("true", "r");
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(pipe, 10, line), NX_ERR_FILE_SEEK_ERR);
    (void)::pclose(pipe);
    EXPECT_EQ(line, "old");
}

TEST(nxFileHelper, RemovesSuffixes)
{
    using Row = std::tuple<std::string, char const*, char const*>;
    for (auto [whole, front, end] :
         {Row{"name", "name", "old"}, Row{"file.tar.gz", "file.tar", ".gz"},
          Row{"logs.old/file", "logs.old/file", "old"}, Row{"logs.old\\file", "logs.old\\file", "old"},
          Row{"a/b.c", "a/b", ".c"}, Row{".hidden", "", ".hidden"}, Row{"end.", "end", "."},
          Row{"", "", "old"}, Row{"a/", "a/", "old"}})
    {
        std::string stem("old");
        std::string suffix("old");
        nxFileHelper::RemoveFileTypeSuffix(whole, stem, suffix);
        EXPECT_EQ(stem, front) << whole;
        EXPECT_EQ(suffix, end) << whole;
        nxFileHelper::RemoveFileTypeSuffix(whole, whole, suffix); // in place
        EXPECT_EQ(whole, front);
    }
}
