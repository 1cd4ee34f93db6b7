// How nxCmdLineArgs reads command line and environment, and what its getters make of the values.
#include "core/process/nxCmdLineArgs.h"
#include "core/platform/nxEnvironmentLock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using Map = std::map<std::string, std::string>;
using List = std::vector<std::string>;

// An object of the test's own, as fresh as the process's one is at load.
class Arguments : public nxCmdLineArgs
{
public:
    Arguments() = default;

    void Read(char const* const* argv, char const* const* envp)
    {
        Initialise(const_cast<char**>(argv), const_cast<char**>(envp));
    }

    void ReadEnvironment(List const& entries)
    {
        std::vector<char const*> pointers;
        for (std::string const& entry : entries)
        {
            pointers.push_back(entry.c_str());
        }
        pointers.push_back(nullptr);
        Read(nullptr, pointers.data());
    }

    Map Args() const
    {
        Map args = {{"old", "old"}};
        GetArgs(args);
        return args;
    }

    Map Envs() const
    {
        Map envs = {{"old", "old"}};
        GetEnvs(envs);
        return envs;
    }

    List Unprocessed() const
    {
        List unprocessed = {"old"};
        GetUnprocessedArgs(unprocessed);
        return unprocessed;
    }
};

struct CommandLine
{
    List arguments;
    Map args;
    List unprocessed;
};

} // namespace

TEST(nxCmdLineArgs, TakesSwitchesAndTheirValues)
{
    CommandLine const rows[] = {
        {{}, {}, {}},
        {{"a", "-x", "1", "b", "-y", "-z", "-2", "-w"},
         {{"x", "1"}, {"y", ""}, {"z", "-2"}, {"w", ""}},
         {"a", "b"}},
        {{"-a", "-.5"}, {{"a", "-.5"}}, {}},
        {{"-a", "-5."}, {{"a", "-5."}}, {}},
        {{"-a", "-1.2.3"}, {{"a", ""}, {"1.2.3", ""}}, {}},
        {{"-a", "-"}, {{"a", ""}, {"", ""}}, {}},
        {{"-", "v"}, {{"", "v"}}, {}},
        {{"-", "-", "-7"}, {{"", "-7"}}, {}},
        {{"-a", "--5"}, {{"a", ""}, {"-5", ""}}, {}},
        {{"-a", "-+5"}, {{"a", ""}, {"+5", ""}}, {}},
        {{"-a", "-."}, {{"a", ""}, {".", ""}}, {}},
        {{"-a", "-1e5"}, {{"a", ""}, {"1e5", ""}}, {}},
        {{"-5", "-6", "-7"},
         {{"5", "-6"}, {"7", ""}},
         {}}, // nothing pending: a number starts a switch like any text
        {{"-a", "+5"}, {{"a", "+5"}}, {}},
        {{"+5", ""}, {}, {"+5", ""}},
        {{"-a", "", "b"}, {{"a", ""}}, {"b"}},
        {{"-a", "1", "-a", "2", "-A", "3"}, {{"a", "2"}, {"A", "3"}}, {}},
        {{"-a", "1", "-a"}, {{"a", ""}}, {}},
        {{"-a=b", "c d"}, {{"a=b", "c d"}}, {}},
    };
    for (CommandLine const& row : rows)
    {
        std::vector<char const*> argv = {"prog"};
        std::string line;
        for (std::string const& argument : row.arguments)
        {
            argv.push_back(argument.c_str());
            line += argument + " ";
        }
        argv.push_back(nullptr);
        Arguments arguments;
        arguments.Read(argv.data(), nullptr);
        EXPECT_EQ(arguments.GetCommand(), "prog");
        EXPECT_EQ(arguments.Args(), row.args) << line;
        EXPECT_EQ(arguments.Unprocessed(), row.unprocessed) << line;
    }
}

