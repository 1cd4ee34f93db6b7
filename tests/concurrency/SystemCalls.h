#pragma once

#include "tests/concurrency/SharedMemory.h"

#include <cstddef>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

/// Runs the work in a child, which the kernel ends at any system call but its exit and those that are named.
/// @return whether the work came to its end, with 0.
template <typename Work>
bool MakesNoSystemCallBut(std::vector<unsigned int> const& calls, Work work)
{
    std::vector<sock_filter> rules = {{BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)}};
    auto const allow = [&](unsigned int call)
    {
        rules.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, call});
        rules.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW});
    };
    allow(SYS_exit_group);
    for (unsigned int const call : calls)
        allow(call);
    rules.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_KILL_PROCESS});
    auto const child = [&]
    {
        sock_fprog const program = {static_cast<unsigned short>(rules.size()), rules.data()};
        prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
        return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0 ? 1 : work();
    };
    return RunInChild(child) == 0;
}
