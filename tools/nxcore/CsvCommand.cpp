// `nxcore csv`: the rows of a file of delimited text as an aligned table.

#include "Arguments.h"
#include "Commands.h"
#include "Result.h"
#include "RowLines.h"
#include "Terminal.h"

#include "core/text/nxCSVFileReader.h"
#include "core/text/nxStringParser.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

namespace nxTool
{
namespace
{
constexpr Option options[] = {
    {"separator", "C", "the byte between columns, or \"tab\"; a comma unless given"},
    {"quotes", "", "columns may stand in double quotes"},
    {"columns", "LIST", "only these columns, in this order, such as 3,1"},
};
constexpr std::size_t gapBetweenColumns = 2;

/// Shows on a terminal how far a long file has been read.
class Progress
{
public:
    explicit Progress(std::string const& path) : _isShown(IsTerminal(Stream::Error))
    {
        std::error_code unknown; // as for a pipe; nxFileHelper's sizes end at 2 GiB
        std::uintmax_t const size = std::filesystem::file_size(path, unknown);
        if (!unknown)
            _total = " of " + InMiB(size);
    }

    ~Progress()
    {
        if (_bytesShown > 0)
            std::fputs("\r\x1b[K", stderr);
    }

    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    void Add(std::size_t bytes)
    {
        constexpr std::size_t step = 8 * 1024 * 1024;
        _bytesRead += bytes;
        if (!_isShown || _bytesRead - _bytesShown < step)
            return;
        _bytesShown = _bytesRead;
        std::fprintf(stderr, "\rreading: %s%s", InMiB(_bytesRead).c_str(), _total.c_str());
    }

private:
    static std::string InMiB(std::uintmax_t bytes)
    {
        return std::to_string(bytes / (1024 * 1024)) + " MiB";
    }

    std::string _total; // empty where it is not known
    bool _isShown;
    std::size_t _bytesRead = 0;
    std::size_t _bytesShown = 0;
};

/// Follows a reader through a file: the lines that it leaves out, and how far it has come.
class SkippedLines : public RowLines
{
public:
    SkippedLines(std::string const& path, std::optional<char> separatorOfQuoted)
        : RowLines(separatorOfQuoted), _progress(path)
    {
    }

    bool IsCommentRow(std::string const& row) override
    {
        _progress.Add(row.size() + 1);
        bool const isSkipped = RowLines::IsCommentRow(row);
        if (isSkipped)
            (row.empty() ? emptyLines : commentLines).push_back(GetLineCount());
        return isSkipped;
    }

