// F12: that a process with many threads may fork, and that the child can use all of the library and end in any way.

#include "core/concurrency/nxThreadIndex.h"
#include "core/logging/nxLogManager.h"
#include "core/numbers/nxExchangeRateConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/time/nxDateTime.h"
#include "tests/faults/Figures.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr unsigned int forkingThreads = 4;
constexpr unsigned int firstChild = 100; // the number under which the first child logs
constexpr unsigned int linesOfChild = 5;

unsigned int openAtStart; // descriptors, before there was a log

enum class Ending
{
    exit,
    underscoreExit,
    exec
};

/// The child of one thread among many, which alone lives on in it.
[[noreturn]] void BeChild(unsigned int child, Ending ending)
{
    constexpr unsigned int longest = 20; // seconds: a child that hangs ends by a signal
    (void)alarm(longest);
    bool const isRight = UseSharedParts(child);
    LogLines(firstChild + child, linesOfChild);
    switch (ending)
    {
    case Ending::exit: std::exit(isRight ? 0 : 1);
    case Ending::underscoreExit: Drain(); _exit(isRight ? 0 : 1);
    case Ending::exec:
        Drain();
        (void)execl("/proc/self/exe", "nxcore_faults", "--host", "descriptors",
                    std::to_string(openAtStart).c_str(), nullptr);
        _exit(1);
    }
    std::abort();
}

unsigned int ForkChildren(unsigned int thread, unsigned int children)
{
    unsigned int failures = 0;
    for (unsigned int i = 0; i < children; ++i)
    {
        LogLines(thread, 10, 10 * i);
        pid_t const child = fork();
        if (child == 0)
        {
            BeChild(i * forkingThreads + thread, static_cast<Ending>(i % 3));
        }
        int status = 0;
        (void)waitpid(child, &status, 0);
        if (status != 0)
        {
            std::fprintf(stderr, "ended by %d: status %d\n", static_cast<int>(i % 3), status);
            ++failures;
        }
    }
    return failures;
}

} // namespace

bool UseSharedParts(unsigned int turn)
{
    nxExchangeRateConverter const& rates = nxExchangeRateConverter::GetInstance();
    rates.Lock();
    rates.Unlock();

    // Another range than the last, so that no remembered one answers.
    nxDecimal price = nxDecimal(turn % 2 == 0 ? "1.0" : "30000", '.');
    nxVariableTickTable const* const ladder =
        nxVariableTickTableContainer::GetVariableTickTable("VTT_TAIFEX_TAIEX");
    bool isRight = ladder != nullptr;
    if (isRight)
    {
        ladder->Increment(price);
    }

    std::string text;
    isRight = nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper(101.5),
                                                       NX_PRICE_FORMAT_FRACTION_HALF_TICK, text, true) &&
              text == "101-5" && isRight;

    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    isRight = arguments.SetEnvValue("NX_FAULTS", turn % 2 == 0 ? "x" : "") && isRight;
    isRight = nxApplicationData::GetApplicationName() == "host" && isRight;
    isRight =
        nxDateTime(2024, 1, 31, 9, 30, static_cast<int>(turn % 60), 0).GetAsString("%d%b%Y") == "31Jan2024" &&
        isRight;
    if (turn % 16 == 0)
    {
        // A thread asks for its index once.
        std::thread([] { (void)nxThreadIndex::GetIndexOfCurrentThread(); }).join();
    }
    return isRight;
}

// Argument: how many children.
int ForkHost(Arguments const& arguments)
{
    openAtStart = OpenDescriptors();
    (void)LogToFile();
    unsigned int const children = Number(arguments.at(0)) / forkingThreads;
    std::atomic<bool> stop = false;
    std::array<std::thread, 2> busy;
    for (std::thread& thread : busy)
    {
        thread = std::thread(
            [&]
            {
                for (unsigned int i = 0; !stop; ++i)
                {
                    (void)UseSharedParts(i);
                }
            });
    }
    std::atomic<unsigned int> failures = 0;
    std::array<std::thread, forkingThreads> forking;
    for (unsigned int i = 0; i < forkingThreads; ++i)
    {
        forking[i] = std::thread([&, i] { failures += ForkChildren(i, children); });
    }
    for (std::thread& thread : forking)
    {
        thread.join();
    }
    stop = true;
    for (std::thread& thread : busy)
    {
        thread.join();
    }
    Drain();
    return failures == 0 ? 0 : 1;
}

// What a program has open that was started by a child which had a log. Argument: how many the parent had at its start.
int DescriptorHost(Arguments const& arguments)
{
    return OpenDescriptors() > Number(arguments.at(0)) ? 1 : 0;
}

bool ForkFigure(Extent extent)
{
    unsigned int const children = extent == Extent::full ? 10000 : 200;
    auto const start = Clock::now();
    Directory const directory;
    Host host(directory.Path(), {"fork", std::to_string(children)},
              {{"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"},
               {"ASAN_OPTIONS", "detect_leaks=0"},     // what threads held that a child doesn't have
               {"TSAN_OPTIONS", "die_after_fork=0"}}); // threads of a forked child are meant here
    std::optional<int> const code = host.Wait(500.0);
    LogCount const count = CountLog(directory.Path());
    unsigned int wrong = 0;
    for (unsigned int thread = 0; thread < forkingThreads; ++thread)
    {
        wrong += count.Lines(thread) != children / forkingThreads * 10;
    }
    for (unsigned int child = 0; child < children; ++child)
    {
        wrong += count.Lines(firstChild + child) != linesOfChild;
    }
    char text[200];
    (void)std::snprintf(
        text, sizeof text,
        "F12 fork, %u children of %u threads: %s, %u logs incomplete, %u lines twice, %u torn", children,
        forkingThreads,
        !code        ? "a hang"
        : *code == 0 ? "all ended well"
                     : "some did not end well",
        wrong, count.disordered, count.torn + count.tornLast);
    return Report(text, start, code == 0 && wrong + count.disordered + count.torn + count.tornLast == 0);
}
