// Fields, rows and files, and bytes as hexadecimal text, so far as no fuzz target has them. Also sizes, times
// and directories, the last line of a file, and names without their suffix.
#include "core/text/nxAlgorithm.h"
#include "core/text/nxByteArray.h"
#include "core/text/nxCSVFileReader.h"
#include "core/text/nxFileHelper.h"
#include "core/text/nxStringParser.h"
#include "core/time/nxDateTime.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <tuple>
#include <type_traits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static_assert(std::is_nothrow_move_constructible_v<nxCSVFileRow> && std::is_copy_assignable_v<nxCSVFileRow>,
              "rows are moved when a list of them grows");
static_assert(sizeof(nxCSVFileRow) == sizeof(void*) + sizeof(std::vector<std::string>));

namespace
{

/// A file or directory of a test's own, gone with the object.
struct TestFile
{
    explicit TestFile(std::string const& content)
    {
        std::ofstream(path, std::ios::binary) << content;
    }

    ~TestFile()
    {
        std::filesystem::remove_all(directory);
    }

    std::string const directory = ::mkdtemp(std::string("/tmp/nxtest.XXXXXX").data());
    std::string const path = directory + "/file";
};

std::string GetText(nxCSVFileReader const& reader)
{
    std::string text;
    for (unsigned int i = 0; i < reader.GetRowCount(); ++i)
    {
        std::string row;
        reader.GetRow(i)->GetRowData(row, '|');
        text += row + "\n";
    }
    return text;
}

struct StarIsComment : public nxCSVFileReaderCallback
{
    bool IsCommentRow(std::string const& row) override
    {
        seen.push_back(row);
        return row == "*";
    }

    std::vector<std::string> seen;
};

} // namespace

TEST(nxAlgorithmHex, AppendsBytesInOrder)
{
    unsigned char bytes[] = {0x00, 0x9F, 0xFF};
    std::string text("x");
    nxAlgorithm::AppendAsHex(nxByteArray{bytes, 3}, text);
    nxAlgorithm::AppendAsHex(nxByteArray{nullptr, 3}, text);
    nxAlgorithm::AppendAsHex(nxByteArray{bytes, 0}, text);
    EXPECT_EQ(text, "x009FFF");
    nxAlgorithm::GetAsHex(std::vector<unsigned char>(bytes, bytes + 3), text);
    EXPECT_EQ(text, "009FFF");
    nxAlgorithm::GetAsHex(nxByteArray{}, text);
    EXPECT_EQ(text, "");
}

TEST(nxStringParser, BothFormsShareOneCursor)
{
    std::string const text("1;\"2;3\";4");
    nxStringParser parser(text);
    EXPECT_EQ(parser.GetSubString(';'), "1");
    EXPECT_EQ(parser.GetSubString(';', '"'), "2;3");
    EXPECT_EQ(parser.GetSubString(';'), "4");
}

TEST(nxCSVFileRow, AddsColumnsUntilCleared)
{
    nxCSVFileRow row;
    row.AddColumn(" raw ");
    row.SetRowData(" a\t; \"b\" \n", ';');
    row.SetRowData("\" c;d \" x ;\"e\";", ';', '"'); // trimmed after the quotes are gone
    std::string text("old");
    row.GetRowData(text, '|');
    EXPECT_EQ(text, " raw |a|\"b\"|c;d|e");
    row.Clear();
    row.GetRowData(text, '|');
    EXPECT_EQ(text, "");
    EXPECT_EQ(row.GetColCount(), 0u);
}

TEST(nxCSVFileReader, AsksTheCallbackWithTheTrimmedLine)
{
    StarIsComment callback;
    TestFile const file(" * \n#a\n\n");
    nxCSVFileReader reader(',', false, &callback);
    ASSERT_TRUE(reader.ReadFile(file.path).IsOK());
    EXPECT_EQ(callback.seen, (std::vector<std::string>{"*", "#a", ""}));
    nxCSVFileReader const copy(reader);
    for (std::string const& path :
         {file.directory, std::string("/proc/self/mem"), std::string(), file.path + ".none"})
        EXPECT_EQ(reader.ReadFile(path), NX_ERR_CSV_FILE_READ_ERROR)
            << path; // the second opens, and fails to read
    EXPECT_EQ(GetText(reader), "#a\n\n");
    ASSERT_TRUE(reader.ReadFile(file.path).IsOK()); // adds to the rows held
    EXPECT_EQ(GetText(reader), "#a\n\n#a\n\n");
    EXPECT_EQ(GetText(copy), "#a\n\n");
}

