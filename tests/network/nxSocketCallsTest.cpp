// That each send and each receive is one call of the system and nothing else, as strace sees it.
#include "tests/network/nxSocketTesting.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/syscall.h>
#include <unistd.h>

namespace
{
/// A call that nothing else makes.
void Mark()
{
    syscall(SYS_getppid);
}

void TransferEachWay()
{
    Connection connection;
    char buffer[16];
    int received = 0;
    unsigned int sent = 0;
    std::string destination;
    _WSABUF pieces[2];
    nxSocket::SetGatherSendArrayEntry(pieces, 0, "ab", 2);
    nxSocket::SetGatherSendArrayEntry(pieces, 1, "c", 1);
    std::string const text = "abc";
    Mark();
    bool isGood = connection.client.Send(text).IsOK();
    isGood &= connection.server.Receive(buffer, sizeof buffer, received).IsOK();
    isGood &= connection.client.GatherSend(pieces, 2, sent).IsOK();
    isGood &= connection.server.ReceiveFrom(buffer, sizeof buffer, received).IsOK();
    isGood &= connection.client.SendTo(text).IsOK();
    isGood &= connection.server.ReceiveMsgWithDestinationAddress(buffer, sizeof buffer, received, destination)
                  .IsOK();
    isGood &= connection.client.SendToDestination("a", 1, "127.0.0.1", 9).IsOK();
    Mark();
    EXPECT_TRUE(isGood);
}

std::vector<std::string> CallsBetweenMarks(std::filesystem::path const& trace)
{
    std::vector<std::string> calls;
    std::ifstream file(trace);
    bool isBetween = false;
    for (std::string line; std::getline(file, line);)
    {
        std::string const call = line.substr(0, line.find('('));
        if (call == "getppid")
        {
            isBetween = !isBetween;
        }
        else if (isBetween)
        {
            calls.push_back(call);
        }
    }
    return calls;
}

// Runs itself, with this variable set, under strace.
constexpr char const* tracedVariable = "NX_SOCKET_CALLS_TRACED";

TEST(nxSocketCalls, EachTransferIsOne)
{
    if (std::getenv(tracedVariable) != nullptr)
    {
        TransferEachWay();
        return;
    }
    auto const trace = std::filesystem::temp_directory_path() / ("nxSocketCalls." + std::to_string(getpid()));
    std::string const self = std::filesystem::read_symlink("/proc/self/exe").string();
    std::string const traced = "strace -o '" + trace.string() + "' ";
    if (std::system((traced + "true 2>/dev/null").c_str()) != 0)
        GTEST_SKIP() << "strace is not here or may not trace";
    std::string const variables = std::string(tracedVariable) + "=1 ASAN_OPTIONS=detect_leaks=0 ";
    std::string const arguments = "' --gtest_filter=nxSocketCalls.EachTransferIsOne >/dev/null";
    int const status = std::system((variables + traced + "'" + self + arguments).c_str());
    auto const calls = CallsBetweenMarks(trace);
    std::filesystem::remove(trace);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(calls, (std::vector<std::string>{"sendto", "recvfrom", "sendmsg", "recvfrom", "sendto",
                                               "recvmsg", "sendto"}));
}
} // namespace
