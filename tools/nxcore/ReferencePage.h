#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace nxTool
{
/// The reference: one HTML document that needs nothing else.
struct ReferencePage
{
    std::string html;
    std::vector<std::pair<std::string, std::size_t>> counts; ///< of each section, by its id
};

ReferencePage MakeReferencePage();
} // namespace nxTool
