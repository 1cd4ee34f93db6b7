// Named mutexes and semaphores between processes that share nothing but a name: this program starts itself
// anew in a role, hears it through a pipe and has it killed.
#include "core/concurrency/nxWindowsMutex.h"
#include "core/concurrency/nxWindowsSemaphore.h"
#include "tests/Sanitizer.h"
#include "tests/concurrency/RunTogether.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <utility>

#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static_assert(!std::is_copy_constructible_v<nxWindowsMutex> && std::has_virtual_destructor_v<nxWindowsMutex>);
static_assert(!std::is_copy_constructible_v<nxWindowsSemaphore> &&
              std::has_virtual_destructor_v<nxWindowsSemaphore>);
static_assert(sizeof(nxWindowsMutex) == 2 * sizeof(void*) && sizeof(nxWindowsSemaphore) == 2 * sizeof(void*));

namespace
{
void Say(char word)
{
    (void)!write(STDOUT_FILENO, &word, 1);
}

// How many counts there are to take at once.
int TakeAll(nxWindowsSemaphore& semaphore)
{
    int taken = 0;
    while (semaphore.TimedWait(0.0).IsOK())
        ++taken;
    return taken;
}

// The body of a started process, which locks a mutex, or opens a semaphore and takes all or stays.
int PlayRole(std::string_view role, std::string const& name)
{
    (void)alarm(60);
    if (role == "lock")
    {
        nxWindowsMutex mutex(name);
        (void)mutex.Lock();
        Say(role[0]);
        (void)mutex.Unlock();
        return 0;
    }
    if (role == "take")
    {
        nxWindowsSemaphore semaphore(name, 9, 9);
        return TakeAll(semaphore);
    }
    if (role == "poor")
    {
        // No room to map anything; waiting for it for ever ends the process.
        rlimit const none = {0, 0};
        (void)setrlimit(RLIMIT_AS, &none);
        nxWindowsSemaphore semaphore(name, 0, 1);
        return semaphore.TimedWait(0.0).IsOK() ? 7 : 0;
    }
    nxWindowsSemaphore semaphore(name, 4, 5);
    nxWindowsSemaphore end(name + " end", 0, 1);
    Say(role[0]);
    (void)end.Wait();
    return raise(SIGKILL);
}

class OtherProcess
{
public:
    OtherProcess(std::string const& role, std::string const& name)
    {
        std::string const program = std::filesystem::read_symlink("/proc/self/exe");
        _output = popen(("exec '" + program + "' --role " + role + " '" + name + "'").c_str(), "re");
    }

    ~OtherProcess()
    {
        if (_output != nullptr)
            (void)End();
    }

    OtherProcess(OtherProcess const&) = delete;
    OtherProcess& operator=(OtherProcess const&) = delete;

    // @return the next word that the process says, 0 when it says none in that time.
    char Hear(int milliseconds) const
    {
        pollfd output = {fileno(_output), POLLIN, 0};
        char word = 0;
        return poll(&output, 1, milliseconds) == 1 && read(output.fd, &word, 1) == 1 ? word : '\0';
    }

