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
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to create directory " + place.Path() +
                                                          ", errno: 17\n"
                                                          "Failed to create directory " +
                                                          place.Path() + "/no/parents, errno: 2\n");
    nxTestFile const file("");
    EXPECT_FALSE(nxFileHelper::DoesDirectoryExist(file.Path()));
}

TEST(nxFileHelper, TakesWidePathsAsUTF8)
{
    nxTestFile const place;
    std::string const narrow = place.Path() + "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\x88";
    std::wstring const wide =
        std::wstring(place.Path().begin(), place.Path().end()) + L"\u00E4\u20AC\U0001F4C8";
    EXPECT_TRUE(nxFileHelper::CreateDirectoryA(wide));
    EXPECT_TRUE(nxFileHelper::DoesDirectoryExist(wide));
    EXPECT_EQ(::rmdir(narrow.c_str()), 0);
    EXPECT_FALSE(
        nxFileHelper::DoesDirectoryExist(std::wstring(1, static_cast<wchar_t>(0xD800)))); // no character
}

TEST(nxFileHelperLastLine, ComesWithoutItsEnd)
{
    using Row =
        std::tuple<std::string, unsigned int, std::string>; // content, length and line; "old" when left alone
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

    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    std::FILE* const pipe = ::fdopen(ends[0], "rb");
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(pipe, 10, line), NX_ERR_FILE_SEEK_ERR);
    (void)std::fclose(pipe);
    (void)::close(ends[1]);
    EXPECT_EQ(line, "old");
}

TEST(nxFileHelper, RemovesSuffixes)
{
    using Row = std::tuple<char const*, char const*, char const*>;
    for (auto const& [whole, front, end] :
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
    }
    std::string path("in/place.txt");
    std::string suffix;
    nxFileHelper::RemoveFileTypeSuffix(path, path, suffix);
    EXPECT_EQ(path + "|" + suffix, "in/place|.txt");
}
