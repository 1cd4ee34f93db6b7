// What a log line's stamp must not cost: memory and system calls.

#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/prices/nxAllocationCount.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <iterator>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

constexpr long long moment = 1720000000;

void TakeStampsAndWriteThem()
{
    char text[nxTimeStamp::fastStringSize];
    for (int i = 0; i != 100; ++i)
    {
        (void)nxTimeStamp().GetAsStringFast(text, sizeof(text));
        (void)nxTimeStamp(moment + i, 0).GetAsStringFast(text, sizeof(text));
        (void)nxDateTime();
    }
}

void ReadTheClock()
{
    std::timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
}

// From here on, the kernel ends this process at any system call but its exit.
void ForbidSystemCalls()
{
    sock_filter rules[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, SYS_exit_group},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_KILL_PROCESS},
    };
    sock_fprog const program = {std::size(rules), rules};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        std::abort();
}

bool MakesNoSystemCall(void (*work)())
{
    auto const child = [work]
    {
        ForbidSystemCalls();
        work();
        return 0;
    };
    return RunInChild(child) == 0;
}

} // namespace

TEST(nxTimeStampCost, NoAllocation)
{
    nxAllocationCount const count;
    TakeStampsAndWriteThem();
    EXPECT_EQ(count.Get(), 0u);
    operator delete(operator new(1));
    EXPECT_EQ(count.Get(), 1u) << "allocations are counted";
}

TEST(nxTimeStampCost, NoSystemCallWithAZoneOrWithout)
{
    EXPECT_FALSE(MakesNoSystemCall([] { (void)getppid(); })) << "system calls are noticed";
    if (!MakesNoSystemCall(ReadTheClock))
        GTEST_SKIP() << "this machine's clock is read by a system call";
    for (char const* name : {static_cast<char const*>(nullptr), "America/New_York"})
    {
        nxTestZone const zone(name);
        TakeStampsAndWriteThem(); // the hours are asked for once
        EXPECT_TRUE(MakesNoSystemCall(TakeStampsAndWriteThem)) << (name == nullptr ? "no zone" : name);
    }
}
