#pragma once

#include <string_view>

namespace nxTool
{
/// What reference/page.css and reference/page.js hold.
extern std::string_view const referenceStyle;
extern std::string_view const referenceScript;
} // namespace nxTool
