#include "core/platform/nxNamedObjects.h"

#include "core/platform/nxPThread.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <new>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <linux/futex.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nxPlatform
{
// What lies in the shared file. A new file reads as zeros, so an object is not ready until somebody has made
// it so.
struct NamedObjectState
{
    std::atomic<std::uint32_t> ready;
    std::atomic<std::uint32_t> count; // of a semaphore; waiters sleep on it
    std::uint32_t maximumCount;       // of a semaphore, 0 for a mutex
    pthread_mutex_t mutex;            // of a mutex
};

namespace
{
using Initialise = std::function<bool(NamedObjectState&)>;
using Clock = std::chrono::steady_clock;

// The file's name.

constexpr std::uint64_t fnvOffset = 14695981039346656037u;
constexpr std::uint64_t fnvPrime = 1099511628211u;

std::string Hash(std::string const& text, std::uint64_t seed)
{
    std::uint64_t hash = fnvOffset ^ seed;
    for (char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * fnvPrime;
    return std::to_string(hash);
}

bool IsPlain(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == '_' || character == '-';
}

// Letters and digits as they are, other bytes in hexadecimal; what is too long for a file's name ends in two
// hashes.
std::string Escape(std::string const& name)
{
    constexpr std::size_t longest = 200;
    constexpr std::size_t kept = 100;
    constexpr char const* digits = "0123456789ABCDEF";
    std::string escaped;
    for (char character : name)
    {
        if (escaped.size() > longest)
        {
            return escaped.substr(0, kept) + '~' + Hash(name, 0) + '~' +
                   Hash(name, name.size() * fnvPrime + 1);
        }
        if (IsPlain(character))
        {
            escaped += character;
            continue;
        }
        unsigned int const byte = static_cast<unsigned char>(character);
        escaped += {'%', digits[byte / 16], digits[byte % 16]};
    }
    return escaped;
}

std::string FileName(char const* kind, std::string const& name)
{
    return "/nxcore." + std::to_string(geteuid()) + '.' + kind + '.' + Escape(name);
}

void Unmap(NamedObjectState* state)
{
    (void)munmap(state, sizeof(NamedObjectState));
}

// The objects that this process has open: a list that only grows. It has no lock that a child of fork() could
// inherit closed.

struct OpenObject
{
    std::string fileName;
    NamedObjectState* state = nullptr;
    int file = -1; // stays open until the process ends, and the lock with it
    OpenObject* next = nullptr;
};

constinit std::atomic<OpenObject*> openObjects = nullptr;

NamedObjectState* FindOpen(OpenObject const* first, std::string const& fileName)
{
    for (OpenObject const* object = first; object; object = object->next)
        if (object->fileName == fileName)
            return object->state;
    return nullptr;
}

// Enters an object, unless another thread has entered the same meanwhile: then that one serves.
NamedObjectState* EnterOpen(std::unique_ptr<OpenObject> object)
{
    object->next = openObjects.load(std::memory_order_acquire);
    do
    {
        if (NamedObjectState* const entered = FindOpen(object->next, object->fileName))
        {
            Unmap(object->state);
            (void)close(object->file);
            return entered;
        }
    } while (!openObjects.compare_exchange_weak(object->next, object.get(), std::memory_order_acq_rel,
                                                std::memory_order_acquire));
    return object.release()->state;
}

// Whoever has an object open holds its file's lock for reading; the kernel gives that back when the process
// and all its forked children have ended. Who gets the lock for writing knows that nobody has the object
// open: what the file holds is then left over from processes that are gone.

bool Lock(int file, int command, short type)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    int result = 0;
    do
    {
        result = fcntl(file, command, &lock);
    } while (result == -1 && errno == EINTR);
    return result == 0;
}

bool TryLockForWriting(int file)
{
    return Lock(file, F_OFD_SETLK, F_WRLCK);
}

bool LockForReading(int file)
{
    return Lock(file, F_OFD_SETLKW, F_RDLCK);
}

NamedObjectState* Map(int file)
{
    void* const region = mmap(nullptr, sizeof(NamedObjectState), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    return region == MAP_FAILED ? nullptr : static_cast<NamedObjectState*>(region);
}

// A file without a page behind it would end the process that touches it.
bool Reserve(int file)
{
    int result = 0;
    do
    {
        result = posix_fallocate(file, 0, sizeof(NamedObjectState));
    } while (result == EINTR);
    return result == 0;
}

// What is left over must not look alive to somebody who waits for the lock for reading. The file keeps its
// length: a process that closed its descriptor, and so lost the lock, may still have it mapped.
bool MarkNotReady(int file)
{
    static_assert(offsetof(NamedObjectState, ready) == 0);
    std::uint32_t const notReady = 0;
    return pwrite(file, &notReady, sizeof notReady, 0) == sizeof notReady;
}

// Called with the lock for writing, which becomes one for reading without a gap.
NamedObjectState* CreateInFile(int file, Initialise const& initialise)
{
    if (!Reserve(file) || !MarkNotReady(file))
        return nullptr;
    NamedObjectState* const region = Map(file);
    if (!region)
        return nullptr;
    NamedObjectState* const state = new (region) NamedObjectState();
    if (!initialise(*state))
    {
        Unmap(state);
        return nullptr;
    }
    state->ready.store(1, std::memory_order_release);
    return LockForReading(file) ? state : nullptr;
}

enum class Attempt
{
    done,
    again
};

// Called with the lock for reading.
Attempt OpenInFile(int file, NamedObjectState** state)
{
    struct stat status = {};
    if (fstat(file, &status) != 0)
        return Attempt::done;
    if (status.st_size < static_cast<off_t>(sizeof(NamedObjectState)))
        return Attempt::again; // the one who was making it gave up or died
    NamedObjectState* const opened = Map(file);
    if (opened && opened->ready.load(std::memory_order_acquire) == 0)
    {
        Unmap(opened);
        return Attempt::again;
    }
    *state = opened;
    return Attempt::done;
}

// A file of another user under this user's name is a trap.
bool IsOwn(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 && status.st_uid == geteuid();
}

// Without success `object` has no state, and no file is open.
Attempt TryAttach(OpenObject& object, Initialise const* initialise)
{
    int const file =
        shm_open(object.fileName.c_str(), initialise ? O_RDWR | O_CREAT : O_RDWR, S_IRUSR | S_IWUSR);
    if (file == -1)
        return Attempt::done;
    Attempt attempt = Attempt::done;
    if (IsOwn(file) && TryLockForWriting(file))
    {
        object.state = initialise ? CreateInFile(file, *initialise) : nullptr;
        if (!object.state)
            (void)MarkNotReady(file);
    }
    else if (IsOwn(file) && LockForReading(file))
    {
        attempt = OpenInFile(file, &object.state);
    }
    object.file = file;
    if (!object.state)
        (void)close(file);
    return attempt;
}

// @param initialise  null opens only. @return null when there is no such object or it can't be had.
NamedObjectState* Attach(char const* kind, std::string const& name, Initialise const* initialise)
try
{
    auto object = std::make_unique<OpenObject>();
    object->fileName = FileName(kind, name);
    if (NamedObjectState* const state =
            FindOpen(openObjects.load(std::memory_order_acquire), object->fileName))
        return state;
    while (TryAttach(*object, initialise) == Attempt::again)
        std::this_thread::yield();
    return object->state ? EnterOpen(std::move(object)) : nullptr;
}
catch (std::bad_alloc const&)
{
    return nullptr;
}

bool InitialiseMutex(NamedObjectState& state)
{
    pthread_mutexattr_t attributes;
    if (pthread_mutexattr_init(&attributes) != 0)
        return false;
    bool const made = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
                      pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED) == 0 &&
                      pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST) == 0 &&
                      pthread_mutex_init(&state.mutex, &attributes) == 0;
    (void)pthread_mutexattr_destroy(&attributes);
    return made;
}

WaitResult WaitForMutex(NamedObjectState& state)
{
    int const result = pthread_mutex_lock(&state.mutex);
    if (result == EOWNERDEAD)
    {
        (void)pthread_mutex_consistent(&state.mutex);
        return WaitResult::object;
    }
    return result == 0 ? WaitResult::object : WaitResult::failed;
}

bool TakeOne(NamedObjectState& state)
{
    std::uint32_t count = state.count.load(std::memory_order_relaxed);
    while (count != 0)
        if (state.count.compare_exchange_weak(count, count - 1, std::memory_order_acquire,
                                              std::memory_order_relaxed))
            return true;
    return false;
}

// The count's own word as the kernel wants it.
void* Word(std::atomic<std::uint32_t>& count)
{
    static_assert(sizeof(count) == sizeof(std::uint32_t) && std::atomic<std::uint32_t>::is_always_lock_free);
    return &count;
}

void SleepWhileZero(std::atomic<std::uint32_t>& count, std::chrono::nanoseconds atMost)
{
    auto const whole = std::chrono::floor<std::chrono::seconds>(atMost);
    std::timespec const time = {whole.count(), static_cast<long>((atMost - whole).count())};
    (void)syscall(SYS_futex, Word(count), FUTEX_WAIT, 0, &time, nullptr, 0);
}

WaitResult WaitForSemaphore(NamedObjectState& state, unsigned int milliseconds)
{
    // A process that is killed between raising the count and waking a waiter, or between being woken and
    // taking one, wakes nobody else: waiters look again by themselves, the longer they wait the less often.
    constexpr std::chrono::nanoseconds longestSleep = std::chrono::seconds(1);
    std::chrono::nanoseconds nextSleep = std::chrono::milliseconds(20);

    Clock::time_point const deadline = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!TakeOne(state))
    {
        std::chrono::nanoseconds sleep = nextSleep;
        if (milliseconds != infinite)
        {
            std::chrono::nanoseconds const left = deadline - Clock::now();
            if (left <= std::chrono::nanoseconds::zero())
                return WaitResult::timeout;
            sleep = std::min(sleep, left);
        }
        SleepWhileZero(state.count, sleep);
        nextSleep = std::min(2 * nextSleep, longestSleep);
    }
    return WaitResult::object;
}
} // namespace

