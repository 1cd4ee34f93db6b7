#include "Zone.h"

#include <cstdlib>
#include <filesystem>
#include <regex>

namespace nxTool
{
bool IsZoneKnown(std::string const& zone)
{
    static std::regex const rule(":?([A-Za-z]{3,}|<[A-Za-z0-9+-]{3,}>)[+-]?[0-9].*"); // such as EST5EDT
    if (std::regex_match(zone, rule))
        return true;
    char const* const directory = std::getenv("TZDIR");
    std::filesystem::path const zones = directory != nullptr ? directory : "/usr/share/zoneinfo";
    std::error_code failure;
    return !zone.empty() && std::filesystem::is_regular_file(zones / zone, failure);
}
} // namespace nxTool
