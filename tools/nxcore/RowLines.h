#pragma once

#include "core/text/nxCSVFileReader.h"

#include <optional>
#include <string>
#include <vector>

/// @file
/// Reading files of delimited text so that complaints can name the line.

namespace nxTool
{
class Result;

/// Notes the line of each row that a reader of CSV files hands out, since the reader doesn't keep it.
class RowLines : public nxCSVFileReaderCallback
{
public:
    RowLines() = default;

    /// @param separatorOfQuoted  of a reader whose columns may be quoted: lines that end inside quotes are noted too.
    explicit RowLines(std::optional<char> separatorOfQuoted) : _separatorOfQuoted(separatorOfQuoted)
    {
    }

    bool IsCommentRow(std::string const& row) override;

    /// The line of a row, counted from 1; rows from 0.
    long long GetLine(unsigned int row) const
    {
        return _lines[row];
    }

    /// All lines that were read.
    long long GetLineCount() const
    {
        return _lineCount;
    }

    /// Those that end inside quotes.
    std::vector<long long> const& GetOpenLines() const
    {
        return _openLines;
    }

private:
    std::optional<char> _separatorOfQuoted;
    std::vector<long long> _lines;
    std::vector<long long> _openLines;
    long long _lineCount = 0;
};

/// Reads a file with a reader that asks `lines`. Says why it can't be read or where the reading ended, and which lines end
/// inside quotes.
/// @return whether all of the file was read; else the reader holds the rows before the place where it ended.
bool ReadRows(nxCSVFileReader& reader, std::string const& path, RowLines const& lines, Result& result);
} // namespace nxTool
