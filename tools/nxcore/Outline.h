#pragma once

#include <string_view>
#include <vector>

/// @file
/// The order in which the tables of the vocabulary tell their classes and rows, with the headings between them.

namespace nxTool
{
/// Rows of a class under one heading, which is empty where the class has none.
struct RowGroup
{
    std::string_view heading;
    std::vector<unsigned int> numbers;
};

struct ClassOutline
{
    std::string_view heading; ///< of the group of classes to which it belongs
    std::string_view className;
    std::vector<RowGroup> groups;
};

/// Every enumeration in the order of registration.
std::vector<ClassOutline> const& EnumerationOutline();
} // namespace nxTool
