#pragma once

#include "core/text/nxCSVFileReaderCallback.h"

#include <string>
#include <vector>

namespace nxTool
{
/// Notes the line of each row that a reader of CSV files hands out, since the reader doesn't keep it.
class RowLines : public nxCSVFileReaderCallback
{
public:
    bool IsCommentRow(std::string const& row) override
    {
        ++_lineCount;
        bool const isComment = nxCSVFileReaderCallback::IsCommentRow(row);
        if (!isComment)
            _lines.push_back(_lineCount);
        return isComment;
    }

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

private:
    std::vector<long long> _lines;
    long long _lineCount = 0;
};
} // namespace nxTool