// Lines lie across the blocks that the file is read in at every offset; a pipe has no size to go by.
TEST(nxCSVFileReader, ReadsLongFilesAndPipesAlike)
{
    std::string content;
    for (unsigned int i = 0; i < 60000; ++i)
        content += std::to_string(i) + "|" + std::string(i % 97, 'x') + "\n";
    TestFile const file(content);
    std::FILE* const pipe = ::popen(("cat " + file.path).c_str(), "r");
    for (std::string const& path : {file.path, "/proc/self/fd/" + std::to_string(::fileno(pipe))})
    {
        nxCSVFileReader reader('|');
        EXPECT_TRUE(reader.ReadFile(path).IsOK());
        EXPECT_TRUE(GetText(reader) == content) << path;
    }
    (void)::pclose(pipe);
}

TEST(nxFileHelper, TellsSizeAndTime)
{
    TestFile const file("12345");
    EXPECT_EQ(nxFileHelper::GetFileSize(file.path), 5u);
    timespec const times[2] = {{1700000000, 0}, {1700000001, 999999999}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.path.c_str(), times, 0), 0);
    nxDateTime const modified = nxFileHelper::GetModificationTime(file.path);
    EXPECT_EQ(modified.GetAsTimeValue(), 1700000001);
    EXPECT_EQ(modified.GetMicroseconds(), 0u);
    EXPECT_EQ(nxFileHelper::GetFileSize(file.path + ".none"), 0u);
    EXPECT_TRUE(nxFileHelper::GetModificationTime(file.path + ".none").IsNull());

    // Large sizes are cut to a signed number.
    ASSERT_EQ(::truncate(file.path.c_str(), 2147483647), 0);
    EXPECT_EQ(nxFileHelper::GetFileSize(file.path), 2147483647u);
    ASSERT_EQ(::truncate(file.path.c_str(), 3000000000), 0);
    EXPECT_EQ(nxFileHelper::GetFileSize(file.path), 18446744072414584320u);
}

TEST(nxFileHelper, MakesOneDirectory)
{
    TestFile const file("");
    std::string const place = file.directory + "/made";
    EXPECT_FALSE(nxFileHelper::DoesDirectoryExist(file.path) || nxFileHelper::DoesDirectoryExist(place));
    EXPECT_TRUE(nxFileHelper::CreateDirectoryA(place) && nxFileHelper::DoesDirectoryExist(place));
    std::string const narrow = place + "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\x88";
    std::wstring const wide =
        std::wstring(place.begin(), place.end()) + L"\u00E4\u20AC\U0001F4C8"; // UTF-8, too
    EXPECT_TRUE(nxFileHelper::CreateDirectoryA(wide) && nxFileHelper::DoesDirectoryExist(wide));

    testing::internal::CaptureStdout();
    EXPECT_FALSE(nxFileHelper::CreateDirectoryA(wide));
    EXPECT_FALSE(nxFileHelper::CreateDirectoryA(place + "/no/parents"));
    std::string const failed = "Failed to create directory ";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              failed + narrow + ", errno: 17\n" + failed + place + "/no/parents, errno: 2\n");
    EXPECT_EQ(::rmdir(narrow.c_str()), 0);
    EXPECT_FALSE(nxFileHelper::DoesDirectoryExist(std::wstring(1, wchar_t{0xD800}))); // no character
}

TEST(nxFileHelper, ReadsTheLastLineWithoutItsEnd)
{
    // The content, the length and the line, which is "old" when it is left alone.
    using Row = std::tuple<std::string, unsigned int, std::string>;
    for (auto const& [content, maxLength, expected] :
         {Row{"a\nb\r\n", 100, "b"}, Row{"a\nb", 100, "b"}, Row{"one", 100, "one"}, Row{"\n", 100, "old"},
          Row{"\r\n", 100, ""}, Row{"a\n\n", 100, "a\n"}, // only the very last line feed is passed over
          Row{"first\nsecond\n", 4, "ond"},               // cut at the front
          Row{"first\nsecond\n", 1, "old"}, Row{"first\nsecond", 7, "second"}, Row{"a\rb\r", 100, "a\rb\r"},
          Row{"", 10, "old"}})
    {
        TestFile const file(content);
        std::FILE* const stream = std::fopen(file.path.c_str(), "rb");
        std::string line("old");
        nxErrorEnum const result = nxFileHelper::GetLastLineOfFile(stream, maxLength, line);
        EXPECT_TRUE(content.empty() ? result == NX_ERR_FILE_READ_ERR : result.IsOK()) << content;
        EXPECT_EQ(line, expected) << content;
        EXPECT_EQ(std::ftell(stream), static_cast<long>(content.size()));
        (void)std::fclose(stream);
    }
    std::string line("old");
    std::FILE* const pipe = ::popen("true", "r");
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(nullptr, 10, line), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(nxFileHelper::GetLastLineOfFile(pipe, 0, line), NX_ERR_INVALID_PARAMETER);
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
          Row{".hidden", "", ".hidden"}, Row{"end.", "end", "."}, Row{"", "", "old"}})
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
