// What `nxcore` reads of addresses, and what it sends to itself over TCP, UDP and multicast.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace
{
constexpr std::string_view announcement = "listening on port ";

bool Holds(std::string const& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}

/// The port that the system chose for the listener.
std::string PortOf(BackgroundTool const& listener)
{
    std::string text = listener.AwaitError("\n");
    std::size_t const begin = text.find(announcement);
    EXPECT_NE(begin, std::string::npos) << text;
    text.erase(0, begin == std::string::npos ? 0 : begin + announcement.size());
    return text.substr(0, text.find('\n'));
}
} // namespace

TEST(AddressCommand, ReadsAddressesAndMasks)
{
    ToolRun const run = RunTool("address 192.168.1.9/24 010.0.0.1 255.255.255.255/0 -json");
    EXPECT_EQ(run.status, 0) << run.error;
    auto const addresses = nlohmann::json::parse(run.output)["addresses"];
    ASSERT_EQ(addresses.size(), 3u);
    EXPECT_EQ(addresses[0]["address"], "192.168.1.9");
    EXPECT_EQ(addresses[0]["mask"], "255.255.255.0");
    EXPECT_EQ(addresses[0]["network"], "192.168.1.0");
    EXPECT_EQ(addresses[0]["host"], 9);
    EXPECT_EQ(addresses[1]["hexadecimal"], "0x0a000001");
    EXPECT_TRUE(addresses[1]["mask"].is_null());
    EXPECT_EQ(addresses[2]["host"], 4294967295u); // the number of a null, and yet a host
}

TEST(AddressCommand, SaysWhatIsWrong)
{
    static constexpr char const* rows[][2] = {
        {"1.2.3", "has 3 numbers, not 4"},
        {"1.2.3.4.5", "has 5 numbers, not 4"},
        {"1..3.4", "has an empty number"},
        {"1.2.3.256", "has a number above 255"},
        {"1.2.x.4", "\"x\" is no number"},
        {"1.2.3.4/32", "/32 has more than 31 bits"},
        {"1.2.3.4/8x", "\"8x\" behind the slash is no count of bits"},
    };
    for (auto const& [text, fault] : rows)
    {
        ToolRun const run = RunTool(std::string("address ") + text);
        EXPECT_EQ(run.status, 2) << text;
        EXPECT_TRUE(Holds(run.error, std::string(text) + ": " + fault)) << run.error;
    }
    EXPECT_EQ(RunTool("address 1.2.3 1.2.3.4").status, 1);
}

TEST(SendCommand, SaysWhatIsWrong)
{
    static constexpr char const* rows[][2] = {
        {"send localhost 9", "no dotted address"},
        {"send 127.0.0.1 0", "no port from 1 to 65535"},
        {"send 127.0.0.1 9x", "no port"},
        {"send 127.0.0.1 1 /nothing/there", "/nothing/there: No such file or directory"},
        {"send 127.0.0.1 1 /tmp", "NX_ERR_SOCKET_CONNECT_FAILED"},
        {"send 127.0.0.1 9 -udp /tmp", "/tmp: Is a directory"},
        {"listen 65536", "no port from 0 to 65535"},
        {"listen 0 -group 239.1.1", "no dotted address"},
        {"listen 0 -group 127.0.0.1", "NX_ERR_SOCKET_CONNECT_FAILED"},
        {"listen 0 -raw -json", "exclude each other"},
    };
    for (auto const& [arguments, fault] : rows)
    {
        ToolRun const run = RunTool(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_TRUE(Holds(run.error, fault)) << run.error;
    }
}

TEST(ListenCommand, DumpsWhatComesOverTcp)
{
    BackgroundTool listener("listen 0");
    std::string const port = PortOf(listener);
    std::string const file = MakeFile("message", std::string("8=FIX.4.4\1") + "35=0\1 0123456");
    ToolRun const sent = RunTool("send 127.0.0.1 " + port + " '" + file + "'");
    EXPECT_EQ(sent.status, 0) << sent.error;
    EXPECT_TRUE(Holds(sent.output, "bytes  23")) << sent.output;
    listener.AwaitOutput("connection 1 ended");
    ToolRun const run = listener.Interrupt();
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.output, "connection 1 opened\n"
                          "connection 1, bytes: 23\n"
                          "38 3D 46 49 58 2E 34 2E 34 01 33 35 3D 30 01 20  8=FIX.4.4.35=0. \n"
                          "30 31 32 33 34 35 36                             0123456         \n"
                          "connection 1 ended\n"
                          "pieces  1\n"
                          "bytes   23\n");
}

TEST(ListenCommand, WritesRawBytesAndNothingElse)
{
    std::string const bytes = std::string(300000, 'x') + std::string(1, '\0') + "\xff end of the text";
    std::string const file = MakeFile("bytes", bytes);
    BackgroundTool listener("listen 0 -raw");
    EXPECT_EQ(RunTool("send 127.0.0.1 " + PortOf(listener) + " '" + file + "'").status, 0);
    listener.AwaitOutput("end of the text");
    EXPECT_TRUE(listener.Interrupt().output == bytes);
}

TEST(ListenCommand, TellsWhereADatagramWasSent)
{
    BackgroundTool listener("listen 0 -udp -log '" + MakeFile("log", "") + ".d'");
    std::string const port = PortOf(listener);
    std::string const file = MakeFile("datagram", "abc");
    EXPECT_EQ(RunTool("send 127.0.0.2 " + port + " -udp '" + file + "'").status, 0);
    EXPECT_EQ(RunTool("send 127.0.0.3 " + port + " -udp").status, 0); // an empty one
    listener.AwaitOutput("127.0.0.3, bytes: 0");
    ToolRun const run = listener.Interrupt();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "datagram to 127.0.0.2, bytes: 3\n"
                          "61 62 63                                         abc             \n"
                          "datagram to 127.0.0.3, bytes: 0\n"
                          "pieces  2\n"
                          "bytes   3\n");
}

TEST(ListenCommand, KeepsADocumentUntilTheEnd)
{
    BackgroundTool listener("listen 0 -udp -json");
    std::string const port = PortOf(listener);
    // Two datagrams, since one does not hold as much.
    std::string const file = MakeFile("large", std::string(65508, 'A'));
    ToolRun const sent = RunTool("send 127.0.0.1 " + port + " -udp '" + file + "'");
    EXPECT_TRUE(Holds(sent.output, "datagrams  2")) << sent.output;
    auto const document = nlohmann::json::parse(listener.Interrupt().output);
    ASSERT_EQ(document["received"].size(), 2u);
    EXPECT_EQ(document["received"][0]["bytes"], 65507);
    EXPECT_EQ(document["received"][1]["hexadecimal"], "41");
    EXPECT_EQ(document["received"][1]["from"], "datagram to 127.0.0.1");
    EXPECT_EQ(document["bytes"], 65508);
}
