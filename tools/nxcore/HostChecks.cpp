#include "HostChecks.h"

#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxWindowsSemaphore.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"

#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nxTool
{
namespace
{
namespace fs = std::filesystem;

constexpr unsigned long long mebibyte = 1024ULL * 1024;

std::string Reason(int error)
{
    return std::generic_category().message(error);
}

/// The directory that is or would be the parent of the day's directories, and as which it is known.
fs::path LogDirectory()
{
    std::string const named =
        nxCmdLineArgs::GetInstance().GetEnvValue(nxConfigurationKeyText::KVT_LOG_DIRECTORY);
    return named.empty() ? "/var/log/korvane" : named;
}

/// @return 0, or the error of the system.
int TryToWriteIn(fs::path const& directory)
{
    std::string name = (directory / "nxcore-check-XXXXXX").string();
    int const file = mkstemp(name.data());
    if (file == -1)
        return errno;
    int const error = write(file, "\n", 1) == 1 ? 0 : errno;
    (void)close(file);
    (void)unlink(name.c_str());
    return error;
}

/// Memory that this process and its children share.
class SharedRegion
{
public:
    SharedRegion()
        : _memory(mmap(nullptr, sizeof(nxMutex), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
    }
    ~SharedRegion()
    {
        if (_memory != MAP_FAILED)
            (void)munmap(_memory, sizeof(nxMutex));
    }
    SharedRegion(SharedRegion const&) = delete;
    SharedRegion& operator=(SharedRegion const&) = delete;

    void* Get() const
    {
        return _memory == MAP_FAILED ? nullptr : _memory;
    }

private:
    void* _memory;
};

/// @return whether the child ended as it was told to.
bool LockInAChildThatEnds(nxMutex& mutex)
{
    pid_t const child = fork();
    if (child == 0)
        _exit(mutex.Lock().IsOK() ? 0 : 1);
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

/// Empty when a mutex tells of its owner's death.
std::string FaultOfSharedMutexes()
{
    SharedRegion const region;
    if (region.Get() == nullptr)
        return "memory can't be shared: " + Reason(errno);
    nxMutex& mutex = *new (region.Get()) nxMutex(false);
    if (!mutex.InitialiseAsShared(true).IsOK())
        return "a mutex can't be shared";
    if (!LockInAChildThatEnds(mutex))
        return "another process can't lock a shared mutex";
    if (mutex.TryLock() != NX_ERR_THR_OWNER_DEAD)
        return "the death of a mutex's owner is not told";
    if (!mutex.Consistent().IsOK() || !mutex.Unlock().IsOK())
        return "a mutex can't be used again after its owner's death";
    return {};
}

/// Empty when a semaphore can be had by name. One name for all runs: what it leaves is one page in all.
std::string FaultOfNamedObjects()
{
    nxWindowsSemaphore semaphore("nxcore check", 0, 1000);
    if (!semaphore.Post().IsOK() || !semaphore.TimedWait(1.0).IsOK())
        return "a semaphore can't be made by name in /dev/shm";
    return {};
}
} // namespace

Finding CheckLogDirectory()
{
    fs::path const directory = LogDirectory();
    std::error_code failure;
    if (!fs::is_directory(directory, failure))
    {
        // A program makes one level by itself.
        fs::path const parent =
            directory.has_filename() ? directory.parent_path() : directory.parent_path().parent_path();
        int const error = TryToWriteIn(parent.empty() ? "." : parent);
        if (error != 0)
            return {Soundness::Wrong,
                    directory.string() + " is not there and can't be made: " + Reason(error)};
        return {Soundness::Notice, directory.string() + " is not there; the first log makes it"};
    }
    if (int const error = TryToWriteIn(directory); error != 0)
        return {Soundness::Wrong, directory.string() + " can't be written to: " + Reason(error)};
    unsigned long long const free = fs::space(directory, failure).available / mebibyte;
    constexpr unsigned long long little = 1024;
    return {free < little ? Soundness::Notice : Soundness::Good,
            directory.string() + ", " + std::to_string(free) + " MiB free"};
}

Finding CheckDescriptors()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return {Soundness::Wrong, "the limit is not known: " + Reason(errno)};
    std::error_code failure;
    std::size_t open = 0;
    for (auto entry = fs::directory_iterator("/proc/self/fd", failure); entry != fs::directory_iterator();
         entry.increment(failure))
        ++open;
    std::string text = std::to_string(limit.rlim_cur) + " at most";
    if (open != 0)
        text += ", " + std::to_string(open - 1) + " open"; // one of them is the listing itself
    constexpr rlim_t least = 64; // a gateway with its sockets, log and files needs more than that
    constexpr rlim_t common = 1024;
    if (limit.rlim_cur < least)
        return {Soundness::Wrong, text + ", too few"};
    return {limit.rlim_cur < common ? Soundness::Notice : Soundness::Good, text};
}

Finding CheckSharedMemory()
{
    for (std::string const& fault : {FaultOfSharedMutexes(), FaultOfNamedObjects()})
        if (!fault.empty())
            return {Soundness::Wrong, fault};
    std::error_code failure;
    unsigned long long const free = fs::space("/dev/shm", failure).available / mebibyte;
    return {Soundness::Good, "shared mutexes outlive their owners, named objects can be made, " +
                                 std::to_string(failure ? 0 : free) + " MiB free"};
}
} // namespace nxTool
