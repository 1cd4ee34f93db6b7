#pragma once

#include <new>
#include <utility>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

/// A region shared with the children that this process forks, with one object in it.
template <typename Object>
class Shared
{
public:
    template <typename... Arguments>
    explicit Shared(Arguments&&... arguments)
        : _region(mmap(nullptr, sizeof(Object), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
          _object(new (_region) Object(std::forward<Arguments>(arguments)...))
    {
    }

    ~Shared()
    {
        munmap(_region, sizeof(Object));
    }

    Shared(Shared const&) = delete;
    Shared& operator=(Shared const&) = delete;

    Object& operator*() const
    {
        return *_object;
    }
    Object* operator->() const
    {
        return _object;
    }

private:
    void* _region;
    Object* _object;
};

/// Runs the body in a forked child, which ends with its result and no clean-up.
template <typename Body>
pid_t StartChild(Body body)
{
    pid_t const child = fork();
    if (child == 0)
        _exit(static_cast<int>(body()));
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
    return WaitForChild(StartChild(std::move(body)));
}
