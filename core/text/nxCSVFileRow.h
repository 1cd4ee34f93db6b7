#pragma once

#include "core/platform/nxExport.h"
#include "core/text/nxCSVColumnAllocator.h"

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// One row of a file of delimited text.

/// The columns of a row, in order. A plain value; moving it costs three pointers and never fails.
class NX_CORE_API nxCSVFileRow
{
public:
    nxCSVFileRow() = default;
    nxCSVFileRow(nxCSVFileRow const& other) = default;
    nxCSVFileRow(nxCSVFileRow&& other) noexcept = default;
    nxCSVFileRow& operator=(nxCSVFileRow const& other) = default;
    nxCSVFileRow& operator=(nxCSVFileRow&& other) noexcept = default;
    virtual ~nxCSVFileRow();

    /// Adds the columns of `row` behind those already there, each trimmed of blanks, tabs, CR and LF on both sides.
    /// An empty row is one empty column, and a trailing separator adds an empty one. When memory runs out, no column
    /// is added.
    void SetRowData(std::string const& row, char separator);

    /// The same with columns that may be quoted: between quotes a separator is text and a doubled quote is one quote.
    /// What stands between a separator and the quotes is dropped; blanks just inside the quotes are trimmed too. A
    /// separator behind the quotes of the last column adds no empty one, and a missing closing quote is taken as if
    /// it stood at the end of the row.
    void SetRowData(std::string const& row, char separator, char quote);

    /// Replaces `row` by the columns with the separator in between. Nothing is quoted.
    void GetRowData(std::string& row, char separator) const;

    void AddColumn(std::string const& column);
    void Clear();
    unsigned int GetColCount() const;

    /// @return a copy; empty if `index` is not below the count.
    std::string GetColValue(unsigned int index) const;

private:
    void _AddTrimmed(char const* begin, char const* end, char const* textEnd);
    char const* _AddQuoted(char const* openingQuote, char const* end, char separator, char quote);
    void _ReserveFor(std::string const& row, char separator);

    std::vector<std::string, nxCSVColumnAllocator<std::string>> _columns;
};
