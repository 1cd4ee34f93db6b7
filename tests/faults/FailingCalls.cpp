// Takes the place of the C library's functions by their names alone: the headers that declare them are not seen here.

#include "tests/faults/FailingCalls.h"

#include "tests/Sanitizer.h"

#include <atomic>
#include <cerrno>
#include <cstring>

#include <dlfcn.h>

namespace
{

// Up to six words, each in a register; what a function doesn't take is passed on in vain.
using Function = long (*)(long, long, long, long, long, long);

std::atomic<char const*> refused = nullptr;
std::atomic<int> left = 0;
std::atomic<int> refusals = 0;
int refusedWith = 0;
bool isForAll = false;

} // namespace

void RefuseCalls(char const* name, int error, int granted, bool isLasting)
{
    refusedWith = error;
    isForAll = isLasting;
    left = granted;
    refusals = 0;
    refused = name;
}

int GrantCalls()
{
    refused = nullptr;
    return refusals;
}

#if !NX_ADDRESS_SANITIZER && !NX_THREAD_SANITIZER // which stand there themselves
namespace
{

bool IsRefused(char const* name)
{
    char const* const wanted = refused.load();
    if (wanted == nullptr || std::strcmp(name, wanted) != 0)
    {
        return false;
    }
    int const before = left.fetch_sub(1);
    bool const isDue = before == 0 || (before < 0 && isForAll);
    refusals += isDue;
    return isDue;
}

Function Find(char const* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define NX_CALL(name, answer)                                                                                \
    extern "C" long nxFailing_##name(long, long, long, long, long, long) asm(#name);                         \
    extern "C" long nxFailing_##name(long a, long b, long c, long d, long e, long f)                         \
    {                                                                                                        \
        static Function const system = Find(#name);                                                          \
        if (IsRefused(#name))                                                                                \
        {                                                                                                    \
            errno = refusedWith;                                                                             \
            return answer;                                                                                   \
        }                                                                                                    \
        return system(a, b, c, d, e, f);                                                                     \
    }

NX_CALL(open, -1)
NX_CALL(write, -1)
NX_CALL(ftruncate, -1)
NX_CALL(lseek, -1)
NX_CALL(mkdir, -1)
NX_CALL(stat, -1)
NX_CALL(fstat, -1)
NX_CALL(mmap, -1)
NX_CALL(shm_open, -1)
NX_CALL(socket, -1)
NX_CALL(bind, -1)
NX_CALL(listen, -1)
NX_CALL(accept4, -1)
NX_CALL(connect, -1)
NX_CALL(setsockopt, -1)
NX_CALL(sendto, -1)
NX_CALL(sendmsg, -1)
NX_CALL(recv, -1)
NX_CALL(recvfrom, -1)
NX_CALL(poll, -1)
NX_CALL(ppoll, -1)
NX_CALL(sem_init, -1)
NX_CALL(pthread_create, refusedWith)
#endif
