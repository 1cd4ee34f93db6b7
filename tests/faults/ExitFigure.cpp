// F11: that a process may end at any moment and in any way, whatever its threads are about.

#include "core/concurrency/nxThread.h"
#include "core/logging/nxLogManager.h"
#include "tests/faults/Faults.h"

#include <cstdlib>
#include <iterator>
#include <thread>

#include <unistd.h>

namespace
{

constexpr unsigned int handedOver = 100; // lines that main logs before the end
constexpr char const* const ways[] = {"return", "exit", "exit-elsewhere", "destroy", "quick"};

/// Logs and uses what the process shares, until it ends.
void WorkForEver(unsigned int thread)
{
    for (unsigned int i = 0;; ++i)
    {
        LogLines(thread, 1, i);
        UseSharedParts(i);
        nxThread::Sleep(i % 4 == 0 ? 1000 : 0);
    }
}

int Run(Arguments const& arguments)
{
    std::string const& way = arguments.at(0);
    LogToFile();
    for (unsigned int i = 1; i <= 4; ++i)
    {
        std::thread(WorkForEver, i).detach();
    }
    LogLines(0, handedOver);
    (void)usleep(Number(arguments.at(1)));
    if (way == "exit")
    {
        std::exit(0);
    }
    if (way == "exit-elsewhere")
    {
        std::thread([] { std::exit(0); }).detach();
        pause();
    }
    if (way == "destroy")
    {
        (void)nxLogManager::GetInstance().Destroy();
    }
    if (way == "quick")
    {
        std::quick_exit(0); // runs no handler, so nothing is promised but a quiet end
    }
    return 0;
}

bool Show()
{
    unsigned int const exits = Trials(300, 5000);
    constexpr double longest = 2.0;
    auto const start = Clock::now();
    Chance chance(11);
    unsigned int crashes = 0;
    unsigned int hangs = 0;
    unsigned int lost = 0;
    unsigned int torn = 0;
    for (unsigned int i = 0; i < exits; ++i)
    {
        Directory const directory;
        std::string const way = ways[i % std::size(ways)];
        Host host(directory.path, {"exit", way, std::to_string(chance.Below(3000))});
        std::optional<int> const code = host.Wait(longest);
        hangs += !code;
        crashes += code && *code != 0;
        if (way != "quick")
        {
            LogCount const count = CountLog(directory.path);
            lost += count.Lost(1, handedOver);
            torn += count.Faults();
        }
    }
    return Report(start, crashes + hangs + lost + torn == 0,
                  "F11 exit races, %u exits in %zu ways: %u crashes, %u hangs, %u lines lost, %u torn", exits,
                  std::size(ways), crashes, hangs, lost, torn);
}

Figure const figure("exit", Show, Run);

} // namespace
