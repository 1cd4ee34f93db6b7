// The section of the reference that shows the configuration keys.

#include "KeyWords.h"
#include "Markup.h"
#include "ReferenceSections.h"

namespace nxTool
{
namespace
{
/// How the library reads the key and what holds without it, where that is known.
std::string ReadingText(Key const& key)
{
    std::string text = Escaped(key.type);
    if (!key.otherwise.empty())
        text.append(text.empty() ? "" : ", ").append("by default ").append(Escaped(key.otherwise));
    return text;
}

std::string KeyRow(Key const& key)
{
    std::string words;
    for (std::string_view const word : key.words)
        words.append(words.empty() ? "" : " ").append("<code>").append(Escaped(word)).append("</code>");
    std::string const name(key.name);
    std::string row = "<tr class=\"entry\"><th scope=\"row\"><a id=\"" + name + "\" href=\"#" + name + "\">" +
                      name + "</a></th><td>" + ReadingText(key);
    if (!words.empty())
        row.append("<small>").append(words).append("</small>");
    return row + "</td></tr>\n";
}
} // namespace

Section KeysSection()
{
    std::vector<Key> const keys = AllKeys();
    std::string body;
    std::string_view group;
    std::size_t groupNumber = 0;
    for (Key const& key : keys)
    {
        if (key.group != group)
        {
            body += group.empty() ? "" : "</tbody></table></section>\n";
            group = key.group;
            body += "<section class=\"block\" id=\"keys-" + std::to_string(++groupNumber) + "\"><h3>" +
                    Escaped(group) + "</h3>\n<table class=\"keys\"><caption>" + Escaped(group) +
                    "</caption><colgroup><col class=\"token\"><col></colgroup><thead><tr><th "
                    "scope=\"col\">Key</th><th scope=\"col\">Read as, default and "
                    "words</th></tr></thead><tbody>\n";
        }
        body += KeyRow(key);
    }
    return {.id = "keys",
            .title = "Keys",
            .count = keys.size(),
            .counted = "entry",
            .lead =
                "A key is an environment variable. Those that the library itself reads say how; the others "
                "are read by the programs that share them.",
            .body = body + "</tbody></table></section>\n"};
}
} // namespace nxTool
