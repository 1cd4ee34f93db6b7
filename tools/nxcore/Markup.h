#pragma once

#include <string>
#include <string_view>

namespace nxTool
{
/// The text with the characters that mean something to HTML and XML written as entities, for text and for quoted
/// attributes.
inline std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (char const character : text)
    {
        switch (character)
        {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        default: escaped += character;
        }
    }
    return escaped;
}
} // namespace nxTool
