#include "NearMiss.h"

#include <algorithm>
#include <numeric>

namespace nxTool
{
namespace
{
/// The number of insertions, deletions and replacements that make one word of the other.
std::size_t Distance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i)
    {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j)
        {
            std::size_t const replaced = diagonal + (Folded(from[i]) == Folded(to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j + 1] + 1, row[j] + 1});
        }
    }
    return row.back();
}
} // namespace

char Folded(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string NearestOf(std::string_view word, std::span<std::string_view const> candidates)
{
    std::size_t const farthest = std::max<std::size_t>(1, word.size() / 3);
    std::size_t nearest = farthest + 1;
    std::string_view best;
    for (std::string_view const candidate : candidates)
    {
        std::size_t const lengths =
            candidate.size() > word.size() ? candidate.size() - word.size() : word.size() - candidate.size();
        if (lengths >= nearest)
            continue;
        std::size_t const distance = Distance(word, candidate);
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
