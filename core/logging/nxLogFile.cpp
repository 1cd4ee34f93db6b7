#include "core/logging/nxLogFile.h"

#include "core/logging/nxLogLine.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogStampText.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

namespace
{

/// A line of the log that tells of lines that are missing before it.
std::string GetLossNotice(unsigned long long lines)
{
    std::string const message = std::to_string(lines) + " lines lost";
    nxLogStampText stampText;

    nxLogLine line;
    line.level = "ERR";
    line.stamp = stampText.Get(nxTimeStamp());
    line.hasThreadIndex = nxLogManager::GetInstance().GetLogThreadIndex();
    line.message = message;
    line.sourceFile = "nxFileLogDevice";
    return line.GetText();
}

/// @return false in want of memory.
bool MakeLossNotice(unsigned long long lines, std::string& notice)
{
    try
    {
        notice = GetLossNotice(lines);
        return true;
    }
    catch (std::bad_alloc const&)
    {
        return false;
    }
}

} // namespace

bool nxLogFile::Open(std::string path, std::size_t bufferSize)
{
    constexpr std::size_t usualSize = 4096;

    _path = std::move(path);
    _isRefused = false;
    if (!_file.Open(_path.c_str()))
        return false;
    _bufferSize = bufferSize != 0 ? bufferSize : usualSize;
    if (_capacity < _bufferSize)
        (void)_SetCapacity(_bufferSize);
    return true;
}

char* nxLogFile::Reserve(std::size_t size)
{
    if (!_isRefused && _Pending() != 0 && _Pending() + size > _bufferSize)
        Flush();
    if (!_MakeRoomForLength() || (_end + size > _capacity && !_MakeRoom(size)))
    {
        ++_lost;
        return nullptr;
    }
    return _buffer.get() + _end;
}

void nxLogFile::Commit(std::size_t size)
{
    _end += size;
    _lineLengths.push_back(size);
    if (_isRefused)
        _DropOldestLines();
}

void nxLogFile::Flush()
{
    if (!IsOpen() || (_lost == 0 && _Pending() == 0))
        return;
    unsigned long long const lost = _lost;
    std::string notice;
    if (lost != 0 && !MakeLossNotice(lost, notice))
        return;
    if (!_WriteNotice(notice))
        return;
    _lost = 0;
    // A notice without the line that follows it would be the first of many.
    if (!_WriteLines() && lost != 0 && _file.CutOff(notice.size()))
        _lost += lost;
}

bool nxLogFile::_WriteNotice(std::string const& notice)
{
    std::size_t const written = _file.Write(notice.data(), notice.size());
    if (written == notice.size())
        return true;
    int const error = errno;
    (void)_file.CutOff(written);
    _Refused(error);
    return false;
}

bool nxLogFile::_WriteLines()
{
    std::size_t const written = _file.Write(_buffer.get() + _start, _Pending());
    if (written == _Pending())
    {
        _ForgetLines();
        return true;
    }
    int const error = errno;
    std::size_t const start = _start;
    _KeepUnwritten(written);
    bool const hasWritten = _start != start;
    _Refused(error);
    return hasWritten;
}

void nxLogFile::_Refused(int error)
{
    _isRefused = true;
    _DropOldestLines();
    _ReportFailure(error);
}

void nxLogFile::_KeepUnwritten(std::size_t written)
{
    while (_lineLengths[_firstLine] <= written)
    {
        written -= _lineLengths[_firstLine];
        _start += _lineLengths[_firstLine];
        ++_firstLine;
    }
    // A file that can't be cut keeps the first part of the line, and gets the rest of it later.
    if (written != 0 && !_file.CutOff(written))
    {
        _lineLengths[_firstLine] -= written;
        _start += written;
    }
}

void nxLogFile::_DropOldestLines()
{
    while (_Pending() > mostKept)
    {
        _start += _lineLengths[_firstLine];
        ++_firstLine;
        ++_lost;
    }
    if (_firstLine > _lineLengths.size() / 2)
    {
        _lineLengths.erase(_lineLengths.begin(),
                           _lineLengths.begin() + static_cast<std::ptrdiff_t>(_firstLine));
        _firstLine = 0;
    }
}

bool nxLogFile::_MakeRoomForLength()
{
    try
    {
        if (_lineLengths.size() == _lineLengths.capacity())
        {
            constexpr std::size_t usualLines = 1024;
            _lineLengths.reserve(std::max(usualLines, 2 * _lineLengths.size()));
        }
        return true;
    }
    catch (std::bad_alloc const&)
    {
        return false;
    }
}

bool nxLogFile::_MakeRoom(std::size_t size)
{
    // Moving is cheap as long as a good part of the buffer is free in front.
    if (_Pending() + size <= _capacity - _capacity / 4)
    {
        std::memmove(_buffer.get(), _buffer.get() + _start, _Pending());
        _end = _Pending();
        _start = 0;
        return true;
    }
    return _SetCapacity(std::max(2 * _capacity, _Pending() + size));
}

bool nxLogFile::_SetCapacity(std::size_t capacity)
{
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[capacity]);
    if (buffer == nullptr)
        return false;
    if (_Pending() != 0)
        std::memcpy(buffer.get(), _buffer.get() + _start, _Pending());
    _end = _Pending();
    _start = 0;
    _buffer = std::move(buffer);
    _capacity = capacity;
    return true;
}

void nxLogFile::_ForgetLines()
{
    _start = 0;
    _end = 0;
    _lineLengths.clear();
    _firstLine = 0;
    _isRefused = false;
    // What a full disk or a huge line made of the buffer is given back.
    if (_capacity > 2 * _bufferSize)
    {
        _lineLengths.shrink_to_fit();
        (void)_SetCapacity(_bufferSize);
    }
}

void nxLogFile::Close()
{
    Flush();
    _file.Close();
    if (_Pending() == 0)
    {
        _buffer.reset();
        _capacity = 0;
    }
}

void nxLogFile::GiveUp()
{
    unsigned long long const lines = _lost + (_lineLengths.size() - _firstLine);
    if (lines != 0)
        (void)std::fprintf(stderr, "Lost %llu lines of the log file. Filename: %s\n", lines, _path.c_str());
    _lost = 0;
    _ForgetLines();
}

void nxLogFile::Abandon()
{
    _file.Close();
    _lost = 0;
    _ForgetLines();
}

void nxLogFile::_ReportFailure(int error)
{
    auto const now = std::chrono::steady_clock::now();
    if (_hasReported && now - _lastReport < std::chrono::seconds(1))
        return;
    _hasReported = true;
    _lastReport = now;
    (void)std::fprintf(stderr, "Failed to write to the log file. Filename: %s, errno: %d\n", _path.c_str(),
                       error);
}
