#include "Network.h"

#include "core/network/nxSocket.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <charconv>

namespace nxTool
{
std::optional<int> ReadPort(std::string const& text, int least, Result& result)
{
    constexpr int most = 65535;
    int port = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error == std::errc() && end == text.data() + text.size() && port >= least && port <= most)
        return port;
    result.AddProblem(Printable(text),
                      "no port from " + std::to_string(least) + " to " + std::to_string(most));
    return std::nullopt;
}

std::optional<std::string> ReadAddress(std::string const& text, Result& result)
{
    unsigned int address = 0;
    if (nxSocket::ParseAddress(text, address).IsOK())
        return DottedAddress(address);
    result.AddProblem(Printable(text), "no dotted address such as 127.0.0.1; names are not looked up");
    return std::nullopt;
}

std::string DottedAddress(unsigned int address)
{
    constexpr unsigned int lowByte = 0xFF;
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text.append(text.empty() ? "" : ".").append(std::to_string((address >> shift) & lowByte));
    return text;
}

bool Succeeded(nxErrorEnum const& error, std::string_view subject, Result& result)
{
    if (!error.IsOK())
        result.AddProblem(std::string(subject),
                          error.GetLongDescription() + " (" + error.GetShortDescription() + ")");
    return error.IsOK();
}
} // namespace nxTool
