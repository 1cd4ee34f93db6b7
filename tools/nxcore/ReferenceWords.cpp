// The sections of the reference that show the vocabulary.

#include "Facts.h"
#include "Markup.h"
#include "Outline.h"
#include "ReferenceSections.h"
#include "Words.h"

#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <algorithm>
#include <map>
#include <set>

namespace nxTool
{
namespace
{
constexpr std::string_view errorClass = "nxErrorEnum";
constexpr std::string_view functionClass = "nxFunctionEnum";

/// The facts of a row in a few words: what is so, and what else the class tells.
std::string FactsText(std::string_view className, unsigned int number)
{
    std::string text;
    for (Field const& fact : FactsOf(className, number))
    {
        bool const isTruth = fact.cell.value.is_boolean();
        if (fact.cell.text.empty() || (isTruth && !fact.cell.value.get<bool>()))
            continue;
        text += text.empty() ? "" : " · ";
        text += fact.title;
        if (!isTruth)
            text.append(": ").append(fact.cell.text);
    }
    return text;
}

std::string Link(std::string_view address, std::string_view text)
{
    return "<a id=\"" + Escaped(address) + "\" href=\"#" + Escaped(address) + "\">" + Escaped(text) + "</a>";
}

/// The token as a link to its own address, which is the enumerator; where that is another word, it stands below.
std::string TokenCell(Word const& word)
{
    std::string cell = "<th scope=\"row\">" + Link(word.enumerator, word.token);
    if (word.enumerator != word.token)
        cell.append("<small>").append(word.enumerator).append("</small>");
    return cell + "</th>";
}

std::string EnumerationRow(Word const& word)
{
    std::string const number = std::to_string(word.number);
    std::string row = "<tr class=\"entry\" id=\"" + number + "\"><td>" + number + "</td>" + TokenCell(word) +
                      "<td>" + Escaped(word.text);
    std::string const facts = FactsText(word.className, static_cast<unsigned int>(word.number));
    if (!facts.empty())
        row.append("<small>").append(Escaped(facts)).append("</small>");
    return row + "</td></tr>\n";
}

/// Two bits of a mask may have the same token: the second one's address is its bits alone.
std::string MaskRow(nxBitMaskRow const& row, std::string const& prefix, bool isTokenTaken)
{
    std::string const id = prefix + Hexadecimal(row.bits);
    std::string const link = isTokenTaken ? "<a href=\"#" + id + "\">" + Escaped(row.token) + "</a>"
                                          : Link(prefix + row.token, row.token);
    return "<tr class=\"entry\" id=\"" + id + "\"><td>" + Hexadecimal(row.bits) + "</td><th scope=\"row\">" +
           link + "</th><td>" + Escaped(row.text) + "</td></tr>\n";
}

std::string MaskRows(nxVocabularyCatalogue::BitMask const& mask)
{
    std::string rows;
    std::set<std::string_view> tokens;
    for (nxBitMaskRow const& row : mask.rows)
        rows += MaskRow(row, std::string(mask.className) + ".", !tokens.insert(row.token).second);
    return rows;
}

/// @param name   hidden from sight, read by screen readers
std::string TableOf(std::string_view name, std::string_view numberTitle, std::string const& rows)
{
    return "<table><caption>" + Escaped(name) +
           "</caption><colgroup><col class=\"number\"><col class=\"token\"><col></colgroup><thead><tr><th "
           "scope=\"col\">" +
           std::string(numberTitle) +
           "</th><th scope=\"col\">Token</th><th scope=\"col\">Text</th></tr></thead><tbody>\n" + rows +
           "</tbody></table>\n";
}

std::string BlockBegin(std::string_view id, std::string_view className)
{
    return "<section class=\"block\" id=\"" + Escaped(id) + "\" data-class=\"" + std::string(className) +
           "\">";
}

std::string Heading(char const* level, std::string_view text, std::string_view note)
{
    return "<" + std::string(level) + ">" + Escaped(text) + "<small>" + Escaped(note) + "</small></" + level +
           ">\n";
}

std::map<unsigned int, Word> const& WordsByNumber()
{
    static std::map<unsigned int, Word> const words = []
    {
        std::map<unsigned int, Word> result;
        for (Word const& word : AllWords())
            if (!word.isBit)
                result.emplace(static_cast<unsigned int>(word.number), word);
        return result;
    }();
    return words;
}

std::string RowsOf(std::vector<unsigned int> const& numbers)
{
    std::string rows;
    for (unsigned int const number : numbers)
        rows += EnumerationRow(WordsByNumber().at(number));
    return rows;
}

std::string Span(std::vector<unsigned int> const& numbers)
{
    auto const [least, most] = std::ranges::minmax(numbers);
    return least == most ? std::to_string(least) : std::to_string(least) + " to " + std::to_string(most);
}

/// A class whose rows stand in groups: a block for each.
std::string GroupsOf(std::string_view className)
{
    auto const& outline = EnumerationOutline();
    auto const found = std::ranges::find(outline, className, &ClassOutline::className);
    std::string html;
    for (RowGroup const& group : found->groups)
        html += BlockBegin(std::string(className) + "-" + std::to_string(group.numbers.front()), className) +
                Heading("h3", group.heading, Span(group.numbers)) +
                TableOf(group.heading, "Number", RowsOf(group.numbers)) + "</section>\n";
    return html;
}

std::string Bounds(nxVocabularyCatalogue::Enumeration const& enumeration)
{
    std::string text = "above " + std::to_string(enumeration.lowerBound) + ", below " +
                       std::to_string(enumeration.upperBound);
    return enumeration.rows.empty() ? text + ", no rows" : text;
}

std::string CommonRows()
{
    std::string rows;
    for (Word const& word : AllWords())
        if (word.className == "nxEnum")
            rows += EnumerationRow(word);
    return BlockBegin("nxEnum", "nxEnum") + Heading("h4", "nxEnum", "common to all enumerations") +
           TableOf("nxEnum", "Number", rows) + "</section>\n";
}

std::string EnumerationBlock(ClassOutline const& outline)
{
    auto const& enumeration = *nxVocabularyCatalogue::FindEnumeration(outline.className);
    std::string html = BlockBegin(outline.className, outline.className) +
                       Heading("h4", outline.className, Bounds(enumeration));
    std::string rows;
    for (RowGroup const& group : outline.groups)
        rows += RowsOf(group.numbers);
    if (!rows.empty())
        html += TableOf(outline.className, "Number", rows);
    return html + "</section>\n";
}

/// Where the classes of the two long tables stand.
std::string SeeSection(ClassOutline const& outline)
{
    bool const isErrors = outline.className == errorClass;
    return "<p class=\"block see\" data-class=\"" + std::string(outline.className) + "\"><a href=\"#" +
           (isErrors ? "errors" : "functions") + "\">" + std::string(outline.className) +
           "</a> has a section of its own.</p>\n";
}
} // namespace

Section ErrorsSection()
{
    return {.id = "errors",
            .title = "Errors",
            .count = nxVocabularyCatalogue::FindEnumeration(errorClass)->rows.size(),
            .counted = "entry",
            .lead =
                "The rows of <code id=\"nxErrorEnum\">nxErrorEnum</code>, the result of every operation that "
                "can fail. Success is the number 0, which has no row here.",
            .body = GroupsOf(errorClass)};
}

Section FunctionsSection()
{
    return {.id = "functions",
            .title = "Functions",
            .count = nxVocabularyCatalogue::FindEnumeration(functionClass)->rows.size(),
            .counted = "entry",
            .lead =
                "The rows of <code id=\"nxFunctionEnum\">nxFunctionEnum</code>: what a user or a program may "
                "do, with the right that goes with it. Where it isn’t said that a right is granted to super "
                "users, even they are given it one by one.",
            .body = GroupsOf(functionClass)};
}

Section EnumerationsSection()
{
    std::string body;
    std::string_view heading;
    for (ClassOutline const& outline : EnumerationOutline())
    {
        if (outline.heading != heading)
        {
            body += heading.empty() ? "" : "</div>\n";
            heading = outline.heading;
            body += "<div class=\"domain\"><h3>" + Escaped(heading) + "</h3>\n";
            body += &outline == &EnumerationOutline().front() ? CommonRows() : "";
        }
        bool const isElsewhere = outline.className == errorClass || outline.className == functionClass;
        body += isElsewhere ? SeeSection(outline) : EnumerationBlock(outline);
    }
    return {.id = "enumerations",
            .title = "Enumerations",
            .count = nxVocabularyCatalogue::GetEnumerations().size(),
            .counted = "block",
            .lead =
                "A class’s numbers lie between its bounds, both exclusive. Numbers and tokens are for ever: "
                "they stand in stored data and in messages.",
            .body = body + "</div>\n"};
}

Section MasksSection()
{
    std::string body;
    for (auto const& mask : nxVocabularyCatalogue::GetBitMasks())
    {
        std::string const rows = MaskRows(mask);
        body += BlockBegin(mask.className, mask.className) +
                Heading("h3", mask.className,
                        std::to_string(mask.width) + " bits" + (rows.empty() ? ", no rows" : ""));
        if (!rows.empty())
            body += TableOf(mask.className, "Bits", rows);
        body += "</section>\n";
    }
    return {.id = "masks",
            .title = "Bit masks",
            .count = nxVocabularyCatalogue::GetBitMasks().size(),
            .counted = "block",
            .lead = "The two top bits of a mask mean null and no change; the bits below are the class’s own.",
            .body = std::move(body)};
}
} // namespace nxTool