TEST(nxCmdLineArgs, ReadsEachHalfOnce)
{
    char const* const argv[] = {"prog", "-a", "1", nullptr};
    char const* const otherArgv[] = {"other", "-b", "2", nullptr};
    char const* const envp[] = {"A=1", nullptr};
    char const* const otherEnvp[] = {"B=2", nullptr};
    Arguments arguments;
    EXPECT_EQ(arguments.GetRawArgv(), nullptr);
    EXPECT_EQ(arguments.GetRawEnvp(), nullptr);
    arguments.Read(nullptr, envp);
    arguments.Read(argv, nullptr);
    arguments.Read(otherArgv, otherEnvp);
    EXPECT_EQ(arguments.GetCommand(), "prog");
    EXPECT_EQ(arguments.Args(), (Map{{"a", "1"}}));
    EXPECT_EQ(arguments.Envs(), (Map{{"A", "1"}}));
    EXPECT_EQ(arguments.GetRawArgv(), const_cast<char**>(argv));
    EXPECT_EQ(arguments.GetRawEnvp(), const_cast<char**>(envp));
    EXPECT_TRUE(arguments.IsArgDefined("a"));
    EXPECT_FALSE(arguments.IsArgDefined("A"));
    EXPECT_EQ(arguments.GetArgValue("A"), "");

    char const* const nothing[] = {nullptr};
    Arguments empty;
    empty.Read(nothing, nothing);
    empty.Read(argv, envp);
    EXPECT_EQ(empty.GetCommand(), "");
    EXPECT_EQ(empty.Args(), Map());
    EXPECT_EQ(empty.Envs(), Map());
}

TEST(nxCmdLineArgs, SplitsTheEnvironment)
{
    Arguments arguments;
    arguments.ReadEnvironment({"A=1", "B=", "C=x=y", "nothing", "", "=D:=z", "A=2", "a=3"});
    EXPECT_EQ(arguments.Envs(), (Map{{"", "D:=z"}, {"A", "2"}, {"B", ""}, {"C", "x=y"}, {"a", "3"}}));
    EXPECT_EQ(arguments.GetEnvValue("C"), "x=y");
    EXPECT_EQ(arguments.GetEnvValue("c"), "");
    Map own;
    arguments.GetEnvs(own);
    Arguments const copy(arguments);
    EXPECT_EQ(copy.Envs(), own);
}

TEST(nxCmdLineArgs, SeesTheLiveEnvironmentUntilItIsRead)
{
    Arguments arguments;
    for (std::size_t const length : {1u, 1022u, 1023u, 1024u, 1025u, 100000u})
    {
        std::string const value(length, 'v');
        ASSERT_EQ(::setenv("NX_TEST_LIVE", value.c_str(), 1), 0);
        EXPECT_EQ(arguments.GetEnvValue("NX_TEST_LIVE"), value) << length;
    }
    ASSERT_EQ(::setenv("NX_TEST_LIVE", "", 1), 0);
    EXPECT_EQ(arguments.GetEnvValue("NX_TEST_LIVE"), "");
    ASSERT_EQ(::unsetenv("NX_TEST_LIVE"), 0);
    EXPECT_EQ(arguments.GetEnvValue("NX_TEST_LIVE"), "");

    arguments.ReadEnvironment({"NX_TEST_OTHER=1"});
    ASSERT_EQ(::setenv("NX_TEST_LIVE", "late", 1), 0);
    EXPECT_EQ(arguments.GetEnvValue("NX_TEST_LIVE"), "");
    EXPECT_EQ(arguments.GetEnvValue("NX_TEST_OTHER"), "1");
}

TEST(nxCmdLineArgs, ReadsWholeNumbers)
{
    struct
    {
        char const* text;
        unsigned int volume;
        unsigned long long number;
    } const rows[] = {
        {"", nxVolume::nullValue, ~0ull},
        {"0", 0, 0},
        {"007", 7, 7},
        {"4294967295", nxVolume::nullValue, 4294967295u}, // reads as the sentinel that it equals
        {"4294967294", nxVolume::noChangeValue, 4294967294u},
        {"4294967297", 1, 4294967297u}, // wraps
        {"18446744073709551617", 1, 1},
        {"18446744073709551614", nxVolume::noChangeValue, ~1ull},
        {"+5", nxVolume::nullValue, ~0ull},
        {"-5", nxVolume::nullValue, ~0ull},
        {"5 ", nxVolume::nullValue, ~0ull},
        {"5.0", nxVolume::nullValue, ~0ull},
        {"0x5", nxVolume::nullValue, ~0ull},
    };
    for (auto const& row : rows)
    {
        char const* const argv[] = {"prog", "-k", row.text, nullptr};
        Arguments arguments;
        arguments.Read(argv, nullptr);
        arguments.ReadEnvironment({std::string("K=") + row.text});
        EXPECT_EQ(arguments.GetArgValueAsVolume("k").GetValue(), row.volume) << row.text;
        EXPECT_EQ(arguments.GetEnvValueAsVolume("K").GetValue(), row.volume) << row.text;
        EXPECT_EQ(arguments.GetEnvValueAsUInteger64("K").GetValue(), row.number) << row.text;
    }
}

