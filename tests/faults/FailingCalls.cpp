// Takes the place of the C library's functions by their names alone: the headers that declare them are not seen here.

#include "tests/faults/FailingCalls.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <string_view>

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

bool IsRefused(char const* name)
{
    char const* const wanted = refused.load();
    if (wanted == nullptr || std::strcmp(name, wanted) != 0)
        return false;
    int const before = left.fetch_sub(1);
    bool const isDue = before == 0 || (before < 0 && isForAll);
    refusals += isDue;
    return isDue;
}

/// Threads' calls give the error itself.
long Refuse(std::string_view name)
{
    errno = refusedWith;
    return name.starts_with("pthread_") ? refusedWith : -1;
}

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

#define NX_CALL(name)                                                                                        \
    extern "C" long nxFailing_##name(long, long, long, long, long, long) asm(#name);                         \
    extern "C" long nxFailing_##name(long a, long b, long c, long d, long e, long f)                         \
    {                                                                                                        \
        static auto const system = reinterpret_cast<Function>(dlsym(RTLD_NEXT, #name));                      \
        if (IsRefused(#name))                                                                                \
            return Refuse(#name);                                                                            \
        return system(a, b, c, d, e, f);                                                                     \
    }

// clang-format off
#define NX_CALLS(call)                                                                                       \
    call(open) call(write) call(ftruncate) call(lseek) call(mkdir) call(stat) call(fstat) call(mmap)         \
    call(shm_open) call(socket) call(bind) call(listen) call(accept4) call(connect) call(setsockopt)         \
    call(sendto) call(sendmsg) call(recv) call(recvfrom) call(poll) call(ppoll) call(sem_init)               \
    call(pthread_create)
// clang-format on

NX_CALLS(NX_CALL)
