#pragma once

#include <atomic>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

/// Has processes fork while another of their threads does something for the first time, then do it in the child too.
/// The process of the test must not have done it before.
///
/// @return how many of the children hung, or ended in another way than by themselves.
template <typename Use>
int CountForksThatMeetTheFirstUse(int trials, Use const& use)
{
    auto const endsWell = [](pid_t process)
    {
        int status = 0;
        return waitpid(process, &status, 0) == process && status == 0;
    };
    int failures = 0;
    for (int trial = 0; trial < trials; ++trial)
    {
        pid_t const process = fork();
        if (process == 0)
        {
            std::atomic<bool> begins = false;
            std::atomic<bool> ends = false;
            std::thread(
                [&]
                {
                    begins = true;
                    use();
                    ends = true;
                })
                .detach(); // the thread sanitizer would miss the child's join
            while (!begins)
                ;
            pid_t const child = fork();
            if (child == 0)
            {
                alarm(10); // a child that hangs ends by this
                use();
                _exit(0);
            }
            while (!ends)
                std::this_thread::yield();
            _exit(endsWell(child) ? 0 : 1);
        }
        failures += endsWell(process) ? 0 : 1;
    }
    return failures;
}
