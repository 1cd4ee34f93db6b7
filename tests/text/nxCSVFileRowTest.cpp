// How nxCSVFileRow splits a row into columns, quoted or not, and joins them again.
#include "core/text/nxCSVFileRow.h"
#include "core/text/nxStringHelper.h"
#include "core/text/nxStringParser.h"

#include <gtest/gtest.h>

#include <random>
#include <type_traits>

static_assert(std::is_nothrow_move_constructible_v<nxCSVFileRow> && std::is_copy_assignable_v<nxCSVFileRow>,
              "rows are moved when a list of them grows");
static_assert(sizeof(nxCSVFileRow) == sizeof(void*) + sizeof(std::vector<std::string>));

namespace
{

std::vector<std::string> GetColumns(nxCSVFileRow const& row)
{
    std::vector<std::string> columns;
    for (unsigned int i = 0; i < row.GetColCount(); ++i)
        columns.push_back(row.GetColValue(i));
    return columns;
}

// What nxStringParser makes of a text, trimmed.
template <typename... Characters>
std::vector<std::string> GetFields(std::string const& text, Characters... characters)
{
    std::vector<std::string> fields;
    nxStringParser parser(text);
    while (!parser.IsFullyParsed())
    {
        fields.push_back(nxStringHelper::GetLeftTrimmed(parser.GetSubString(characters...)));
        nxStringHelper::RightTrim(fields.back());
    }
    return fields;
}

struct SplitRow
{
    std::string text;
    std::vector<std::string> plain;
    std::vector<std::string> quoted;
};

} // namespace

TEST(nxCSVFileRow, SplitsIntoTrimmedColumns)
{
    SplitRow const rows[] = {
        {"", {""}, {""}},
        {"a", {"a"}, {"a"}},
        {"a,", {"a", ""}, {"a", ""}},
        {",", {"", ""}, {"", ""}},
        {" a\t,\r b \n", {"a", "b"}, {"a", "b"}},
        {"a, \"b, c\" ,d", {"a", "\"b", "c\"", "d"}, {"a", "b, c", "d"}},
        {"\"a\",", {"\"a\"", ""}, {"a"}}, // no empty column behind a quoted one
        {"\"a\",,", {"\"a\"", "", ""}, {"a", "", ""}},
        {"\"a\" x , b", {"\"a\" x", "b"}, {"a", "b"}},
        {"ab\"cd\"ef,g", {"ab\"cd\"ef", "g"}, {"cd", "g"}},
        {"\" a \"", {"\" a \""}, {"a"}}, // trimmed after the quotes are gone
        {"\"a\"\"b\"", {"\"a\"\"b\""}, {"a\"b"}},
        {"\"a,b", {"\"a", "b"}, {"a,b"}}, // ends inside quotes
        {"\"", {"\""}, {""}},
        {"\"\"", {"\"\""}, {""}},
        {"\"\"\"\"", {"\"\"\"\""}, {"\""}},
        {std::string("a\0b,c", 5), {std::string("a\0b", 3), "c"}, {std::string("a\0b", 3), "c"}},
    };
    for (SplitRow const& row : rows)
    {
        nxCSVFileRow plain;
        plain.SetRowData(row.text, ',');
        EXPECT_EQ(GetColumns(plain), row.plain) << row.text;
        nxCSVFileRow quoted;
        quoted.SetRowData(row.text, ',', '"');
        EXPECT_EQ(GetColumns(quoted), row.quoted) << row.text;
    }
}

// The row walks its text by itself, for speed; nxStringParser says what must come out.
TEST(nxCSVFileRow, SplitsAsTheParserDoes)
{
    std::mt19937 random(20240131);
    char const alphabet[] = {'a', ',', '"', ' ', '\0', ';'};
    for (int round = 0; round < 20000; ++round)
    {
        std::string text;
        for (auto length = random() % 14; length != 0; --length)
            text.push_back(alphabet[random() % sizeof(alphabet)]);
        char const separator = round % 5 == 0 ? '"' : ','; // also where separator and quote are the same
        std::vector<std::string> const plain = GetFields(text, separator);
        std::vector<std::string> const quoted = GetFields(text, separator, '"');
        nxCSVFileRow plainRow;
        plainRow.SetRowData(text, separator);
        ASSERT_EQ(GetColumns(plainRow), plain) << text;
        nxCSVFileRow quotedRow;
        quotedRow.SetRowData(text, separator, '"');
        ASSERT_EQ(GetColumns(quotedRow), quoted) << text;
    }
}

TEST(nxCSVFileRow, KeepsColumnsUntilCleared)
{
    nxCSVFileRow row;
    row.AddColumn(" raw ");
    row.SetRowData("a;b", ';');
    std::string text("old");
    row.GetRowData(text, '|');
    EXPECT_EQ(text, " raw |a|b");
    EXPECT_EQ(row.GetColValue(3), "");
    row.Clear();
    row.GetRowData(text, '|');
    EXPECT_EQ(text, "");
    EXPECT_EQ(row.GetColCount(), 0u);
}
