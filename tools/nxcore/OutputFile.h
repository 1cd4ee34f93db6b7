#pragma once

#include <string>
#include <string_view>

namespace nxTool
{
/// Writes a file, replacing what stands there.
/// @return why that was not possible; empty when it was. What has been written so far is left behind.
std::string WriteFile(std::string const& path, std::string_view content);
} // namespace nxTool
