#pragma once

#include <string>

namespace nxTool
{
/// Whether the system knows a zone as the environment variable TZ names it. The C library takes an unknown name for
/// Greenwich without a word.
bool IsZoneKnown(std::string const& zone);
} // namespace nxTool
