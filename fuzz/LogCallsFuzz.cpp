// Calls of the log manager in any order: each line reaches each device that was there, once and in order.
//
// Built twice: with the log writing before a statement returns, where every call's effect is known at once, and with the
// writer thread, where it is known once the writer has had its turn.

#include "fuzz/FuzzInput.h"

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSite.h"

#include <array>
#include <fstream>
#include <mutex>

#include <semaphore.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef NX_FUZZ_DEFERRED
constexpr bool isDeferred = true;

/// The writer's wait for its next cycle, in the place of the C library's: a cycle is a few microseconds here.
extern "C" int sem_clockwait(sem_t* semaphore, clockid_t, timespec const*)
{
    if (sem_trywait(semaphore) == 0)
        return 0;
    usleep(1);
    errno = ETIMEDOUT;
    return -1;
}
#else
constexpr bool isDeferred = false;
#endif

namespace
{
using Notes = std::vector<std::string>;

/// What the device of that name makes of a line: it logs an answer, or leaves.
std::string GetAnswer(std::string const& line, std::string const& name)
{
    return line.ends_with(" answer") ? line.substr(0, line.size() - 7) + " answered by " + name : "";
}

bool IsLeaving(std::string const& line, std::string const& name)
{
    return line.ends_with(" leave " + name);
}

/// Notes what it is given, and does as a line tells it.
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
        if (std::string const answer = GetAnswer(text, name); !answer.empty())
            NX_LOG(NX_INF, answer);
        if (IsLeaving(text, name))
            nxLogManager::GetInstance().UnregisterLogDevice(this);
    }

    void Flush() override
    {
    }

    void Note(std::string const& note)
    {
        std::lock_guard const guard(mutex);
        notes.push_back(note);
    }

    std::string name;
    std::mutex mutex;
    Notes notes;
};

std::array<Device, 4>& devices = *new std::array<Device, 4>;

/// The writer hands a batch to one device after the other, so that the places of what they answer are not known.
Notes InOrder(Notes notes)
{
    auto const isNoAnswer = [](std::string const& note)
    { return note.find("answered") == std::string::npos; };
    if (isDeferred)
        std::sort(std::stable_partition(notes.begin(), notes.end(), isNoAnswer), notes.end());
    return notes;
}

/// Waits until the writer has written what was logged before: after the cycle under way, those with lines and with answers.
void Drain()
{
    constexpr double longest = 10;
    for (int cycle = 0; isDeferred && cycle < 3; ++cycle)
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
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
        std::size_t const device = input.Below(devices.size());
        unsigned int const call = input.Below(16);
        if (call < 10 || call == 12) // an answer that comes later would miss a device that leaves
            Drain();
        switch (call)
        {
        case 0:
        case 1:
            _manager.RegisterLogDevice(&devices[device]);
            if (std::find(_listed.begin(), _listed.end(), device) == _listed.end())
                _listed.push_back(device);
            break;
        case 2: _manager.UnregisterLogDevice(&devices[device]), std::erase(_listed, device); break;
        case 3: _manager.UnregisterAllLogDevices(), _listed.clear(), _isFileListed = false; break;
        case 4: CreateFile(input.Take<unsigned char>()); break;
        case 5: _isFileOpen ? Reopen() : void(); break;
        case 6: WriteAtOnce(); break;
        case 7: Destroy(); break;
        case 8:
            input.Take<std::uint8_t>() >= 252 && !std::exchange(_hasForked, true) ? Fork() : void();
            break;
        case 9: _manager.SetRecommendedBufferCapacity(input.Take<unsigned short>()); break;
        case 10: _manager.FlushDevices(); break;
        case 11: Write(" answer"); break;
        case 12: Write(" leave " + devices[device].name); break;
        default: Write(std::string(device * 300, 'x'));
        }
    }

    void Finish()
    {
        Drain();
        for (std::size_t device = 0; device < devices.size(); ++device)
        {
            std::lock_guard const guard(devices[device].mutex);
            FUZZ_CHECK(InOrder(std::exchange(devices[device].notes, {})) == InOrder(_expected[device]));
        }
        _manager.UnregisterAllLogDevices();
        (void)nxFileLogDevice::GetInstance().Destroy();
        if (_hasFiles)
            CheckFiles();
    }