NamedObject CreateMutexA(std::string const& name)
{
    Initialise const initialise = InitialiseMutex;
    return Attach("mutex", name, &initialise);
}

bool ReleaseMutex(NamedObject mutex)
{
    return pthread_mutex_unlock(&mutex->mutex) == 0;
}

NamedObject OpenSemaphoreA(std::string const& name)
{
    return Attach("semaphore", name, nullptr);
}

NamedObject CreateSemaphoreA(unsigned int initialCount, unsigned int maximumCount, std::string const& name)
{
    constexpr unsigned int largestCount = 0x7FFFFFFF;
    if (maximumCount == 0 || maximumCount > largestCount || initialCount > maximumCount)
        return nullptr;
    Initialise const initialise = [=](NamedObjectState& state)
    {
        state.count.store(initialCount, std::memory_order_relaxed);
        state.maximumCount = maximumCount;
        return true;
    };
    return Attach("semaphore", name, &initialise);
}

bool ReleaseSemaphore(NamedObject semaphore)
{
    std::uint32_t count = semaphore->count.load(std::memory_order_relaxed);
    do
    {
        if (count >= semaphore->maximumCount)
            return false;
    } while (!semaphore->count.compare_exchange_weak(count, count + 1, std::memory_order_release,
                                                     std::memory_order_relaxed));
    (void)syscall(SYS_futex, Word(semaphore->count), FUTEX_WAKE, 1, nullptr, nullptr, 0);
    return true;
}

WaitResult WaitForSingleObject(NamedObject object, unsigned int milliseconds)
{
    return object->maximumCount == 0 ? WaitForMutex(*object) : WaitForSemaphore(*object, milliseconds);
}
} // namespace nxPlatform
