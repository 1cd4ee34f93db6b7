#include "core/text/nxCSVFileReader.h"

#include "core/text/nxBlanks.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace
{

constexpr char quoteCharacter = '"';
constexpr std::size_t maximumLineLength = 8191;
constexpr long smallestBatchedFile = 1024 * 1024; // smaller ones would leave most of a region unused

struct FileCloser
{
    void operator()(std::FILE* file) const
    {
        (void)std::fclose(file);
    }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// 0 for what has no size, such as a pipe.
long GetSize(std::FILE* file)
{
    if (std::fseek(file, 0, SEEK_END) != 0)
        return 0;
    long const size = std::ftell(file);
    std::rewind(file);
    return size;
}

// How much of a file `bytes` are; all of it where its size is not known.
double GetPart(std::size_t bytes, long size)
{
    return size > 0 ? static_cast<double>(bytes) / static_cast<double>(size) : 1.0;
}

// Hands out the lines of a file, which is read in blocks.
class LineSource
{
public:
    enum class Outcome
    {
        line,
        end,
        failure
    };

    explicit LineSource(std::FILE* file) : _file(file), _buffer(new char[bufferSize])
    {
    }

    // The line comes without its line feed and stays valid until the next call.
    Outcome Next(std::string_view& line)
    {
        std::size_t searched = 0; // bytes of the line that are known to hold no line feed
        for (;;)
        {
            char const* const start = _buffer.get() + _begin;
            std::size_t const available = _end - _begin;
            void const* const lineFeed = std::memchr(start + searched, '\n', available - searched);
            if (lineFeed != nullptr)
            {
                auto const length = static_cast<std::size_t>(static_cast<char const*>(lineFeed) - start);
                return _Take(length, length + 1, line);
            }
            if (available > maximumLineLength)
                return Outcome::failure;
            searched = available;
            if (!_Fill())
                return _TakeLast(line);
        }
    }

    std::size_t GetBytesTaken() const
    {
        return _bytesTaken;
    }

private:
    static constexpr std::size_t blockSize = 256 * 1024;
    static constexpr std::size_t bufferSize = blockSize + maximumLineLength;

    Outcome _Take(std::size_t length, std::size_t lengthWithEnd, std::string_view& line)
    {
        if (length > maximumLineLength)
            return Outcome::failure;
        line = std::string_view(_buffer.get() + _begin, length);
        _begin += lengthWithEnd;
        _bytesTaken += lengthWithEnd;
        return Outcome::line;
    }

    // A last line needs no line feed; a file that ends in one has no empty line behind it.
    Outcome _TakeLast(std::string_view& line)
    {
        if (std::ferror(_file) != 0)
            return Outcome::failure;
        std::size_t const length = _end - _begin;
        return length == 0 ? Outcome::end : _Take(length, length, line);
    }

    // Moves the rest of the last block to the front and reads another behind it; false when there is none.
    bool _Fill()
    {
        std::memmove(_buffer.get(), _buffer.get() + _begin, _end - _begin);
        _end -= _begin;
        _begin = 0;
        std::size_t const count = _Read(_buffer.get() + _end, bufferSize - _end);
        _end += count;
        return count != 0;
    }

    // A signal that a handler took is no failure.
    std::size_t _Read(char* out, std::size_t size)
    {
        for (;;)
        {
            std::size_t const count = std::fread(out, 1, size, _file);
            if (count != 0 || std::ferror(_file) == 0 || errno != EINTR)
                return count;
            std::clearerr(_file);
        }
    }

    std::FILE* _file;
    std::unique_ptr<char[]> _buffer;
    std::size_t _begin = 0; // the bytes not yet handed out
    std::size_t _end = 0;
    std::size_t _bytesTaken = 0;
};

} // namespace

nxCSVFileReader::nxCSVFileReader(char separator, bool useQuotes, nxCSVFileReaderCallback* callback)
    : _separator(separator), _useQuotes(useQuotes), _callback(callback)
{
}

nxCSVFileReader::~nxCSVFileReader() = default;

// Never destroyed: readers may live as long as the process.
nxCSVFileReaderCallback* nxCSVFileReader::_GetDefaultCallback()
{
    static constinit nxCSVFileReaderCallback callback;
    return &callback;
}

nxErrorEnum nxCSVFileReader::ReadFile(std::string const& path)
{
    File const file(std::fopen(path.c_str(), "r"));
    if (file == nullptr)
        return nxErrorEnum(NX_ERR_CSV_FILE_READ_ERROR);
    long const size = GetSize(file.get());
    std::size_t const rowsBefore = _rows.size();
    LineSource source(file.get());
    nxCSVRowMemory::Batch const batch(size > smallestBatchedFile);
    std::string row;
    for (;;)
    {
        std::string_view line;
        switch (source.Next(line))
        {
        case LineSource::Outcome::line: break;
        case LineSource::Outcome::end: return nxErrorEnum();
        case LineSource::Outcome::failure: return nxErrorEnum(NX_ERR_CSV_FILE_READ_ERROR);
        }
        row = nxTrimBlanks(line.data(), line.data() + line.size());
        if (!IsCommentRow(row))
        {
            _MakeRoomForRow(rowsBefore, GetPart(source.GetBytesTaken(), size));
            _AddLine(row);
        }
    }
}

void nxCSVFileReader::_AddLine(std::string const& line)
{
    nxCSVFileRow row;
    if (_useQuotes)
        row.SetRowData(line, _separator, quoteCharacter);
    else
        row.SetRowData(line, _separator);
    _rows.push_back(std::move(row));
}

// Grows by what the part of the file that was read lets one expect of the rest, so that a large file moves its rows
// only a few times and little room is left over.
void nxCSVFileReader::_MakeRoomForRow(std::size_t rowsBefore, double partRead)
{
    std::size_t const count = _rows.size();
    if (count < _rows.capacity())
        return;
    std::size_t const least = count + count / 2 + 64;
    std::size_t const most = count * 8 + 64;
    std::size_t expected = least;
    if (partRead > 0.0 && partRead < 1.0)
    {
        constexpr double margin = 1.02;
        double const rows = static_cast<double>(count - rowsBefore + 1) / partRead * margin;
        expected = rowsBefore + static_cast<std::size_t>(std::min(rows, static_cast<double>(most)));
    }
    _rows.reserve(std::clamp(expected, least, most));
}

unsigned int nxCSVFileReader::GetRowCount() const
{
    return static_cast<unsigned int>(_rows.size());
}

nxCSVFileRow const* nxCSVFileReader::GetRow(unsigned int index) const
{
    return index < _rows.size() ? &_rows[index] : nullptr;
}

bool nxCSVFileReader::IsCommentRow(std::string const& row)
{
    return _callback->IsCommentRow(row);
}

void nxCSVFileReader::GetAsCSVColumn(std::string const& value, std::string& column)
{
    std::string text;
    text.reserve(value.size() * 2 + 2);
    bool commaSeen = false;
    bool quoteSeen = false;
    for (char const byte : value)
    {
        commaSeen = commaSeen || byte == ',';
        quoteSeen = quoteSeen || byte == quoteCharacter;
        if (quoteSeen) // not only for the quote itself: from the first one on, every byte is preceded by one
            text.push_back(quoteCharacter);
        text.push_back(byte);
    }
    if (commaSeen || quoteSeen)
    {
        text.insert(text.begin(), quoteCharacter);
        text.push_back(quoteCharacter);
    }
    column = std::move(text);
}

std::string nxCSVFileReader::GetAsCSVColumn(std::string const& value)
{
    std::string column;
    GetAsCSVColumn(value, column);
    return column;
}
