#pragma once

#include <new>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

/// @return an object in a region of its own, shared with the children that this process forks from now on.
template <typename Object, typename... Arguments>
Object& MakeShared(Arguments... arguments)
{
    void* const region =
        mmap(nullptr, sizeof(Object), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return *new (region) Object(arguments...);
}

/// Runs the body in a forked child, which ends with its result and no clean-up. One that hangs ends by a signal.
template <typename Body>
pid_t StartChild(Body body)
{
    pid_t const child = fork();
    if (child == 0)
    {
        (void)alarm(30);
        _exit(static_cast<int>(body()));
    }
    return child;
}

/// Waits for the child. @return what it ended with; 128 and the signal's number when one killed it.
inline int WaitForChild(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

template <typename Body>
int RunInChild(Body body)
{
    return WaitForChild(StartChild(body));
}
