// The sections of the reference that show tick ladders and price formats.

#include "LadderPicture.h"
#include "Markup.h"
#include "PriceRule.h"
#include "PriceWords.h"
#include "ReferenceSections.h"

#include "core/prices/nxVariableTickTableContainer.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <limits>

namespace nxTool
{
namespace
{
std::string RangeRows(nxVariableTickTable const& ladder)
{
    std::string rows;
    for (auto const& [top, tick] : ladder.GetRangeData())
    {
        bool const isBounded = top.GetValue() != std::numeric_limits<long long>::max();
        rows += "<tr><td>" + (isBounded ? top.GetAsString() : "and above") + "</td><td>" +
                tick.GetAsString() + "</td></tr>";
    }
    return rows;
}

std::string LadderArticle(std::string_view name)
{
    nxVariableTickTable const& ladder = *FindLadder(std::string(name));
    std::string const identifier = nxVariableTickTableContainer::GetVariableTickTableID(std::string(name));
    std::string const title = Escaped(name);
    return "<article class=\"entry ladder\" id=\"" + Escaped(identifier) + "\"><h3><a id=\"" + title +
           "\" href=\"#" + title + "\">" + title + "</a><small>" + Escaped(identifier) + "</small></h3>" +
           LadderPicture(name, ladder, PictureUse::Inline) + "<table><caption>Ranges of " + title +
           "</caption><thead><tr><th scope=\"col\">Up to</th><th "
           "scope=\"col\">Tick</th></tr></thead><tbody>" +
           RangeRows(ladder) + "</tbody></table></article>\n";
}

/// A price so many ticks above a whole one, as the format writes it, with the number that the converter reads from that.
std::string ExampleRow(PriceRule const& rule, nxDecimal const& price)
{
    std::string const text = rule.Show(price);
    auto const value = rule.Read(text);
    return "<tr><td>" + Escaped(text) + "</td><td>" + (value ? Trimmed(*value) : "refused") + "</td></tr>";
}

std::string Examples(nxPriceFormatEnum const& format)
{
    constexpr int examplePrice = 112;
    constexpr int steps[] = {0, 1, 2, 5};
    PriceRule const rule(format);
    std::string rows;
    for (int const ticks : steps)
        rows += ExampleRow(rule, rule.Stepped(nxDecimal(examplePrice, 0), ticks));
    return rows + ExampleRow(rule, rule.Stepped(nxDecimal(-examplePrice, 0), -steps[1]));
}

std::string FormatArticle(nxEnumRow const& row)
{
    nxPriceFormatEnum const format(static_cast<nxEnumValue>(row.number));
    PriceRule const rule(format);
    std::string const tick = PriceRule::NeedsTick(format) ? "the product’s tick, here " : "tick ";
    std::string const id = "format-" + std::to_string(row.number);
    return "<article class=\"entry format\"><h3><a id=\"" + id + "\" href=\"#" + id + "\">" +
           Escaped(row.text) + "</a><small><a href=\"#" + std::string(row.enumerator) + "\">" +
           std::string(row.token) + "</a> " + std::to_string(row.number) + "</small></h3><table><caption>" +
           tick + Trimmed(rule.TickAt(nxDecimal(1, 0))) +
           "</caption><thead><tr><th scope=\"col\">Text</th><th "
           "scope=\"col\">Value</th></tr></thead><tbody>" +
           Examples(format) + "</tbody></table></article>\n";
}
} // namespace

Section LaddersSection()
{
    std::string body = "<div class=\"cards\">\n";
    for (std::string_view const name : LadderNames())
        body += LadderArticle(name);
    return {
        .id = "ladders",
        .title = "Tick ladders",
        .count = LadderNames().size(),
        .counted = "entry",
        .lead =
            "How far a price moves at each height. A range’s tick is in force up to and including its last "
            "price, the dot; both axes are logarithmic.",
        .body = body + "</div>\n"};
}

Section PriceFormatsSection()
{
    std::string body = "<div class=\"cards\">\n";
    auto const& rows = nxVocabularyCatalogue::FindEnumeration("nxPriceFormatEnum")->rows;
    for (nxEnumRow const& row : rows)
        body += FormatArticle(row);
    return {
        .id = "formats",
        .title = "Price formats",
        .count = rows.size(),
        .counted = "entry",
        .lead =
            "How a price is written. The texts and values were computed by the library’s converters: 112, "
            "then one, two and five ticks more, and a price below zero.",
        .body = body + "</div>\n"};
}
} // namespace nxTool
