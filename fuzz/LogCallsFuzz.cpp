// Calls of the log manager in any order: each line reaches each device that was there, once and in order.
//
// Built twice: with the log writing before a statement returns, where every call's effect is known at once, and with the
// writer thread, where it is known once the writer has had its turn.

#include "fuzz/FuzzFolder.h"
#include "fuzz/FuzzInput.h"

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSite.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <mutex>
#include <sys/wait.h>
#include <utility>
#include <vector>

namespace
{
#ifdef NX_FUZZ_DEFERRED
constexpr bool isDeferred = true;
#else
constexpr bool isDeferred = false;
#endif

constexpr std::size_t deviceCount = 4;

/// Notes what it is given, and does as a line tells it: logs on, or leaves.
class Device : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        Note("destroyed");
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        std::string const text = *log.GetLogEntry();
        if (!text.starts_with("line"))
            return; // what the log says about its files
        Note(text);
        if (text.ends_with(" answer"))
            NX_LOG(NX_INF, text.substr(0, text.size() - 7) << " answered by " << name);
        else if (text.ends_with(" leave " + name))
            nxLogManager::GetInstance().UnregisterLogDevice(this);
    }

    void Flush() override
    {
    }

    std::vector<std::string> TakeNotes()
    {
        std::lock_guard const guard(_mutex);
        return std::exchange(_notes, {});
    }

    std::string name;

private:
    void Note(std::string const& note)
    {
        std::lock_guard const guard(_mutex);
        _notes.push_back(note);
    }

    std::mutex _mutex;
    std::vector<std::string> _notes;
};

std::array<Device, deviceCount>& Devices()
{
    static std::array<Device, deviceCount>& devices = *new std::array<Device, deviceCount>;
    return devices;
}

/// The same devices as a list of numbers, and what each should have noted.
class Model
{
public:
    void Register(std::size_t device)
    {
        if (std::find(_listed.begin(), _listed.end(), device) == _listed.end())
            _listed.push_back(device);
    }

    void Unregister(std::size_t device)
    {
        std::erase(_listed, device);
    }

    void Clear()
    {
        _listed.clear();
    }

    void Destroy()
    {
        for (std::size_t const device : _listed)
            notes[device].push_back("destroyed");
        Clear();
    }

    void Write(std::string const& text)
    {
        std::vector<std::size_t> const listed = _listed;
        for (std::size_t const device : listed)
        {
            notes[device].push_back(text);
            std::string const name = std::to_string(device);
            if (text.ends_with(" answer"))
                Write(text.substr(0, text.size() - 7) + " answered by " + name);
            else if (text.ends_with(" leave " + name))
                Unregister(device);
        }
    }

    std::array<std::vector<std::string>, deviceCount> notes;

private:
    std::vector<std::size_t> _listed;
};

/// Lines of the file that is open, which all have to be in the folder in the end.
class FileModel
{
public:
    void Open()
    {
        _lines.clear();
        _isOpen = true;
    }

    void Close()
    {
        _isOpen = false;
    }

    void Write(std::string const& line)
    {
        if (_isOpen)
            _lines.push_back(line);
    }

    bool IsOpen() const
    {
        return _isOpen;
    }

    void Check() const
    {
        std::string all;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(FuzzFolder()))
            if (entry.is_regular_file())
            {
                std::ifstream file(entry.path(), std::ios::binary);
                all.append(std::istreambuf_iterator<char>(file), {});
            }
        for (std::string const& line : _lines)
        {
            std::size_t const place = all.find("] " + line + " [");
            FUZZ_CHECK(place != std::string::npos);
            FUZZ_CHECK(all.find("] " + line + " [", place + 1) == std::string::npos);
        }
    }

private:
    bool _isOpen = false;
    std::vector<std::string> _lines;
};

/// Waits until the writer has written what was logged before.
void Drain()
{
    constexpr double longest = 10;
    for (int cycle = 0; isDeferred && cycle < 2; ++cycle)
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
}

bool IsNoAnswer(std::string const& note)
{
    return note.find("answered") == std::string::npos;
}

