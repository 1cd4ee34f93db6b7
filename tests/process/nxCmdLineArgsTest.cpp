// How nxCmdLineArgs reads command line and environment, and what its getters make of the values. A fuzz target holds
// which words are switches and values, what the entries of an environment are, and which texts are times.
#include "core/process/nxCmdLineArgs.h"
#include "core/platform/nxEnvironmentLock.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <future>
#include <tuple>

namespace
{

using Map = std::map<std::string, std::string>;
using List = std::vector<std::string>;

// The pointers that a program starts with.
std::vector<char*> GetPointers(List& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// An object of the test's own, as fresh as the process's one is at load.
class Arguments : public nxCmdLineArgs
{
public:
    Arguments() = default;

    explicit Arguments(List environment, List words = {"prog"})
    {
        Initialise(GetPointers(words).data(), GetPointers(environment).data());
    }

    Map Envs() const
    {
        Map envs;
        GetEnvs(envs);
        return envs;
    }
};

} // namespace

TEST(nxCmdLineArgs, ReadsEachHalfOnce)
{
    List words = {"prog", "-a", "1"};
    List entries = {"A=1", "B="};
    List others = {"X=2", "-b", "2"};
    std::vector<char*> const argv = GetPointers(words);
    std::vector<char*> const envp = GetPointers(entries);
    Arguments arguments;
    EXPECT_EQ(arguments.GetRawArgv(), nullptr);
    EXPECT_EQ(arguments.GetRawEnvp(), nullptr);
    arguments.Initialise(nullptr, const_cast<char**>(envp.data()));
    arguments.Initialise(const_cast<char**>(argv.data()), nullptr);
    arguments.Initialise(GetPointers(others).data(), GetPointers(others).data());
    EXPECT_EQ(arguments.GetRawArgv(), argv.data());
    EXPECT_EQ(arguments.GetRawEnvp(), envp.data());
    EXPECT_EQ(arguments.GetCommand(), "prog");
    EXPECT_EQ(arguments.GetArgValue("a"), "1");
    EXPECT_FALSE(arguments.IsArgDefined("b"));
    EXPECT_EQ(Arguments(arguments).Envs(), (Map{{"A", "1"}, {"B", ""}}));

    Arguments empty({}, {}); // read, though there was nothing
    empty.Initialise(const_cast<char**>(argv.data()), const_cast<char**>(envp.data()));
    EXPECT_EQ(empty.GetCommand() + empty.GetArgValue("a"), "");
    EXPECT_EQ(empty.Envs(), Map());
}

TEST(nxCmdLineArgs, ReadsNumbersAndTruths)
{
    constexpr unsigned int none = nxVolume::nullValue;
    // A text, its volume, its decimal and its double, empty for NULL, and whether it is true, usually and by default.
    std::tuple<char const*, unsigned int, char const*, char const*, bool, bool> const rows[] = {
        {"", none, "", "", false, true},
        {"007", 7, "7", "7", false, true},
        {"4294967297", 1, "4294967297", "4.294967e+09", false, true}, // wraps
        {"-1.50", none, "-1.50", "-1.5", false, true},
        {"TRUE", none, "", "", true, true},
        {"yEs", none, "", "", true, true},
        {" yes", none, "", "", false, true},
        {"false", none, "", "", false, false},
        {"No", none, "", "", false, false},
    };
    for (auto const& [text, volume, decimal, real, isTrue, isTrueByDefault] : rows)
    {
        SCOPED_TRACE(text);
        Arguments const arguments({std::string("K=") + text}, {"prog", "-k", text});
        EXPECT_EQ(arguments.GetArgValueAsVolume("k").GetValue(), volume);
        EXPECT_EQ(arguments.GetArgValueAsDecimal("k").GetAsString('.'), decimal);
        EXPECT_EQ(arguments.GetArgValueAsDoubleValue("k").GetAsString(), real);
        EXPECT_EQ(arguments.GetEnvValueAsDoubleValue("K").GetAsString(), real);
        EXPECT_EQ(arguments.GetEnvValueAsBool("K"), isTrue);
        EXPECT_EQ(arguments.GetEnvValueAsBool("K", true), isTrueByDefault);
    }
}

TEST(nxCmdLineArgs, ReadsTimesOfToday)
{
    nxDateTime const before;
    nxDateTime const time = Arguments({"K=23:59:58"}).GetEnvValueAsHHMMSS("K");
    EXPECT_EQ(time.GetAsString("%H:%M:%S"), "23:59:58");
    EXPECT_GE(time.GetAsISODate(), before.GetAsISODate());
    EXPECT_LE(time.GetAsISODate(), nxDateTime().GetAsISODate());
}

TEST(nxCmdLineArgs, SeesTheLiveEnvironmentUntilItIsRead)
{
    Arguments arguments;
    for (std::size_t const length : {1u, 1023u, 1024u, 1025u, 100000u, 0u})
    {
        std::string const value(length, 'v');
        ASSERT_EQ(::setenv("NX_TEST_LIVE", value.c_str(), 1), 0);
        EXPECT_EQ(arguments.GetEnvValue("NX_TEST_LIVE"), value) << length;
    }
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_LIVE", "live"));
    EXPECT_STREQ(::getenv("NX_TEST_LIVE"), "live");
    EXPECT_EQ(arguments.Envs(), Map()); // nothing is kept before the environment is read

    List entries = {"A=1"};
    arguments.Initialise(nullptr, GetPointers(entries).data());
    EXPECT_EQ(arguments.GetEnvValue("NX_TEST_LIVE"), "");
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_LIVE", "kept"));
    EXPECT_TRUE(arguments.SetEnvValue("A", "2"));
    EXPECT_EQ(arguments.Envs(), (Map{{"A", "2"}, {"NX_TEST_LIVE", "kept"}}));
    EXPECT_FALSE(arguments.SetEnvValue("NX=TEST", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("A", ""));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_NONE", ""));
    EXPECT_EQ(arguments.Envs(), (Map{{"NX_TEST_LIVE", "kept"}}));
    EXPECT_EQ(::getenv("A"), nullptr);
}

TEST(nxCmdLineArgs, ChangesTheZoneOfTheCalendar)
{
    Arguments arguments;
    for (auto const& [zone, time] : {std::pair("UTC0", "22:13"), {"NPT-5:45", "03:58"}, {"", ""}})
    {
        ASSERT_TRUE(arguments.SetEnvValue("TZ", zone));
        EXPECT_TRUE(*time == '\0' || nxDateTime(1700000000LL).GetAsString("%H:%M") == time) << zone;
    }
}

// The system moves its environment under readers, so all ways to it through the library share one lock.
TEST(nxCmdLineArgs, AsksForTheEnvironmentUnderItsLock)
{
    Arguments arguments;
    for (bool const isChange : {false, true})
    {
        auto const ask = [&] {
            return isChange ? arguments.SetEnvValue("NX_TEST", "v")
                            : arguments.GetEnvValue("NX_TEST").empty();
        };
        std::future<bool> access;
        nxPlatform::EnvironmentLock lock;
        access = std::async(std::launch::async, ask);
        EXPECT_EQ(access.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    } // the lock is released before the future waits
}

// Neither may wait for ever, or miss what is there.
TEST(nxCmdLineArgs, IsReadByAChildThatWasForkedWhileItChanged)
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    ASSERT_TRUE(arguments.SetEnvValue("NX_TEST_STEADY", "steady"));
    std::atomic<bool> stop(false);
    auto const change = [&]
    {
        // New names make the system move its list, removals make it move the entries in it.
        for (unsigned int i = 0; !stop; ++i)
            (void)arguments.SetEnvValue("NX_TEST_" + std::to_string(i % 5000), i % 7 < 4 ? "x" : "");
    };
    std::future<void> const changes = std::async(std::launch::async, change);
    auto const isRead = [&]
    { return arguments.GetEnvValue("NX_TEST_STEADY") == "steady" && nxDateTime().IsValid(); };
    for (int i = 0; i < 30 && !HasFailure(); ++i)
        EXPECT_TRUE(RunInChild(isRead) == 1 && isRead());
    stop = true;
}
