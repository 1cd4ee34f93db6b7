// Fields of texts, rows and files, and bytes as hexadecimal text, so far as no fuzz target has them: two ways
// of parsing on one cursor, rows that are added to, and files of any size and such as can't be read.
#include "core/text/nxCSVFileReader.h"
#include "core/text/nxAlgorithm.h"
#include "core/text/nxByteArray.h"
#include "core/text/nxStringParser.h"
#include "tests/text/nxTestFile.h"

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>

#include <sys/stat.h>

static_assert(std::is_nothrow_move_constructible_v<nxCSVFileRow> && std::is_copy_assignable_v<nxCSVFileRow>,
              "rows are moved when a list of them grows");
static_assert(sizeof(nxCSVFileRow) == sizeof(void*) + sizeof(std::vector<std::string>));

namespace
{

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

class StarIsComment : public nxCSVFileReaderCallback
{
public:
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
    nxTestFile const file(" * \n#a\n\n");
    nxCSVFileReader reader(',', false, &callback);
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_EQ(callback.seen, (std::vector<std::string>{"*", "#a", ""}));
    nxCSVFileReader const copy(reader);
    for (std::string const& path :
         {file.Directory(), std::string("/proc/self/mem"), std::string(), file.Path() + ".none"})
        EXPECT_EQ(reader.ReadFile(path), NX_ERR_CSV_FILE_READ_ERROR)
            << path; // the second opens, and fails to read
    EXPECT_EQ(GetText(reader), "#a\n\n");
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK()); // adds to the rows held
    EXPECT_EQ(GetText(reader), "#a\n\n#a\n\n");
    EXPECT_EQ(GetText(copy), "#a\n\n");
}

// Lines lie across the blocks that the file is read in at every offset; a pipe has no size to go by.
TEST(nxCSVFileReader, ReadsLongFilesAndPipesAlike)
{
    std::string content;
    for (unsigned int i = 0; i < 60000; ++i)
        content += std::to_string(i) + "|" + std::string(i % 97, 'x') + "\n";
    for (bool const isPipe : {false, true})
    {
        nxTestFile const file;
        ASSERT_EQ(isPipe ? ::mkfifo(file.Path().c_str(), 0600) : 0, 0);
        std::thread writer([&] { file.Write(content); });
        if (!isPipe)
            writer.join();
        nxCSVFileReader reader('|');
        EXPECT_TRUE(reader.ReadFile(file.Path()).IsOK());
        EXPECT_TRUE(GetText(reader) == content);
        if (isPipe)
            writer.join();
    }
}
