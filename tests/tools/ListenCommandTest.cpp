// What `nxcore listen` shows of what `nxcore send` sends it.

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