/// A child that logs a line and ends.
void Fork()
{
    pid_t const child = fork();
    if (child == 0)
    {
        NX_LOG(NX_INF, "from the child");
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    FUZZ_EQUAL(status, 0);
}

class Session
{
public:
    void Step(FuzzInput& input)
    {
        nxLogManager& manager = nxLogManager::GetInstance();
        std::size_t const device = input.Below(deviceCount);
        switch (input.Below(16))
        {
        case 0:
        case 1:
            Drain();
            manager.RegisterLogDevice(&Devices()[device]);
            _model.Register(device);
            break;
        case 2:
            Drain();
            manager.UnregisterLogDevice(&Devices()[device]);
            _model.Unregister(device);
            break;
        case 3:
            Drain();
            manager.UnregisterAllLogDevices();
            _model.Clear();
            _isFileListed = false;
            break;
        case 4: manager.FlushDevices(); break;
        case 5: manager.SetRecommendedBufferCapacity(input.Take<unsigned short>()); break;
        case 6: Destroy(); break;
        case 7: WriteAtOnce(); break;
        case 8: Create(input); break;
        case 9: Reopen(); break;
        case 10:
            if (input.Below(16) == 0)
                Fork();
            break;
        case 11: Write(" answer"); break;
        case 12: Write(" leave " + std::to_string(device)); break;
        default: Write(std::string(input.Below(3) * 300, 'x'));
        }
    }

    void Finish()
    {
        Drain();
        for (std::size_t device = 0; device < deviceCount; ++device)
        {
            std::vector<std::string> notes = Devices()[device].TakeNotes();
            if (isDeferred) // an answer comes with a later cycle, so its place among the others is not known
            {
                std::stable_partition(notes.begin(), notes.end(), IsNoAnswer);
                std::stable_partition(_model.notes[device].begin(), _model.notes[device].end(), IsNoAnswer);
            }
            FUZZ_CHECK(notes == _model.notes[device]);
        }
        nxLogManager::GetInstance().UnregisterAllLogDevices();
        (void)nxFileLogDevice::GetInstance().Destroy();
        _file.Check();
        for (auto const& entry : std::filesystem::directory_iterator(FuzzFolder()))
            std::filesystem::remove_all(entry.path());
    }

private:
    void Write(std::string const& text)
    {
        std::string const line = "line " + std::to_string(++_count) + text;
        bool const isWanted = _count % 7 != 0;
        NX_LOG(isWanted ? NX_INF : NX_DBG, line);
        if (!isWanted)
            return;
        _model.Write(line);
        NoteInFile(line);
    }

    /// Past the queue, and of any level.
    void WriteAtOnce()
    {
        Drain();
        std::string const line = "line " + std::to_string(++_count) + " at once";
        nxLog log(NX_DBG, "file.cpp", 1);
        log << line;
        nxLogManager::GetInstance().ImmediateWrite(log);
        _model.Write(line);
        NoteInFile(line);
    }

    void NoteInFile(std::string const& line)
    {
        if (_isFileListed)
            _file.Write(line);
    }

    void Create(FuzzInput& input)
    {
        using Size = nxValueWrapper<unsigned long long, -1, -2>;
        Drain();
        bool const isLimited = input.Truth();
        Size const size = isLimited ? Size(input.Take<unsigned char>() * 16ULL) : Size();
        bool const isCreated = nxFileLogDevice::GetInstance().Create(size);
        FUZZ_EQUAL(isCreated, !_file.IsOpen());
        if (isCreated)
            _file.Open();
        nxLogManager::GetInstance().RegisterLogDevice(&nxFileLogDevice::GetInstance());
        _isFileListed = true;
    }

    /// A file that is opened within the second of another of its name begins anew; what follows counts again.
    void Reopen()
    {
        if (!_file.IsOpen())
            return;
        Drain();
        FUZZ_CHECK(nxFileLogDevice::GetInstance().CloseAndReopenLogFile());
        _file.Open();
    }

    /// With a writer the log ends for good, so that only the other kind is ended.
    void Destroy()
    {
        if (isDeferred)
            return;
        FUZZ_CHECK(nxLogManager::GetInstance().Destroy().IsOK());
        _model.Destroy();
        if (_isFileListed)
            _file.Close();
        _isFileListed = false;
    }

    Model _model;
    FileModel _file;
    bool _isFileListed = false;
    unsigned int _count = 0;
};
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzQuietLog();
    setenv("KVT_LOG_FORCE_FLUSH", isDeferred ? "NO" : "YES", 1);
    setenv("KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01", 1);
    setenv("KVT_LOG_DIRECTORY", FuzzFolder().c_str(), 1);
    for (std::size_t device = 0; device < deviceCount; ++device)
        Devices()[device].name = std::to_string(device);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    Session session;
    while (!input.IsEmpty())
        session.Step(input);
    session.Finish();
    return 0;
}
