// F11: that a process may end at any moment and in any way, whatever its threads are about.

#include "core/concurrency/nxThread.h"
#include "core/logging/nxLogManager.h"
#include "tests/faults/Faults.h"

#include <cstdlib>
#include <thread>

#include <unistd.h>

namespace
{

constexpr unsigned int handedOver = 100; // lines that main logs before the end

enum Way : unsigned int
{
    returns,
    exits,
    exitsElsewhere,
    destroys,
    endsQuickly, // which runs no handler, so nothing is promised but a quiet end
    ways
};

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

int Run(unsigned int way, unsigned int microseconds)
{
    LogToFile();
    for (unsigned int i = 1; i <= 4; ++i)
        std::thread(WorkForEver, i).detach();
    LogLines(0, handedOver);
    (void)usleep(microseconds);
    switch (way)
    {
    case exits: std::exit(0);
    case exitsElsewhere: std::thread([] { std::exit(0); }).detach(); return pause();
    case destroys: return nxLogManager::GetInstance().Destroy().IsOK() ? 0 : 1;
    case endsQuickly: std::quick_exit(0);
    default: return 0;
    }
}

bool Show()
{
    unsigned int const count = Trials(300, 5000);
    constexpr double longest = 2.0;
    auto const start = Clock::now();
    Chance chance(11);
    unsigned int crashes = 0;
    unsigned int hangs = 0;
    unsigned int lost = 0;
    unsigned int torn = 0;
    for (unsigned int i = 0; i < count; ++i)
    {
        Directory const directory;
        Host host(directory.path, [way = i % ways, delay = chance.Below(3000)] { return Run(way, delay); });
        std::optional<int> const code = host.Wait(longest);
        hangs += !code;
        crashes += code && *code != 0;
        if (i % ways != endsQuickly)
        {
            LogCount log = CountLog(directory.path);
            lost += log.Lost(1, handedOver);
            torn += log.Faults();
        }
    }
    return Report(start, crashes + hangs + lost + torn == 0,
                  "F11 exit races, %u exits in %u ways: %u crashes, %u hangs, %u lines lost, %u torn", count,
                  static_cast<unsigned int>(ways), crashes, hangs, lost, torn);
}

Figure const figure("exit", Show);

} // namespace