TEST(nxCmdLineArgs, ReadsRealNumbers)
{
    struct
    {
        char const* text;
        char const* decimal; // empty for NULL
        char const* number;
    } const rows[] = {
        {"", "", ""},    {"1.50", "1.50", "1.5"}, {"-.5", "-0.5", "-0.5"},
        {"1,5", "", ""}, {"x", "", ""},           {" 1", "", ""},
    };
    for (auto const& row : rows)
    {
        char const* const argv[] = {"prog", "-k", row.text, nullptr};
        Arguments arguments;
        arguments.Read(argv, nullptr);
        arguments.ReadEnvironment({std::string("K=") + row.text});
        for (nxDecimal const& decimal :
             {arguments.GetArgValueAsDecimal("k"), arguments.GetEnvValueAsDecimal("K")})
        {
            EXPECT_EQ(decimal.IsNull(), *row.decimal == '\0') << row.text;
            EXPECT_EQ(decimal.GetAsString('.'), row.decimal) << row.text;
        }
        for (nxDoubleValueWrapper const& number :
             {arguments.GetArgValueAsDoubleValue("k"), arguments.GetEnvValueAsDoubleValue("K")})
        {
            EXPECT_EQ(number.IsNull(), *row.number == '\0') << row.text;
            EXPECT_EQ(number.GetAsString(), row.number) << row.text;
        }
    }
}

TEST(nxCmdLineArgs, ReadsBooleans)
{
    struct
    {
        char const* text;
        bool withoutDefault;
        bool withFalse;
        bool withTrue;
    } const rows[] = {
        {"TRUE", true, true, true},  {"yEs", true, true, true},    {"false", false, false, false},
        {"No", false, false, false}, {"", false, false, true},     {" yes", false, false, true},
        {"1", false, false, true},   {"YESS", false, false, true},
    };
    for (auto const& row : rows)
    {
        Arguments arguments;
        arguments.ReadEnvironment({std::string("K=") + row.text});
        EXPECT_EQ(arguments.GetEnvValueAsBool("K"), row.withoutDefault) << row.text;
        EXPECT_EQ(arguments.GetEnvValueAsBool("K", false), row.withFalse) << row.text;
        EXPECT_EQ(arguments.GetEnvValueAsBool("K", true), row.withTrue) << row.text;
    }
}

TEST(nxCmdLineArgs, ReadsTimesOfToday)
{
    Arguments arguments;
    arguments.ReadEnvironment({"SHORT=09:30", "LONG=23:59:58"});
    nxDateTime const now;
    nxDateTime const shortForm = arguments.GetEnvValueAsHHMMSS("SHORT");
    EXPECT_EQ(shortForm.GetHour(), 9);
    EXPECT_EQ(shortForm.GetMinute(), 30);
    EXPECT_EQ(shortForm.GetSecond(), 0);
    nxDateTime const longForm = arguments.GetEnvValueAsHHMMSS("LONG");
    EXPECT_EQ(longForm.GetAsString("%H:%M:%S"), "23:59:58");
    nxDateTime const later;
    EXPECT_TRUE(shortForm.GetAsISODate() == now.GetAsISODate() ||
                shortForm.GetAsISODate() == later.GetAsISODate());

    for (char const* const text : {"", "24:00", "12:60", "1:30", "12-30", "12:3x", "x2:30", "-1:30",
                                   "12:30:60", "12:30-00", "12:30:0", "12:30:000", "12.30:00", "1230"})
    {
        Arguments refused;
        refused.ReadEnvironment({std::string("K=") + text});
        EXPECT_TRUE(refused.GetEnvValueAsHHMMSS("K").IsNull()) << text;
    }
}

