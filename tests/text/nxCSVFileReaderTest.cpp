// What nxCSVFileReader makes of files of any size and of what can't be read; a fuzz target holds their lines.
#include "core/text/nxCSVFileReader.h"
#include "tests/text/nxTestFile.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <thread>

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

TEST(nxCSVFileReader, AsksTheCallbackWithTheTrimmedLine)
{
    StarIsComment callback;
    nxTestFile const file(" * \n#a\n\n");
    nxCSVFileReader reader(',', false, &callback);
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_EQ(callback.seen, (std::vector<std::string>{"*", "#a", ""}));
    EXPECT_EQ(GetText(reader), "#a\n\n");
    nxCSVFileReader const copy(reader);
    EXPECT_EQ(reader.ReadFile(file.Path() + ".none"), NX_ERR_CSV_FILE_READ_ERROR);
    ASSERT_TRUE(reader.ReadFile(file.Path()).IsOK()); // adds to the rows held
    EXPECT_EQ(GetText(reader), "#a\n\n#a\n\n");
    EXPECT_EQ(GetText(copy), "#a\n\n");
    EXPECT_EQ(copy.GetRow(copy.GetRowCount()), nullptr);
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
    for (unsigned int i = 0; i < 60000; ++i)
        content += std::to_string(i) + "|" + std::string(i % 97, 'x') + "\n";
    nxTestFile const file(content);
    nxCSVFileReader reader('|');
    EXPECT_TRUE(reader.ReadFile(file.Path()).IsOK());
    EXPECT_TRUE(GetText(reader) == content);

    nxTestFile const pipe;
    ASSERT_EQ(::mkfifo(pipe.Path().c_str(), 0600), 0);
    std::thread writer([&] { pipe.Write(content); });
    nxCSVFileReader pipeReader('|');
    EXPECT_TRUE(pipeReader.ReadFile(pipe.Path()).IsOK());
    writer.join();
    EXPECT_TRUE(GetText(pipeReader) == content);
}
