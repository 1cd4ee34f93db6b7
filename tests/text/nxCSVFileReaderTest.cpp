// What nxCSVFileReader makes of whole files: comments, ends of lines, long lines and what can't be read.
#include "core/text/nxCSVFileReader.h"
#include "tests/text/nxTestFile.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <thread>
#include <utility>

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

constexpr std::size_t longestLine = 8191;

} // namespace

TEST(nxCSVFileReader, ReadsLines)
{
    for (auto const& [content, rows] : {std::pair("", ""),
                                        {"\n", ""},
                                        {"a,b\nc,d\n", "a|b\nc|d\n"},
                                        {"a,b\r\nc,d", "a|b\nc|d\n"}, // the last line needs no line feed
                                        {"a\n\n \t\n  # note\n;x\nb", "a\nb\n"},
                                        {"a,\"b\nc\",d\n", "a|\"b\nc\"|d\n"},
                                        {" a , b \n,\n", "a|b\n|\n"}})
    {
        nxTestFile const file(content);
        nxCSVFileReader reader;
        EXPECT_TRUE(reader.ReadFile(file.Path()).IsOK()) << content;
        EXPECT_EQ(GetText(reader), rows) << content;
    }
}

TEST(nxCSVFileReader, HonoursSeparatorAndQuotes)
{
    nxTestFile const file("a;\"b;c\"\n\"open;d\n\te\tf\n");
    nxCSVFileReader reader(';', true);
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_EQ(GetText(reader), "a|b;c\nopen;d\ne\tf\n"); // quotes that stay open end with their line

    nxTestFile const tabs("\ta\t\tb\t\n");
    nxCSVFileReader tabReader('\t');
    ASSERT_TRUE(tabReader.ReadFile(tabs.Path()).IsOK());
    EXPECT_EQ(GetText(tabReader), "a||b\n"); // the line is trimmed first, which takes the outer columns
}

TEST(nxCSVFileReader, AsksTheCallbackWithTheTrimmedLine)
{
    StarIsComment callback;
    nxTestFile const file(" * \n#a\n\n");
    nxCSVFileReader reader(',', false, &callback);
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_EQ(callback.seen, (std::vector<std::string>{"*", "#a", ""}));
    EXPECT_EQ(GetText(reader), "#a\n\n");
    nxCSVFileReader const copy(reader);
    EXPECT_EQ(GetText(copy), "#a\n\n");
}

TEST(nxCSVFileReader, AddsToTheRowsHeld)
{
    nxTestFile const file("a\nb\n");
    nxCSVFileReader reader;
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_EQ(reader.ReadFile(file.Path() + ".none"), NX_ERR_CSV_FILE_READ_ERROR);
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_EQ(GetText(reader), "a\nb\na\nb\n");
    EXPECT_EQ(reader.GetRow(reader.GetRowCount()), nullptr);
}

TEST(nxCSVFileReader, TakesLinesUpToTheLimitAndEndsAtALongerOne)
{
    for (std::size_t length = longestLine - 1; length <= longestLine + 2; ++length)
    {
        for (char const* const end : {"", "\n", "\nb\n"})
        {
            nxTestFile const file("a\n" + std::string(length, 'x') + end);
            nxCSVFileReader reader;
            nxErrorEnum const result = reader.ReadFile(file.Path());
            bool const fits = length <= longestLine;
            EXPECT_EQ(result, fits ? 0u : NX_ERR_CSV_FILE_READ_ERROR) << length << end;
            unsigned int const rows = !fits ? 1 : *end != '\0' && end[1] == 'b' ? 3 : 2;
            EXPECT_EQ(reader.GetRowCount(), rows) << length << end;
        }
    }
}

TEST(nxCSVFileReader, RefusesWhatCantBeRead)
{
    nxTestFile const file("a\n");
    nxCSVFileReader reader;
    EXPECT_EQ(reader.ReadFile(file.Directory()), NX_ERR_CSV_FILE_READ_ERROR);
    EXPECT_EQ(reader.ReadFile("/proc/self/mem"), NX_ERR_CSV_FILE_READ_ERROR); // opens, and fails to read
    EXPECT_EQ(reader.ReadFile(""), NX_ERR_CSV_FILE_READ_ERROR);
    EXPECT_EQ(reader.GetRowCount(), 0u);
}

// Lines lie across the blocks that the file is read in at every offset; a pipe has no size to go by.
TEST(nxCSVFileReader, ReadsLongFilesAndPipesAlike)
{
    std::string content;
    std::string expected;
    for (unsigned int i = 0; i < 60000; ++i)
    {
        std::string const line = std::to_string(i) + "," + std::string(i % 97, 'x');
        content += line + "\n";
        expected += std::to_string(i) + "|" + std::string(i % 97, 'x') + "\n";
    }
    nxTestFile const file(content);
    nxCSVFileReader reader;
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_TRUE(GetText(reader) == expected);

    nxTestFile const pipe;
    ASSERT_EQ(::mkfifo(pipe.Path().c_str(), 0600), 0);
    std::thread writer([&] { pipe.Write(content); });
    nxCSVFileReader pipeReader;
    EXPECT_TRUE(pipeReader.ReadFile(pipe.Path()).IsOK());
    writer.join();
    EXPECT_TRUE(GetText(pipeReader) == expected);
}

// Rows of large files lie in memory of their own kind, which must not show.
TEST(nxCSVFileReader, RowsOfALargeFileAreValuesLikeAnyOther)
{
    class KeepsARow : public nxCSVFileReaderCallback
    {
    public:
        bool IsCommentRow(std::string const& line) override
        {
            if (row.GetColCount() == 0)
                row.SetRowData(line, ','); // in the midst of the reading
            return false;
        }

        nxCSVFileRow row;
    };
    constexpr unsigned int rowCount = 100000;
    std::string const line = "1,2,3,4,5,6,7,8,9,text that is kept on the heap";
    std::string content;
    for (unsigned int i = 0; i < rowCount; ++i)
        content += line + "\n";
    nxTestFile const file(content);
    KeepsARow callback;
    nxCSVFileRow copiedRow;
    nxCSVFileReader kept(',', false, &callback);
    {
        nxCSVFileReader reader(',', false, &callback);
        ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
        ASSERT_EQ(reader.GetRowCount(), rowCount);
        copiedRow = *reader.GetRow(rowCount - 1);
        std::thread([&] { kept = reader; }).join();
    }
    std::string joined;
    for (nxCSVFileRow const* const row :
         {&std::as_const(copiedRow), &std::as_const(callback.row), kept.GetRow(0), kept.GetRow(rowCount - 1)})
    {
        row->GetRowData(joined, ',');
        EXPECT_EQ(joined, line);
    }
}

TEST(nxCSVFileReader, MakesColumns)
{
    struct
    {
        char const* value;
        char const* column;
    } const rows[] = {
        {"", ""},
        {"plain;text\n", "plain;text\n"},
        {"a,b", "\"a,b\""},
        {"ab\"cd", "\"ab\"\"\"c\"d\""}, // every byte from the first quote on is preceded by one
        {"\"", "\"\"\"\""},
    };
    for (auto const& row : rows)
    {
        std::string column("old");
        nxCSVFileReader::GetAsCSVColumn(row.value, column);
        EXPECT_EQ(column, row.column);
        EXPECT_EQ(nxCSVFileReader::GetAsCSVColumn(row.value), row.column);
    }
}
