#pragma once

#include "core/platform/nxOutputFile.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// @file
/// The file behind the file device, with a buffer that survives a full disk. For the sources of this folder.

/// Gathers whole lines and writes them in one piece.
///
/// What the disk refuses stays in the buffer and is tried again at the next Flush(); a line that got out only in part
/// is taken off the file first, so that the file holds whole lines at all times. Beyond `mostKept` bytes the oldest
/// lines go, and the file says how many, at the place where they are missing, as soon as there is room. A refusal is
/// reported on standard error at most once a second.
///
/// Not guarded: the device's mutex is held around every call.
class nxLogFile
{
public:
    /// How much of what the disk refused is kept, in bytes.
    static constexpr std::size_t mostKept = std::size_t(64) << 20;

    /// Creates the file, or empties one that exists. Lines that the last file did not take go to this one.
    /// @param bufferSize  how much may be gathered before it is written; 0 stands for the usual 4096.
    /// @return false, with nothing open, when it can't be created.
    bool Open(std::string path, std::size_t bufferSize);

    /// The path of the last Open(), whether it succeeded or not.
    std::string const& GetPath() const
    {
        return _path;
    }

    /// False when there was no memory for the buffer; it is then made when lines come.
    bool HasBuffer() const
    {
        return _buffer != nullptr;
    }

    bool IsOpen() const
    {
        return _file.IsOpen();
    }

    /// Makes room for a line of at most `size` bytes and gives the place to put it. Ends with Commit().
    /// @return null when memory runs out; the line then counts as lost.
    char* Reserve(std::size_t size);

    /// Takes note of a line that no file was there for.
    void CountLostLine()
    {
        ++_lost;
    }

    /// Adds the line that was put at the place.
    void Commit(std::size_t size);

    /// Writes what is gathered.
    void Flush();

    /// Flushes and closes. Lines that were refused stay for the next file.
    void Close();

    /// Reports the lines that no file took, and forgets them.
    void GiveUp();

    /// In a forked child: closes the file, and forgets what is gathered; the parent writes it.
    void Abandon();

private:
    bool _WriteNotice(std::string const& notice);
    bool _WriteLines();
    void _Refused(int error);
    void _KeepUnwritten(std::size_t written);
    void _DropOldestLines();
    bool _MakeRoomForLength();
    bool _MakeRoom(std::size_t size);
    bool _SetCapacity(std::size_t capacity);
    void _ForgetLines();
    void _ReportFailure(int error);

    std::size_t _Pending() const
    {
        return _end - _start;
    }

    nxPlatform::OutputFile _file;
    std::string _path;
    std::size_t _bufferSize = 0;
    std::unique_ptr<char[]> _buffer;
    std::size_t _capacity = 0;
    std::size_t _start = 0;                // the lines not written lie from here
    std::size_t _end = 0;                  // to here
    std::vector<std::size_t> _lineLengths; // theirs, from _firstLine on
    std::size_t _firstLine = 0;
    unsigned long long _lost = 0; // lines that went since the last notice
    bool _isRefused = false;      // the last attempt failed: the next one is due at the next flush
    bool _hasReported = false;
    std::chrono::steady_clock::time_point _lastReport;
};
