// Prices on a multicast group: a listener joins it and takes what comes until the end.
#include "core/network/nxSocket.h"
#include "core/process/nxApplicationData.h"

#include <cstdio>
#include <string>

namespace
{
constexpr char const* group = "239.255.37.1";
constexpr int nothingToShow = 77;

nxErrorEnum Listen(nxSocket& listener, int port)
{
    nxErrorEnum result = listener.Create(NX_SOCKET_TYPE_UDP);
    if (result.IsOK())
        result = listener.Bind(port); // to every local address, the group's among them
    if (result.IsOK())
        result = listener.MulticastJoin(group); // from here on a receive doesn't wait
    return result;
}

nxErrorEnum Publish(int port)
{
    nxSocket publisher;
    nxErrorEnum result = publisher.Create(NX_SOCKET_TYPE_UDP);
    for (std::string const price : {"ZNZ6 112-165", "ZNZ6 112-170", "end"})
    {
        if (result.IsOK())
        {
            result = publisher.SendToDestination(price.data(), price.size(), group,
                                                 static_cast<unsigned int>(port));
        }
    }
    return result;
}

/// Waits for a datagram. An empty text stands for one that never came.
std::string Receive(nxSocket& listener)
{
    constexpr unsigned int oneSecond = 1000000;
    unsigned int readyCount = 0;
    char buffer[1500];
    int received = 0;
    if (!listener.Select(oneSecond, readyCount).IsOK() || readyCount == 0 ||
        !listener.ReceiveFrom(buffer, sizeof buffer, received).IsOK())
        return "";
    return std::string(buffer, static_cast<std::size_t>(received));
}
} // namespace

int main()
{
    int const port = 20000 + static_cast<int>(nxApplicationData::GetProcessID() % 10000);
    nxSocket listener;
    if (!Listen(listener, port).IsOK() || !Publish(port).IsOK())
    {
        std::puts("this host has no route for multicast");
        return nothingToShow;
    }
    std::string price = Receive(listener);
    while (price != "end" && !price.empty())
    {
        std::printf("%s\n", price.c_str());
        price = Receive(listener);
    }
    return price == "end" && listener.MulticastLeave(group).IsOK() ? 0 : 1;
}
