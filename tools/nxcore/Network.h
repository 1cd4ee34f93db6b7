#pragma once

#include "Result.h"

#include <optional>
#include <string>
#include <string_view>

class nxErrorEnum;

/// @file
/// What the commands that talk on sockets have in common.

namespace nxTool
{
/// Most bytes that a datagram can carry.
inline constexpr int mostDatagramBytes = 65507;

/// A port, from `least` to 65535; nothing, with a problem, for any other text.
std::optional<int> ReadPort(std::string const& text, int least, Result& result);

/// The dotted address of a text, in the form that sockets read as it is meant, such as "10.0.0.1" for "10.0.0.01"; nothing,
/// with a problem, when it is none.
std::optional<std::string> ReadAddress(std::string const& text, Result& result);

/// "192.168.1.9".
std::string DottedAddress(unsigned int address);

/// Whether the operation succeeded; a problem in the words of the error when it did not.
/// @param subject  what it was about, such as "10.0.0.1 port 9000".
bool Succeeded(nxErrorEnum const& error, std::string_view subject, Result& result);
} // namespace nxTool
