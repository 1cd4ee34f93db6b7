#pragma once

#include "Result.h"

#include <string_view>
#include <vector>

namespace nxTool
{
/// What a class can tell of one of its numbers through its own predicates and codes. Answers that are empty in the
/// number's case are there too.
std::vector<Field> FactsOf(std::string_view className, unsigned int number);
} // namespace nxTool
