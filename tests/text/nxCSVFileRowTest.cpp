// How nxCSVFileRow splits a row into trimmed columns, quoted or not, and joins them again.
#include "core/text/nxCSVFileRow.h"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(std::is_nothrow_move_constructible_v<nxCSVFileRow> && std::is_copy_assignable_v<nxCSVFileRow>,
              "rows are moved when a list of them grows");
static_assert(sizeof(nxCSVFileRow) == sizeof(void*) + sizeof(std::vector<std::string>));

TEST(nxCSVFileRow, AddsColumnsUntilCleared)
{
    nxCSVFileRow row;
    row.AddColumn(" raw ");
    row.SetRowData(" a\t; \"b\" \n", ';');
    row.SetRowData("\" c;d \" x ;\"e\";", ';', '"'); // trimmed after the quotes are gone
    std::string text("old");
    row.GetRowData(text, '|');
    EXPECT_EQ(text, " raw |a|\"b\"|c;d|e");
    EXPECT_EQ(row.GetColValue(5), "");
    row.Clear();
    row.GetRowData(text, '|');
    EXPECT_EQ(text, "");
    EXPECT_EQ(row.GetColCount(), 0u);
}
