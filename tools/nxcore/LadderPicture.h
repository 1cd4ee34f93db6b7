#pragma once

#include "core/prices/nxVariableTickTable.h"

#include <string>
#include <string_view>

/// @file
/// A tick ladder drawn as a staircase.

namespace nxTool
{
enum class PictureUse
{
    File,  ///< an SVG file with colours of its own, light or dark as the viewer is
    Inline ///< an element of a page, smaller; the page gives the classes their colours
};

/// Tick over price, both axes logarithmic: a step for each range, a dot where it ends (the last price that has its
/// tick), an arrow where no range follows. Where labels would overlap, the inner ones are left out.
/// @param name    the ladder's, for the title
/// @return the element `svg`. Its classes are grid, fine, axis, stair, end, edge, tick and, in a file, title and paper.
std::string LadderPicture(std::string_view name, nxVariableTickTable const& ladder, PictureUse use);
} // namespace nxTool
