#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogFile.h"
#include "core/logging/nxLogStampText.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/time/nxDateTime.h"

#include <atomic>
#include <chrono>
#include <string>

/// @file
/// The log in files.

/// Writes one log file at a time, in a directory named by the day: lines of the form
/// "[INF][15Nov26 09:30:05.123.000] message [file.cpp:12]", each ended by carriage return and line feed.
///
/// The host's start-up creates and registers it:
/// @code
/// nxFileLogDevice& device = nxFileLogDevice::GetInstance();
/// if (device.Create(nxValueWrapper<unsigned long long, -1, -2>(100000000)))
///     nxLogManager::GetInstance().RegisterLogDevice(&device);
/// @endcode
///
/// Lines are gathered in a buffer of KVT_LOG_FILE_BUFF_SIZE_MB (1 MiB when absent or 0) and written when it is full and
/// at each flush. No failure reaches a caller. A file that can't be created is reported on standard error, and lines
/// are dropped until one is there. After Create() and CloseAndReopenLogFile(), which tell the host, that is the host's
/// business; after a cut-over and in a forked child the next batch tries again, then one a second, and the file begins
/// with how many lines were lost. What a full disk refuses is kept, up to 64 MiB, and written once there is room; what
/// goes beyond is counted, and the file then says how many lines were lost, where they are missing.
///
/// Names have a grain of one second: a file that is opened twice in one second is overwritten.
///
/// A forked child writes to a file of its own, from its first line on, which is named after the time of that line. Any
/// thread may call any operation, except that CloseAndReopenLogFile() is not for devices. Never destroyed.
class NX_CORE_API nxFileLogDevice : public nxLogDevice
{
public:
    static nxFileLogDevice& GetInstance();

    /// Opens the first file, named after the application's start time.
    /// @param maximumSize  bytes after which the next file begins, which a line may exceed; null: no limit.
    /// @return false when a file is open already, which changes nothing, or can't be created.
    bool Create(nxValueWrapper<unsigned long long, -1, -2> const& maximumSize);

    /// Goes over to a file named after the present time. What was logged before the call is in the old file. Logs a
    /// line before and, when the file is there, one after it. Bytes that were counted against the maximum size in the old
    /// file stay counted: the new one ends so much earlier.
    /// @return false when the file can't be created; lines are dropped from then on.
    bool CloseAndReopenLogFile();

    /// Writes what is left and closes the file. The counts of files and of bytes go on if Create() is called again.
    /// @return OK.
    nxErrorEnum Destroy() override;
    void Write(nxLog const& log) override;
    void Flush() override;

    /// The path of a log file: directory, application, instance, and what is asked for, joined by underscores. Makes
    /// the directory.
    /// @param suffix    such as ".log".
    /// @param sequence  used with addSequence.
    /// @param time      printed with addTime, as 093005.
    static std::string GenerateFileName(std::string const& suffix, bool addSequence, unsigned int sequence,
                                        nxDateTime const& time, bool addTime, bool addProcessID);

    /// The same with the application's start time.
    static std::string GenerateFileName(std::string const& suffix, bool addSequence, unsigned int sequence,
                                        bool addTime, bool addProcessID);

    /// Makes the directory KVT_LOG_DIRECTORY, which is asked for at each call, and in it that of the day.
    ///
    /// Only one level is made at a time. A directory that can't be made is reported on standard output.
    /// @param time  not looked at: the day is always today, also for a file that is named after an earlier time.
    /// @return the day's directory with a separator behind it; if it can't be made, that above it; if that can't be
    ///         made either, nothing.
    static std::string GenerateLogDirectoryFilenamePrefix(nxDateTime const& time);

private:
    friend class nxLogManager;

    nxFileLogDevice();
    ~nxFileLogDevice() override = default;

    bool _CreateLogFile(nxDateTime const& time, bool lock);
    void _CloseLogFile(bool lock);
    void _AppendLine(nxLog const& log);
    std::string _GetNewFileName(nxDateTime const& time) const;
    bool _OpenLogFile(std::string name);
    bool _TryToOpen(std::string name);
    void _CutOver();
    void _Reopen();

    static nxFileLogDevice* _GetExisting();
    void _LockBeforeFork();
    void _UnlockInParent();
    void _RemakeInChild();

    nxLogFile _file;
    nxMutex _mutex;
    unsigned long long _bytesWritten = 0;
    nxValueWrapper<unsigned long long, -1, -2> _maximumSize;
    unsigned int _sequenceNumber = 1;
    unsigned int _bufferSize;
    nxDateTime _startTime;
    nxLogStampText _stampText;
    bool _isReopenDue = false;     ///< the next line opens a file
    bool _isReopenRefused = false; ///< it was tried in vain; a batch makes it due again
    /// In a forked child: the parent's file was open, so the one to open is the child's first.
    bool _isFileOfChildDue = false;
    std::chrono::steady_clock::time_point _nextAttempt;

    static std::atomic<nxFileLogDevice*> _instance;
};