TEST(nxCmdLineArgs, ChangesTheEnvironment)
{
    Arguments arguments;
    EXPECT_FALSE(arguments.SetEnvValue("", "v"));
    EXPECT_FALSE(arguments.SetEnvValue("NX=TEST", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_SET", "live"));
    EXPECT_STREQ(::getenv("NX_TEST_SET"), "live");
    EXPECT_EQ(arguments.Envs(), Map()); // nothing is kept before the environment is read
    EXPECT_EQ(arguments.GetEnvValue("NX_TEST_SET"), "live");

    arguments.ReadEnvironment({"A=1"});
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_SET", "kept"));
    EXPECT_TRUE(arguments.SetEnvValue("A", "2"));
    EXPECT_EQ(arguments.Envs(), (Map{{"A", "2"}, {"NX_TEST_SET", "kept"}}));
    EXPECT_FALSE(arguments.SetEnvValue("NX=TEST", "v"));
    EXPECT_TRUE(arguments.SetEnvValue("A", ""));
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_NONE", ""));
    EXPECT_EQ(arguments.Envs(), (Map{{"NX_TEST_SET", "kept"}}));
    EXPECT_EQ(::getenv("A"), nullptr);
    EXPECT_TRUE(arguments.SetEnvValue("NX_TEST_SET", ""));
}

TEST(nxCmdLineArgs, ChangesTheZoneOfTheCalendar)
{
    Arguments arguments;
    std::string const zone = arguments.GetEnvValue("TZ");
    ASSERT_TRUE(arguments.SetEnvValue("TZ", "UTC0"));
    EXPECT_EQ(nxDateTime(1700000000LL).GetAsString("%H:%M"), "22:13");
    ASSERT_TRUE(arguments.SetEnvValue("TZ", "NPT-5:45"));
    EXPECT_EQ(nxDateTime(1700000000LL).GetAsString("%H:%M"), "03:58");
    ASSERT_TRUE(arguments.SetEnvValue("TZ", zone));
}

// The system moves its environment under readers, so all ways to it through the library share one lock.
TEST(nxCmdLineArgs, AsksForTheEnvironmentUnderItsLock)
{
    Arguments arguments;
    for (bool const isChange : {false, true})
    {
        std::atomic<bool> isDone(false);
        std::thread thread;
        {
            nxPlatform::EnvironmentLock lock;
            thread = std::thread(
                [&]
                {
                    isChange ? (void)arguments.SetEnvValue("NX_TEST_LOCK", "v")
                             : (void)arguments.GetEnvValue("NX_TEST_LOCK");
                    isDone = true;
                });
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            EXPECT_FALSE(isDone);
        }
        thread.join();
        EXPECT_TRUE(isDone);
    }
}

// Neither reader nor child may wait for ever, or miss what is there.
TEST(nxCmdLineArgs, IsReadWhileItIsChangedAndWhileTheProcessForks)
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    for (unsigned int i = 0; i < 500; ++i) // entries that will be removed stand in front of the steady one
    {
        ASSERT_TRUE(arguments.SetEnvValue("NX_TEST_" + std::to_string(i), "x"));
    }
    ASSERT_TRUE(arguments.SetEnvValue("NX_TEST_STEADY", "steady"));
    std::atomic<bool> stop(false);
    std::atomic<unsigned int> missed(0);
    std::vector<std::thread> threads;
    threads.emplace_back(
        [&]
        {
            for (unsigned int i = 0; !stop; ++i)
            {
                // New names make the system move its list, removals make it move the entries in it.
                (void)arguments.SetEnvValue("NX_TEST_" + std::to_string(i % 5000), "x");
                (void)arguments.SetEnvValue("NX_TEST_" + std::to_string((i * 7) % 5000), "");
            }
        });
    threads.emplace_back(
        [&]
        {
            while (!stop)
            {
                missed += arguments.GetEnvValue("NX_TEST_STEADY") == "steady" ? 0u : 1u;
            }
        });
    threads.emplace_back(
        [&]
        {
            while (!stop)
            {
                missed += nxDateTime(2024, 1, 31, 9, 30, 15, 0).IsValid() ? 0u : 1u;
            }
        });
    unsigned int failedChildren = 0;
    for (int i = 0; i < 30; ++i)
    {
        pid_t const child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
        {
            ::alarm(10); // a child that hangs ends by this
            bool const isWell = arguments.GetEnvValue("NX_TEST_STEADY") == "steady" && nxDateTime().IsValid();
            ::_exit(isWell ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        failedChildren += status == 0 ? 0u : 1u;
    }
    stop = true;
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(missed, 0u);
    EXPECT_EQ(failedChildren, 0u);
}
