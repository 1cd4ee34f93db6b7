#pragma once

namespace nxTool
{
enum class Stream
{
    Output,
    Error
};

/// True when the stream is a terminal.
bool IsTerminal(Stream stream);

/// True when the stream is a terminal and the environment does not forbid colour (NO_COLOR).
bool UsesColour(Stream stream);
} // namespace nxTool
