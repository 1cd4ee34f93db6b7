#include "NearMiss.h"

#include <algorithm>
#include <numeric>

namespace nxTool
{
namespace
{
/// The number of insertions, deletions and replacements that make one word of the other, where that is below the limit;
/// else the limit.
/// @param folded  letters without their case
/// @param row  memory for the work
std::size_t Distance(std::string_view folded, std::string_view to, std::size_t limit,
                     std::vector<std::size_t>& row)
{
    row.resize(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (char const character : folded)
    {
        std::size_t diagonal = row[0]++;
        std::size_t least = row[0];
        for (std::size_t j = 0; j < to.size(); ++j)
        {
            std::size_t const replaced = diagonal + (character == Folded(to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min(replaced, std::min(diagonal, row[j]) + 1);
            least = std::min(least, row[j + 1]);
        }
        if (least >= limit)
            return limit;
    }
    return row.back();
}
} // namespace

std::string Folded(std::string_view text)
{
    std::string folded(text);
    for (char& character : folded)
        character = Folded(character);
    return folded;
}

std::string NearestOf(std::string_view word, std::span<std::string_view const> candidates)
{
    std::size_t const farthest = std::max<std::size_t>(1, word.size() / 3);
    std::size_t nearest = farthest + 1;
    std::string_view best;
    std::string const folded = Folded(word);
    std::vector<std::size_t> row;
    for (std::string_view const candidate : candidates)
    {
        std::size_t const lengths =
            candidate.size() > word.size() ? candidate.size() - word.size() : word.size() - candidate.size();
        if (lengths >= nearest)
            continue;
        std::size_t const distance = Distance(folded, candidate, nearest, row);
        if (distance < nearest)
        {
            nearest = distance;
            best = candidate;
        }
    }
    return std::string(best);
}

std::string DidYouMean(std::string_view word, std::span<std::string_view const> candidates,
                       std::string_view dash)
{
    std::string const nearest = NearestOf(word, candidates);
    return nearest.empty() ? nearest : ", did you mean " + std::string(dash) + nearest + "?";
}
} // namespace nxTool
