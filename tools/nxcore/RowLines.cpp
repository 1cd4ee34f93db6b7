#include "RowLines.h"

#include "Result.h"

#include "core/text/nxFileHelper.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace nxTool
{
namespace
{
constexpr char quote = '"';

/// Behind the closing quote of what was opened before `position`, or npos when there is none.
std::size_t SkipQuoted(std::string_view row, std::size_t position)
{
    for (;;)
    {
        position = row.find(quote, position);
        if (position == std::string_view::npos)
            return position;
        if (++position >= row.size() || row[position] != quote)
            return position;
        ++position; // a doubled quote
    }
}

bool EndsInsideQuotes(std::string_view row, char separator)
{
    char const ends[] = {separator, quote};
    std::size_t position = 0;
    while ((position = row.find_first_of(std::string_view(ends, sizeof(ends)), position)) !=
           std::string_view::npos)
    {
        if (row[position++] == separator)
            continue;
        position = SkipQuoted(row, position);
        if (position == std::string_view::npos)
            return true;
        position = row.find(separator, position); // what stands between is dropped
        if (position == std::string_view::npos)
            return false;
        ++position;
    }
    return false;
}

/// The system's reason, empty when the file can be opened.
std::string WhyNotOpened(std::string const& path)
{
    std::FILE* const file = std::fopen(path.c_str(), "r");
    if (file == nullptr)
        return std::strerror(errno);
    (void)std::fclose(file);
    return {};
}

Problem WhyUnread(std::string const& path, long long linesRead)
{
    if (nxFileHelper::DoesDirectoryExist(path))
        return {path, 0, "", "is a directory"};
    if (std::string const reason = WhyNotOpened(path); !reason.empty())
        return {path, 0, "", "can't be opened: " + reason};
    return {path, linesRead + 1, "",
            "can't be read from this line on: it has more than 8191 bytes, or the file fails"};
}
} // namespace

bool RowLines::IsCommentRow(std::string const& row)
{
    ++_lineCount;
    if (nxCSVFileReaderCallback::IsCommentRow(row))
        return true;
    _lines.push_back(_lineCount);
    if (_separatorOfQuoted && EndsInsideQuotes(row, *_separatorOfQuoted))
        _openLines.push_back(_lineCount);
    return false;
}

bool ReadRows(nxCSVFileReader& reader, std::string const& path, RowLines const& lines, Result& result)
{
    bool const isWhole = reader.ReadFile(path).IsOK();
    if (!isWhole)
        result.AddProblem(WhyUnread(path, lines.GetLineCount()));
    for (long long const line : lines.GetOpenLines())
        result.AddProblem({path, line, "", "ends inside quotes"});
    return isWhole;
}
} // namespace nxTool