    int End()
    {
        int const status = pclose(std::exchange(_output, nullptr));
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    FILE* _output;
};

constexpr int soon = 50;      // milliseconds in which nothing must happen
constexpr int surely = 30000; // milliseconds in which it must

// Marks this run's names, in a form that is seen in the names of their files too.
std::string const mark = "-" + std::to_string(getpid()) + "-";

std::string Unique(std::string const& name)
{
    return name + mark;
}

void RemoveFilesOfThisRun()
{
    for (std::filesystem::directory_entry const& file : std::filesystem::directory_iterator("/dev/shm"))
    {
        std::string const name = file.path().filename();
        if (name.starts_with("nxcore.") && name.find(mark) != std::string::npos)
            std::filesystem::remove(file.path());
    }
}
} // namespace

TEST(nxWindowsMutex, ExcludesOtherProcessesUntilItsOwnerHasUnlockedAsOftenAsLocked)
{
    std::string const name = Unique("Global\\mutex/");
    nxWindowsMutex mutex(name);
    nxWindowsMutex again(name);
    (void)mutex.Lock();
    (void)again.Lock();
    OtherProcess other("lock", name);
    EXPECT_EQ(other.Hear(soon), '\0');
    EXPECT_TRUE(mutex.Unlock().IsOK());
    EXPECT_EQ(other.Hear(soon), '\0');
    EXPECT_TRUE(mutex.Unlock().IsOK());
    EXPECT_EQ(other.Hear(surely), 'l');
    EXPECT_EQ(other.End(), 0);
}

TEST(nxWindowsMutex, NeitherAnotherThreadNorTheDestructorReleases)
{
    std::string const name = Unique("foreign");
    nxWindowsMutex mutex(name);
    EXPECT_TRUE(mutex.Unlock().IsOK());
    (void)mutex.Lock();
    std::thread([&] { EXPECT_TRUE(mutex.Unlock().IsOK()); }).join();
    {
        nxWindowsMutex destroyed(name);
        (void)destroyed.Lock(); // for the second time
    }
    (void)mutex.Unlock();
    OtherProcess other("lock", name);
    EXPECT_EQ(other.Hear(soon), '\0');
    (void)nxWindowsMutex(name).Unlock();
    EXPECT_EQ(other.Hear(surely), 'l');
}

// None of them crashes or is the mutex of another.
TEST(nxWindowsMutex, NamesAreAnyBytes)
{
    std::string const names[] = {"",
                                 Unique(std::string(1, '\0')),
                                 Unique("../x"),
                                 Unique("%2E"),
                                 std::string(10000000, 'x'),
                                 std::string(9999999, 'x') + 'y'};
    for (std::string const& name : names)
    {
        nxWindowsMutex mutex(name);
        EXPECT_TRUE(mutex.Lock().IsOK());
        RunTogether(1,
                    [&](int)
                    {
                        for (std::string const& other : names)
                        {
                            nxWindowsMutex free(other);
                            EXPECT_TRUE(other == name || (free.Lock().IsOK() && free.Unlock().IsOK()));
                        }
                    });
        EXPECT_TRUE(mutex.Unlock().IsOK());
    }
}

TEST(nxWindowsSemaphore, TheFirstCountsWin)
{
    std::string const name = Unique("first");
    nxWindowsSemaphore first(name, 2, 3);
    nxWindowsSemaphore second(name, 1, 100);
    EXPECT_EQ(TakeAll(second), 2);
    for (int post = 0; post < 10; ++post)
    {
        EXPECT_TRUE(second.Post().IsOK()); // at the maximum too
    }
    OtherProcess other("take", name);
    EXPECT_EQ(other.End(), 3);
    EXPECT_EQ(TakeAll(first), 0);
}

TEST(nxWindowsSemaphore, CountsLiveAsLongAsAProcessHasThemOpen)
{
    std::string const name = Unique("lifetime");
    OtherProcess opener("open", name); // with 4
    ASSERT_EQ(opener.Hear(surely), 'o');
    EXPECT_EQ(OtherProcess("take", name).End(), 4);
    EXPECT_EQ(OtherProcess("take", name).End(), 0);
    (void)nxWindowsSemaphore(name + " end", 0, 1).Post();
    EXPECT_EQ(opener.End(), 128 + SIGKILL);
    EXPECT_EQ(OtherProcess("take", name).End(), 9); // a new semaphore
    EXPECT_EQ(OtherProcess("take", name).End(), 9);
}

TEST(nxWindowsSemaphore, TimesOut)
{
    nxWindowsSemaphore semaphore(Unique("time"), 0, 1);
    for (double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 0.0009, 0.03})
        EXPECT_EQ(semaphore.TimedWait(seconds), NX_ERR_THR_TIMEDOUT) << seconds;
    std::thread poster([&] { (void)semaphore.Post(); });
    EXPECT_TRUE(semaphore.TimedWait(1e300).IsOK());
    poster.join();
}

TEST(nxWindowsSemaphore, CountsThatAreRefusedMakeAnObjectThatDoesNothing)
{
    nxWindowsSemaphore noMaximum(Unique("refused"), 0, 0);
    nxWindowsSemaphore tooMany(Unique("refused"), 2, 1);
    for (nxWindowsSemaphore* semaphore : {&noMaximum, &tooMany})
    {
        EXPECT_TRUE(semaphore->Wait().IsOK());
        EXPECT_TRUE(semaphore->TimedWait(100.0).IsOK());
        EXPECT_TRUE(semaphore->Post().IsOK());
    }
    nxWindowsSemaphore usable(Unique("refused"), 1, 1); // the name is still free
    EXPECT_EQ(TakeAll(usable), 1);
}

TEST(nxWindowsSemaphore, OneThatCannotBeMappedIsGivenUp)
{
    if (underSanitizer)
        GTEST_SKIP() << "the sanitizer maps memory of its own";
    std::string const name = Unique("poor");
    nxWindowsSemaphore const opened(name, 0, 1);
    EXPECT_EQ(OtherProcess("poor", name).End(), 7);
}

int main(int argc, char** argv)
{
    if (argc == 4 && std::string_view(argv[1]) == "--role")
        return PlayRole(argv[2], argv[3]);
    testing::InitGoogleTest(&argc, argv);
    int const result = RUN_ALL_TESTS();
    RemoveFilesOfThisRun();
    return result;
}
