// A client greets a server of the same process over TCP, and gets its text back.
#include "core/network/nxSocket.h"

#include <cstdio>
#include <memory>
#include <string>
#include <thread>

namespace
{
constexpr char const* here = "127.0.0.1";
constexpr int firstPort = 9000;
constexpr int lastPort = 9999;

// Listens at the first free port. With SO_REUSEADDR a port can be bound while another listener has it; then
// it is listening that is refused.
std::unique_ptr<nxSocket> ListenSomewhere(int& port)
{
    for (port = firstPort; port <= lastPort; ++port)
    {
        auto listener = std::make_unique<nxSocket>();
        if (listener->Create().IsOK() && listener->Bind(here, port).IsOK() && listener->Listen().IsOK())
            return listener;
    }
    return nullptr;
}

void Echo(nxSocket& listener)
{
    constexpr unsigned int oneSecond = 1000000;
    unsigned int readyCount = 0;
    if (!listener.Select(oneSecond, readyCount).IsOK() || readyCount == 0)
        return; // nobody came
    nxSocket socket;
    if (!listener.Accept(socket).IsOK() || !socket.IsValid())
        return;
    char buffer[64];
    int received = 0;
    while (socket.Receive(buffer, sizeof buffer, received).IsOK()) // until the client closes
        (void)socket.Send(buffer, received);
}

nxErrorEnum Greet(int port, std::string& answer)
{
    nxSocket socket;
    nxErrorEnum result = socket.Create(NX_SOCKET_TYPE_TCP);
    if (result.IsOK())
        result = socket.Connect(here, port);
    if (result.IsOK())
        result = socket.Send("35=0");
    char buffer[64];
    int received = 0;
    if (result.IsOK())
        result = socket.Receive(buffer, sizeof buffer, received);
    if (result.IsOK())
        answer.assign(buffer, static_cast<std::size_t>(received));
    return result;
}
} // namespace

int main()
{
    int port = 0;
    std::unique_ptr<nxSocket> const listener = ListenSomewhere(port);
    if (!listener)
    {
        std::puts("no free port");
        return 1;
    }
    std::thread server([&] { Echo(*listener); });
    std::string answer;
    nxErrorEnum const result = Greet(port, answer);
    server.join();
    std::printf("answer: %s, result: %u\n", answer.c_str(), result.GetValue());
    return answer == "35=0" ? 0 : 1;
}
