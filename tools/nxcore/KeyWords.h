#pragma once

#include <string_view>
#include <vector>

/// @file
/// The configuration keys of the platform as data, for the commands that list them.

namespace nxTool
{
struct Key
{
    std::string_view name;
    std::string_view group;
    std::string_view type;               ///< how the library itself reads it; empty for the keys of its hosts
    std::string_view otherwise;          ///< what holds without the key, where that is known
    std::vector<std::string_view> words; ///< where its values form a closed set
};

/// Every key in the order of declaration.
std::vector<Key> AllKeys();
} // namespace nxTool
