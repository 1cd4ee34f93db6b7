#include "Terminal.h"

#include <cstdlib>

#include <unistd.h>

namespace nxTool
{
bool IsTerminal(Stream stream)
{
    return isatty(stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

bool UsesColour(Stream stream)
{
    char const* const noColour = std::getenv("NO_COLOR");
    return IsTerminal(stream) && (noColour == nullptr || *noColour == '\0');
}
} // namespace nxTool