    std::vector<long long> emptyLines;
    std::vector<long long> commentLines;

private:
    Progress _progress;
};

struct Request
{
    std::string file;
    char separator = ',';
    bool useQuotes = false;
    std::vector<unsigned int> columns; ///< from 0; empty for all
};

std::optional<char> ReadSeparator(std::string const& text)
{
    if (text == "tab" || text == "\\t")
        return '\t';
    return text.size() == 1 ? std::optional<char>(text.front()) : std::nullopt;
}

/// Empty for a list that is none.
std::vector<unsigned int> ReadColumns(std::string const& list)
{
    std::vector<unsigned int> columns;
    nxStringParser parser(list);
    while (!parser.IsFullyParsed())
    {
        std::string const text = parser.GetSubString(',');
        unsigned int number = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number == 0)
            return {};
        columns.push_back(number - 1);
    }
    return columns;
}

std::optional<Request> ReadRequest(Arguments const& arguments, Result& result)
{
    Request request;
    request.file = arguments.Get(0);
    request.useQuotes = arguments.Has("quotes");
    std::string const separatorText = arguments.GetOption("separator", ",");
    std::optional<char> const separator = ReadSeparator(separatorText);
    if (!separator)
    {
        result.AddProblem("-separator", "one byte or \"tab\" expected, not " + separatorText);
        return std::nullopt;
    }
    request.separator = *separator;
    if (auto const list = arguments.GetOption("columns"))
    {
        request.columns = ReadColumns(*list);
        if (request.columns.empty())
        {
            result.AddProblem("-columns", "numbers from 1 with commas between them expected, not " + *list);
            return std::nullopt;
        }
    }
    return request;
}

/// The columns that are shown, where `width` is the number of columns of the widest row.
std::vector<unsigned int> ShownColumns(Request const& request, unsigned int width)
{
    if (!request.columns.empty())
        return request.columns;
    std::vector<unsigned int> columns(width);
    for (unsigned int index = 0; index < width; ++index)
        columns[index] = index;
    return columns;
}

/// A line for each row: a file of millions of rows is not kept a second time as a table.
void AddText(nxCSVFileReader const& reader, RowLines const& lines, std::vector<unsigned int> const& columns,
             Result& result)
{
    std::string const lineTitle = "Line";
    std::size_t const lineWidth = std::max(lineTitle.size(), std::to_string(lines.GetLineCount()).size());
    std::vector<std::size_t> widths;
    std::string title = lineTitle;
    title.insert(0, lineWidth - title.size(), ' ');
    for (unsigned int const column : columns)
    {
        std::string const name = std::to_string(column + 1);
        std::size_t width = name.size();
        for (unsigned int row = 0; row < reader.GetRowCount(); ++row)
            width = std::max(width, DisplayWidth(Printable(reader.GetRow(row)->GetColValue(column))));
        widths.push_back(width);
        title.append(gapBetweenColumns, ' ').append(name).append(width - name.size(), ' ');
    }
    result.AddLine(title.substr(0, title.find_last_not_of(' ') + 1));
    for (unsigned int row = 0; row < reader.GetRowCount(); ++row)
    {
        std::string line = std::to_string(lines.GetLine(row));
        line.insert(0, lineWidth - line.size(), ' ');
        for (std::size_t i = 0; i < columns.size(); ++i)
        {
            std::string const text = Printable(reader.GetRow(row)->GetColValue(columns[i]));
            line.append(gapBetweenColumns, ' ').append(text).append(widths[i] - DisplayWidth(text), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        result.AddLine(std::move(line));
    }
}

void AddJson(nxCSVFileReader const& reader, RowLines const& lines, std::vector<unsigned int> const& columns,
             Result& result)
{
    Json list = Json::array();
    for (unsigned int row = 0; row < reader.GetRowCount(); ++row)
    {
        Json values = Json::array();
        for (unsigned int const column : columns)
            if (column < reader.GetRow(row)->GetColCount())
                values.push_back(reader.GetRow(row)->GetColValue(column));
        list.push_back({{"line", lines.GetLine(row)}, {"columns", std::move(values)}});
    }
    result.AddValue("rows", std::move(list));
}

Cell Listed(std::vector<long long> const& lines)
{
    constexpr std::size_t mostShown = 10;
    std::string text = std::to_string(lines.size());
    for (std::size_t i = 0; i < std::min(lines.size(), mostShown); ++i)
        text += (i == 0 ? ": line " : ", ") + std::to_string(lines[i]);
    return Cell(text + (lines.size() > mostShown ? ", ..." : ""), lines);
}

Status Run(Arguments const& arguments, Result& result)
{
    std::optional<Request> const request = ReadRequest(arguments, result);
    if (!request)
        return Status::Unusable;

    SkippedLines lines(request->file,
                       request->useQuotes ? std::optional<char>(request->separator) : std::nullopt);
    nxCSVFileReader reader(request->separator, request->useQuotes, &lines);
    bool const isWhole = ReadRows(reader, request->file, lines, result);
    if (!isWhole && lines.GetLineCount() == 0)
        return Status::Unusable;

    unsigned int width = 0;
    long long widestLine = 0;
    for (unsigned int row = 0; row < reader.GetRowCount(); ++row)
    {
        if (reader.GetRow(row)->GetColCount() > width)
        {
            width = reader.GetRow(row)->GetColCount();
            widestLine = lines.GetLine(row);
        }
    }
    std::vector<unsigned int> const columns = ShownColumns(*request, width);
    if (arguments.Has("json"))
        AddJson(reader, lines, columns, result);
    else
        AddText(reader, lines, columns, result);
    result.AddField("rowCount", "rows", reader.GetRowCount());
    result.AddField("widest", "widest row",
                    Cell(std::to_string(width) + " columns, line " + std::to_string(widestLine),
                         {{"columns", width}, {"line", widestLine}}));
    result.AddField("emptyLines", "empty lines", Listed(lines.emptyLines));
    result.AddField("commentLines", "comment lines", Listed(lines.commentLines));
    return Status::Good;
}
} // namespace

Command const csvCommand = {
    .name = "csv",
    .arguments = "FILE",
    .summary = "show the rows of a file of delimited text",
    .details =
        "Shows the rows of FILE in columns, each with its line, and then how many rows there are, the\n"
        "widest of them, and the lines that were skipped: empty ones, and comments that begin with ; or #.\n"
        "A line that is longer than 8191 bytes ends the reading; the rows before it are shown.",
    .example = "nxcore csv examples/products.csv -columns 1,3",
    .options = options,
    .fewestArguments = 1,
    .mostArguments = 1,
    .completes = Completes::File,
    .run = Run,
};
} // namespace nxTool