private:
    void Expect(std::string const& line)
    {
        for (std::size_t const device : std::vector<std::size_t>(_listed))
        {
            _expected[device].push_back(line);
            if (std::string const answer = GetAnswer(line, devices[device].name); !answer.empty())
                Expect(answer);
            if (IsLeaving(line, devices[device].name))
                std::erase(_listed, device);
        }
    }

    void Note(std::string const& line)
    {
        Expect(line);
        if (_isFileListed && _isFileOpen)
            _fileLines.push_back(line);
    }

    void Write(std::string const& text)
    {
        std::string const line = "line " + std::to_string(++_count) + text;
        bool const isWanted = _count % 7 != 0;
        NX_LOG(isWanted ? NX_INF : NX_DBG, line);
        if (isWanted)
            Note(line);
    }

    /// Past the queue, and of any level.
    void WriteAtOnce()
    {
        std::string const line = "line " + std::to_string(++_count) + " at once";
        nxLog log(NX_DBG, "file.cpp", 1);
        log << line;
        _manager.ImmediateWrite(log);
        Note(line);
    }

    /// @param size  in units of 16 bytes; none for 0
    void CreateFile(unsigned int size)
    {
        using Size = nxValueWrapper<unsigned long long, -1, -2>;
        bool const isCreated = nxFileLogDevice::GetInstance().Create(size == 0 ? Size() : Size(size * 16ULL));
        FUZZ_EQUAL(isCreated, !_isFileOpen);
        if (isCreated)
            _fileLines.clear();
        _manager.RegisterLogDevice(&nxFileLogDevice::GetInstance());
        _isFileOpen = _isFileListed = _hasFiles = true;
    }

    /// A file that is opened within the second of another of its name begins anew; what follows counts again.
    void Reopen()
    {
        FUZZ_CHECK(nxFileLogDevice::GetInstance().CloseAndReopenLogFile());
        _fileLines.clear();
    }

    /// With a writer the log ends for good, so that only the other kind is ended.
    void Destroy()
    {
        if (isDeferred)
            return;
        FUZZ_CHECK(_manager.Destroy().IsOK());
        for (std::size_t const device : std::exchange(_listed, {}))
            _expected[device].push_back("destroyed");
        _isFileOpen = _isFileOpen && !_isFileListed;
        _isFileListed = false;
    }

    /// Each line is in one of the files, once.
    void CheckFiles() const
    {
        std::string all;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(FuzzFolder()))
            if (entry.is_regular_file())
            {
                std::ifstream file(entry.path(), std::ios::binary);
                all.append(std::istreambuf_iterator<char>(file), {});
                std::filesystem::remove(entry.path());
            }
        for (std::string const& line : _fileLines)
        {
            std::size_t const place = all.find("] " + line + " [");
            FUZZ_CHECK(place != std::string::npos);
            FUZZ_CHECK(all.find("] " + line + " [", place + 1) == std::string::npos);
        }
    }

    nxLogManager& _manager = nxLogManager::GetInstance();
    std::vector<std::size_t> _listed;
    std::array<Notes, 4> _expected;
    bool _isFileOpen = false;
    bool _isFileListed = false;
    bool _hasFiles = false;
    bool _hasForked = false; // once is enough: it takes as long as all the rest
    Notes _fileLines;
    unsigned int _count = 0;
};
} // namespace

void FuzzStart()
{
    setenv("KVT_LOG_FORCE_FLUSH", isDeferred ? "NO" : "YES", 1);
    setenv("KVT_LOG_DIRECTORY", FuzzFolder().c_str(), 1);
    for (std::size_t device = 0; device < devices.size(); ++device)
        devices[device].name = std::to_string(device);
}

void FuzzOne(FuzzInput& input)
{
    Session session;
    while (input.HasStep())
        session.Step(input);
    session.Finish();
}
