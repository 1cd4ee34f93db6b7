#pragma once

#include "core/network/nxSocket.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

inline constexpr nxEnumValue success = NX_UNDEFINED;

/// The system's own number of a socket.
inline int DescriptorOf(nxSocket const& socket)
{
    return static_cast<int>(socket.GetSocket());
}

/// The port that the system gave to a bound socket.
inline int PortOf(nxSocket const& socket)
{
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    EXPECT_EQ(getsockname(DescriptorOf(socket), reinterpret_cast<sockaddr*>(&address), &length), 0);
    return ntohs(address.sin_port);
}

inline bool IsOpen(int descriptor)
{
    return fcntl(descriptor, F_GETFD) != -1;
}

/// Lines are recorded as soon as they are logged. The log reads its keys on first use, so this comes before.
inline int const forceFlush = setenv("KVT_LOG_FORCE_FLUSH", "TRUE", 1);

class nxSocketTest : public nxRecordingTest
{
protected:
    static constexpr char const* here = "127.0.0.1";

    std::size_t CountOfLines(std::string const& text)
    {
        auto const lines = Messages();
        return static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(),
                                                      [&](std::string const& line)
                                                      { return line.find(text) != std::string::npos; }));
    }
};

/// A connection to this host, both ends in blocking mode.
struct Connection
{
    nxSocket listener;
    nxSocket client;
    nxSocket server;

    Connection()
    {
        EXPECT_TRUE(listener.Create().IsOK());
        EXPECT_TRUE(listener.Bind("127.0.0.1", 0).IsOK());
        EXPECT_TRUE(listener.Listen().IsOK());
        EXPECT_TRUE(client.Create().IsOK());
        EXPECT_TRUE(client.Connect("127.0.0.1", PortOf(listener)).IsOK());
        EXPECT_TRUE(listener.Accept(server).IsOK());
        EXPECT_TRUE(server.IsValid());
    }
};
