// F11: that a process may end at any moment and in any way, whatever its threads are about.
// F12: that a process with many threads may fork, and that the child can use all of the library and end in any way.
// F13: that the death of an owner is always reported to the next one, and never leaves anybody waiting.
// F14: that pools stop at once whatever they do, and that each functor runs once.

#include "core/core.h"
#include "tests/Sanitizer.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// Uses every lock that the process shares, as its threads do all the time. @return whether the answers were right.
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
    if (underSanitizer)
        NotRun("F12 fork: not run, the locks of the sanitizer's allocator stay as a fork finds them");
    unsigned int const children = Trials(200, 10000);
    auto const start = Clock::now();
    Directory const directory;
    std::optional<int> const code = RunHost(
        directory.path, [&] { return RunForking(children / forkingThreads); }, 500.0, shortCycles);
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
        unsigned int const delay = chance.Below(3000);
        std::optional<int> const code = RunHost(
            directory.path, [=] { return RunToItsEnd(i % ways, delay); }, longest);
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

struct Region
{
    nxMutex mutex;
    std::atomic<unsigned int> turns;
};

/// Locks and unlocks until it is killed. Repairs what a dead owner left, so that it may also die while it does so.
[[noreturn]] void LockForEver(Region& shared)
{
    for (;;)
    {
        if (shared.mutex.Lock() == NX_ERR_THR_OWNER_DEAD)
            (void)shared.mutex.Consistent();
        ++shared.turns;
        (void)shared.mutex.Unlock();
    }
}

[[noreturn]] void LockByNameForEver(nxWindowsMutex& mutex, Region& shared)
{
    for (;;)
    {
        (void)mutex.Lock();
        (void)mutex.Lock(); // its owner may
        ++shared.turns;
        (void)mutex.Unlock();
        (void)mutex.Unlock();
    }
}

void KillWhenBusy(pid_t child, Region const& shared, unsigned int turns)
{
    unsigned int const start = shared.turns;
    while (shared.turns - start < turns)
        std::this_thread::yield();
    (void)kill(child, SIGKILL);
    (void)WaitForChild(child);
}

bool ShowDeaths()
{
    unsigned int const kills = Trials(300, 50000);
    auto const start = Clock::now();
    Region& shared = MakeShared<Region>();
    (void)shared.mutex.InitialiseAsShared(true);
    nxWindowsMutex named("nxfaults" + std::to_string(getpid()));
    (void)alarm(30 + kills / 50); // a lock that never comes ends this process
    Chance chance(13);
    unsigned int clean = 0;
    unsigned int ownerDead = 0;
    unsigned int wrong = 0;
    for (unsigned int i = 0; i < kills; ++i)
    {
        bool const isNamed = i % 8 == 7;
        auto const work = [&]
        {
            isNamed ? LockByNameForEver(named, shared) : LockForEver(shared);
            return 0;
        };
        std::vector<pid_t> owners = {StartChild(work)};
        if (i % 4 == 1) // the second one meets what the first one left
            owners.push_back(StartChild(work));
        for (pid_t const owner : owners)
            KillWhenBusy(owner, shared, chance.Below(40));
        if (isNamed)
        {
            (void)named.Lock();
            (void)named.Unlock();
            continue;
        }
        nxErrorEnum const result = shared.mutex.Lock();
        bool const isDead = result == NX_ERR_THR_OWNER_DEAD;
        ++(isDead ? ownerDead : clean);
        wrong += isDead ? !shared.mutex.Consistent().IsOK() : !result.IsOK();
        wrong += !shared.mutex.Unlock().IsOK();
    }
    (void)alarm(0);
    return Report(start, wrong == 0 && ownerDead != 0,
                  "F13 robust and named mutex, %u kills: %u clean, %u owner dead, %u wrong, 0 hung", kills,
                  clean, ownerDead, wrong);
}

Figure const mutexFigure("mutex", ShowDeaths);

std::atomic<unsigned int> ran = 0;        // functors
std::atomic<unsigned int> disordered = 0; // those whose number is not how many ran before

/// Notes that it was run, and may push one more of its kind.
struct Noting : nxFunctor
{
    Noting(unsigned int numberOfIt, nxFunctorQueue* nextQueue) : number(numberOfIt), next(nextQueue)
    {
    }
    void _Invoke() override
    {
        disordered += number != ran++;
        if (next != nullptr)
            (void)next->Push(new Noting(0, nullptr));
    }

    unsigned int const number;
    nxFunctorQueue* const next;
};

/// Takes out and deletes what a stopped queue has left.
struct DrainedQueue : nxFunctorQueue
{
    ~DrainedQueue() override
    {
        nxFunctor* functor = nullptr;
        while (_Pop(&functor).IsOK())
            delete functor;
    }
};

/// @return how long the stop took, in seconds.
double StopOnce(unsigned int workers, bool isBusy)
{
    DrainedQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    for (unsigned int i = 0; isBusy && i < 50; ++i)
        (void)queue.Push(new Noting(i, i % 5 == 0 ? &queue : nullptr));
    auto const start = Clock::now();
    (void)queue.Stop();
    return SecondsSince(start);
}

/// @param slowestAllowed  in seconds.
bool Stops(unsigned int stops, double slowestAllowed)
{
    constexpr unsigned int workers[] = {0, 1, 2, 8, 64};
    auto const start = Clock::now();
    double slowest = 0.0;
    for (unsigned int i = 0; i < stops; ++i)
    {
        // 64 workers are a twentieth of the trials: starting them is what takes the time.
        unsigned int const kind = i % 20 == 19 ? 4 : i % 4;
        slowest = std::max(slowest, StopOnce(workers[kind], i % 8 < 4));
    }
    return Report(start, slowest < slowestAllowed,
                  "F14 stops of pools of 0 to 64 workers, idle and busy, %u stops: slowest %.0f ms", stops,
                  slowest * 1000.0);
}

/// Half of the functors are pushed by others, where order is not looked at.
bool EachOnce(unsigned int functors, unsigned int workers, bool isOrdered)
{
    constexpr unsigned int mostWaiting = 100000;
    auto const start = Clock::now();
    ran = disordered = 0;
    DrainedQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    for (unsigned int i = 0; i < (isOrdered ? functors : functors / 2); ++i)
    {
        (void)queue.Push(new Noting(i, isOrdered ? nullptr : &queue));
        while (queue.Size() > mostWaiting)
            std::this_thread::yield();
    }
    while (ran < functors && SecondsSince(start) < 300.0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    (void)queue.Stop();
    bool const isKept = ran == functors && (!isOrdered || disordered == 0);
    return Report(start, isKept, "F14 functors, %u worker(s), %s: %u of %u run", workers,
                  isOrdered ? "in order" : "half of them pushed by others", ran.load(), functors);
}

bool ShowPools()
{
    // Beside other tests, the quick one looks for hangs only.
    bool const isPrompt = Stops(Trials(300, 100000), isFull ? 0.5 : 10.0);
    bool const isComplete = EachOnce(Trials(100000, 10000000), 4, false);
    return EachOnce(Trials(50000, 1000000), 1, true) && isComplete && isPrompt;
}

Figure const poolFigure("pool", ShowPools);

} // namespace
