// F11: that a process may end at any moment and in any way, whatever its threads are about.
// F12: that a process with many threads may fork, and that the child can use all of the library and end in any way.

#include "core/concurrency/nxThread.h"
#include "core/concurrency/nxThreadIndex.h"
#include "core/logging/nxLogManager.h"
#include "core/numbers/nxExchangeRateConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/time/nxDateTime.h"
#include "tests/Sanitizer.h"
#include "tests/faults/Faults.h"

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

bool UseSharedParts(unsigned int turn)
{
    bool const isEven = turn % 2 == 0;
    nxExchangeRateConverter::GetInstance().Lock();
    nxExchangeRateConverter::GetInstance().Unlock();
    nxDecimal price(isEven ? "1.0" : "30000", '.'); // another range than the last: no remembered one answers
    nxVariableTickTable const* const ladder =
        nxVariableTickTableContainer::GetVariableTickTable("VTT_TAIFEX_TAIEX");
    std::string text;
    bool const isShown = nxPriceConverterHelper::GetPriceAsString(
        nxDoubleValueWrapper(101.5), NX_PRICE_FORMAT_FRACTION_HALF_TICK, text, true);
    bool const isSet = nxCmdLineArgs::GetInstance().SetEnvValue("NX_FAULTS", isEven ? "x" : "");
    nxDateTime const moment(2024, 1, 31, 9, 30, static_cast<int>(turn % 60), 0);
    if (turn % 16 == 0) // a thread asks for its index once
        std::thread([] { (void)nxThreadIndex::GetIndexOfCurrentThread(); }).join();
    if (ladder != nullptr)
        ladder->Increment(price);
    return ladder != nullptr && isShown && text == "101-5" && isSet &&
           nxApplicationData::GetApplicationName() == "host" && moment.GetAsString("%d%b%Y") == "31Jan2024";
}

namespace
{

constexpr unsigned int forkingThreads = 4;
constexpr unsigned int firstChild = 100; // the number under which the first child logs
constexpr unsigned int linesOfChild = 5;

/// Tells the program that a child starts how many descriptors were open before there was a log.
constexpr char openAtStart[] = "NX_FAULTS_OPEN";

/// The child of one thread among many, which alone lives on in it.
[[noreturn]] void BeChild(unsigned int child, unsigned int ending)
{
    (void)alarm(20); // a child that hangs ends by a signal
    bool const isRight = UseSharedParts(child);
    LogLines(firstChild + child, linesOfChild);
    if (ending == 0)
        std::exit(isRight ? 0 : 1);
    Drain();
    if (ending == 1)
        _exit(isRight ? 0 : 1);
    (void)execl("/proc/self/exe", "nxcore_faults", "fork", nullptr);
    _exit(1);
}

unsigned int ForkChildren(unsigned int thread, unsigned int children)
{
    unsigned int failures = 0;
    for (unsigned int i = 0; i < children; ++i)
    {
        LogLines(thread, 10, 10 * i);
        pid_t const child = fork();
        if (child == 0)
            BeChild(i * forkingThreads + thread, i % 3);
        int status = 0;
        (void)waitpid(child, &status, 0);
        failures += status != 0;
    }
    return failures;
}

int RunForking(unsigned int childrenOfThread)
{
    (void)setenv(openAtStart, std::to_string(OpenDescriptors()).c_str(), 1);
    LogToFile();
    std::atomic<unsigned int> failures = 0;
    {
        std::vector<std::jthread> busy;
        auto const useThem = [](std::stop_token const& stop)
        {
            for (unsigned int turn = 0; !stop.stop_requested(); ++turn)
                (void)UseSharedParts(turn);
        };
        for (int i = 0; i < 2; ++i)
            busy.emplace_back(useThem);
        std::vector<std::jthread> forking;
        for (unsigned int i = 0; i < forkingThreads; ++i)
            forking.emplace_back([&, i] { failures += ForkChildren(i, childrenOfThread); });
    }
    Drain();
    return failures == 0 ? 0 : 1;
}

bool ShowForks()
{
    if (char const* const before = std::getenv(openAtStart))
        return OpenDescriptors() <= std::stoul(before);
    if (underAddressSanitizer)
        NotRun("F12 fork: not run, the locks of the sanitizer's allocator stay as a fork finds them");
    unsigned int const children = Trials(200, 10000);
    auto const start = Clock::now();
    Directory const directory;
    Host host(
        directory.path, [&] { return RunForking(children / forkingThreads); }, shortCycles);
    std::optional<int> const code = host.Wait(500.0);
    LogCount count = CountLog(directory.path);
    unsigned int wrong = 0;
    for (unsigned int thread = 0; thread < forkingThreads; ++thread)
        wrong += count.lines[thread] != children / forkingThreads * 10;
    for (unsigned int child = 0; child < children; ++child)
        wrong += count.lines[firstChild + child] != linesOfChild;
    return Report(start, code == 0 && wrong + count.Faults() == 0,
                  "F12 fork, %u children of %u threads: %s, %u logs incomplete, %u lines twice, %u torn",
                  children, forkingThreads,
                  !code        ? "a hang"
                  : *code == 0 ? "all ended well"
                               : "some did not end well",
                  wrong, count.disordered, count.torn + count.tornLast);
}

Figure const forkFigure("fork", ShowForks);

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

int RunToItsEnd(unsigned int way, unsigned int microseconds)
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

bool ShowExits()
{
    unsigned int const count = Trials(300, 10000);
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
        Host host(directory.path,
                  [way = i % ways, delay = chance.Below(3000)] { return RunToItsEnd(way, delay); });
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

Figure const exitFigure("exit", ShowExits);

} // namespace
