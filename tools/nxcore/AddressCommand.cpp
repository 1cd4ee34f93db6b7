// `nxcore address`: IPv4 addresses and masks as the library reads them, and what is wrong with those that it refuses.

#include "Arguments.h"
#include "Commands.h"
#include "Network.h"
#include "Words.h"

#include "core/network/nxSocket.h"
#include "core/text/nxStringParser.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <algorithm>
#include <deque>

namespace nxTool
{
namespace
{
bool IsDigits(std::string_view text)
{
    return !text.empty() && std::ranges::all_of(text, [](char byte) { return byte >= '0' && byte <= '9'; });
}

std::string Quoted(std::string_view text)
{
    return "\"" + Printable(text) + "\"";
}

/// Why a text is refused.
std::string FaultOf(std::string const& text)
{
    constexpr std::size_t partCount = 4;
    std::size_t const slash = text.find('/');
    std::string const bits = slash == std::string::npos ? std::string() : text.substr(slash + 1);
    if (!bits.empty() && !IsDigits(bits))
        return Quoted(bits) + " behind the slash is no count of bits";
    std::deque<std::string> parts;
    nxStringParser::ExtractAllSubstrings(text.substr(0, slash), parts, false, '.');
    if (parts.size() != partCount)
        return "has " + std::to_string(parts.size()) + " numbers, not " + std::to_string(partCount);
    for (std::string const& part : parts)
    {
        if (part.empty())
            return "has an empty number";
        if (!IsDigits(part))
            return Quoted(part) + " is no number";
    }
    unsigned int address = 0;
    if (!nxSocket::ParseAddress(text.substr(0, slash), address).IsOK())
        return "has a number above 255";
    return "/" + bits + " has more than 31 bits";
}

/// All eight digits, so that bytes stand under bytes.
std::string AllDigits(unsigned int address)
{
    constexpr std::size_t digits = 8;
    std::string const text = Hexadecimal(address).substr(2);
    return "0x" + std::string(digits - text.size(), '0') + text;
}

/// Empty without a mask.
Cell CellOf(bool isThere, Cell const& cell)
{
    return isThere ? cell : Cell("", nullptr);
}

void Show(std::string const& text, Table& table, Result& result)
{
    std::string addressText;
    unsigned int address = 0;
    nxVolume mask;
    nxVolume network;
    nxVolume host;
    if (!nxSocket::ParseAddressAndMask(text, addressText, address, mask, network, host).IsOK())
    {
        result.AddProblem(Printable(text), FaultOf(text));
        return;
    }
    // No mask is all ones, so the wrapper's null is not a value of it; those of the other two may be.
    bool const hasMask = !mask.IsNull();
    table.Add({Printable(text), DottedAddress(address), AllDigits(address),
               CellOf(hasMask, DottedAddress(mask.GetValue())),
               CellOf(hasMask, DottedAddress(network.GetValue())), CellOf(hasMask, host.GetValue())});
}

Status Run(Arguments const& arguments, Result& result)
{
    Table& table = result.AddTable("addresses", {{"text", "Text"},
                                                 {"address", "Address"},
                                                 {"hexadecimal", "Hexadecimal"},
                                                 {"mask", "Mask"},
                                                 {"network", "Network"},
                                                 {"host", "Host", Align::Right}});
    for (std::string const& text : arguments.GetAll())
        Show(text, table, result);
    return table.GetRowCount() > 0 ? Status::Good : Status::Unusable;
}
} // namespace

Command const addressCommand = {
    .name = "address",
    .arguments = "TEXT...",
    .summary = "read IPv4 addresses and masks",
    .details =
        "Each TEXT is an address such as 192.168.1.9 or, with a count of bits from 0 to 31, an address\n"
        "in a network such as 192.168.1.9/24. Shows address, mask and network, and the host's number\n"
        "within the network. What the library refuses is named with what is wrong; the exit status is\n"
        "then 1, or 2 when nothing could be read. Leading zeros don't make a number octal.",
    .example = "nxcore address 192.168.1.9/24 10.0.0.1",
    .fewestArguments = 1,
    .mostArguments = 10000,
    .run = Run,
};
} // namespace nxTool
