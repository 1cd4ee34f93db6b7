// What a log line's stamp must not cost: memory and system calls.

#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/prices/nxAllocationCount.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ctime>
#include <iterator>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace
{
int TakeStampsAndWriteThem()
{
    char text[nxTimeStamp::fastStringSize];
    for (int i = 0; i != 100; ++i)
    {
        (void)nxTimeStamp().GetAsStringFast(text, sizeof(text));
        (void)nxTimeStamp(1720000000 + i, 0).GetAsStringFast(text, sizeof(text));
        (void)nxDateTime();
    }
    return 0;
}

/// In a child, which the kernel ends at any system call but its exit.
bool MakesNoSystemCall(int (*work)())
{
    auto const child = [work]
    {
        sock_filter rules[] = {
            {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
            {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, SYS_exit_group},
            {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
            {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_KILL_PROCESS},
        };
        sock_fprog const program = {std::size(rules), rules};
        prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
        return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0 ? 1 : work();
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
    EXPECT_FALSE(MakesNoSystemCall([] { return getppid() < 0 ? 1 : 0; })) << "system calls are noticed";
    auto const readTheClock = []
    {
        std::timespec now;
        return clock_gettime(CLOCK_REALTIME, &now);
    };
    if (!MakesNoSystemCall(readTheClock))
        GTEST_SKIP() << "this machine's clock is read by a system call";
    for (char const* name : {static_cast<char const*>(nullptr), "America/New_York"})
    {
        nxTestZone const zone(name);
        TakeStampsAndWriteThem(); // the hours are asked for once
        EXPECT_TRUE(MakesNoSystemCall(TakeStampsAndWriteThem)) << (name == nullptr ? "no zone" : name);
    }
}
