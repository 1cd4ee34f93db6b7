// What threads, forks and a changing environment do to the calendar: nothing. Run under the thread sanitizer
// too.

#include "core/platform/nxEnvironmentLock.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxElapsedTimeCounter.h"
#include "core/time/nxTimeStamp.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

namespace
{
// Runs the work over and over on so many threads until it is destroyed.
struct Crowd : std::vector<std::jthread>
{
    Crowd(int size, std::function<void(long long)> const& work)
    {
        for (int i = 0; i != size; ++i)
            emplace_back(
                [work, i](std::stop_token const& stop)
                {
                    for (long long n = i; !stop.stop_requested(); ++n)
                        work(n);
                });
    }
};

// Another hour with each call, so that no remembered offset answers.
bool CalendarAnswers(long long hour)
{
    nxDateTime const moment(1720000000 + hour % 100'000 * 3600); // 3 July 2024 05:46:40 in New York
    nxDateTime const sameFields(moment.GetYear(), moment.GetMonth(), moment.GetDay(), moment.GetHour(),
                                moment.GetMinute(), moment.GetSecond(), 0);
    nxDateTime fromGMT;
    fromGMT.SetFromGMT(2024, 7, 3, 9, 46, 40, 0);
    char text[nxTimeStamp::fastStringSize] = "";
    (void)nxTimeStamp(moment.GetAsTimeValue(), 0).GetAsStringFast(text, sizeof(text));
    (void)nxDateTime::GetCurrentTimeAsGMT();
    return moment.GetAsString("%d%b%y %H:46:40.000.000") == text && sameFields.GetMinute() == 46 &&
           fromGMT.GetMinute() == 46 && moment.GetAsGMT() == moment;
}
} // namespace

class nxCalendarThreads : public testing::Test
{
    nxTestZone _zone{"America/New_York"};
};

// The C library's calendar has a lock that a child of fork() inherits as another thread left it.
TEST_F(nxCalendarThreads, AForkedChildHasACalendar)
{
    Crowd const crowd(4, [](long long n) { (void)CalendarAnswers(n); });
    for (int i = 0; i != 100; ++i)
        ASSERT_EQ(RunInChild([i] { return !CalendarAnswers(i); }), 0) << "child " << i;
}

// A change of the environment may move it, and frees what was there; whoever makes it under the lock disturbs
// no conversion.
TEST_F(nxCalendarThreads, AMovingEnvironmentDoesNoHarm)
{
    char** const original = environ;
    char filler[] = "NX_TEST_FILLER=";
    std::vector<char*> entries(5000, filler); // so that a search for TZ takes its time
    for (char** entry = original; *entry != nullptr; ++entry)
        entries.push_back(*entry);
    entries.push_back(nullptr);
    std::size_t const size = entries.size() * sizeof(char*);

    std::atomic<int> wrong = 0;
    {
        Crowd const crowd(3,
                          [&](long long n)
                          {
                              char text[nxTimeStamp::fastStringSize] = "";
                              (void)nxTimeStamp(1720000000, 0).GetAsStringFast(text, sizeof(text));
                              nxElapsedTimeCounter::ResetGlobalTime();
                              wrong += std::string(text) != "03Jul24 05:46:40.000.000" ||
                                       !CalendarAnswers(n) ||
                                       nxElapsedTimeCounter::GetGlobalElapsedTimeInSeconds() > 60.0;
                          });
        for (int i = 0; i != 1000; ++i)
        {
            usleep(100); // without the lock, or the crowd would only wait for it
            void* const fresh =
                mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            ASSERT_NE(fresh, MAP_FAILED);
            std::memcpy(fresh, entries.data(), size);
            nxPlatform::EnvironmentLock lock;
            char** const left = std::exchange(environ, static_cast<char**>(fresh));
            if (left != original)
                munmap(left, size); // a late reader meets no memory
        }
    }
    EXPECT_EQ(wrong, 0);
    environ = original;
}
