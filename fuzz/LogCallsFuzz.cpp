// Calls of the log manager in any order: each line reaches each device that was there, once and in order.
//
// Built twice: with the log writing before a statement returns, where every call's effect is known at once,
// and with the writer thread, where it is known once the writer has had its turn.

#include "fuzz/FuzzInput.h"

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSite.h"

#include <sched.h>
#include <semaphore.h>

#ifdef NX_FUZZ_DEFERRED
constexpr bool isDeferred = true;

/// The writer's wait for its next cycle, in the place of the C library's: a cycle is as short as can be here.
extern "C" int sem_clockwait(sem_t* semaphore, clockid_t, timespec const*)
{
    if (sem_trywait(semaphore) == 0)
        return 0;
    sched_yield();
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
struct Device : public nxLogDevice
{
    nxErrorEnum Destroy() override
    {
        Write(nxLog(NX_INF, "file.cpp", 1) << "line of the end");
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        std::string const text = *log.GetLogEntry();
        if (!text.starts_with("line"))
            return; // what the log says itself
        std::unique_lock guard(mutex);
        notes.push_back(text);
        guard.unlock();
        if (std::string const answer = GetAnswer(text, name); !answer.empty())
            NX_LOG(NX_INF, answer);
        if (IsLeaving(text, name))
            nxLogManager::GetInstance().UnregisterLogDevice(this);
    }

    void Flush() override
    {
    }

    std::string name;
    std::mutex mutex;
    Notes notes;
};

std::array<Device, 4>& devices = *new std::array<Device, 4>;

/// The writer hands a batch to one device after the other: the places of what they answer are not known.
Notes InOrder(Notes notes)
{
    auto const isNoAnswer = [](std::string const& note) { return note.find("answered") == note.npos; };
    if (isDeferred)
        std::sort(std::stable_partition(notes.begin(), notes.end(), isNoAnswer), notes.end());
    return notes;
}

/// Waits until the writer has written what was logged: after the cycle under way, those of lines and answers.
void Drain()
{
    constexpr double longest = 10;
    for (int cycle = 0; isDeferred && cycle < 3; ++cycle)
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
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
        case 3: _manager.UnregisterAllLogDevices(), _listed.clear(); break;
        case 6: Write(" at once", true); break;
        case 7:
            if (isDeferred) // with a writer the log would end for good
                break;
            FUZZ_CHECK(_manager.Destroy().IsOK());
            Expect("line of the end"), _listed.clear();
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

    /// @param isAtOnce  past the queue, and of any level
    void Write(std::string const& text, bool isAtOnce = false)
    {
        std::string const line = "line " + std::to_string(++_count) + text;
        nxEnumValue const level = isAtOnce || _count % 7 == 0 ? NX_DBG : NX_INF;
        if (isAtOnce)
            _manager.ImmediateWrite(nxLog(level, "file.cpp", 1) << line);
        else
            NX_LOG(level, line);
        if (isAtOnce || level == NX_INF)
            Expect(line);
    }

    nxLogManager& _manager = nxLogManager::GetInstance();
    std::vector<std::size_t> _listed;
    std::array<Notes, 4> _expected;
    unsigned int _count = 0;
};
} // namespace

void FuzzStart()
{
    if (isDeferred)
        unsetenv("KVT_LOG_FORCE_FLUSH");
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
