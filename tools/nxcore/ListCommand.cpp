// `nxcore list`: the classes of the vocabulary, the rows of one, or the rows that hold a text.

#include "Arguments.h"
#include "Commands.h"
#include "NearMiss.h"
#include "Result.h"
#include "Words.h"

#include "core/vocabulary/nxVocabularyCatalogue.h"

namespace nxTool
{
namespace
{
constexpr Option options[] = {
    {"search", "TEXT", "only rows that hold TEXT in their token or text, letters in either case"},
};

/// Where a row stands among the numbers or the bits of its class.
Cell PlaceOf(Word const& word)
{
    return word.isBit ? Cell(Hexadecimal(word.number), word.number) : Cell(word.number);
}

void ListClasses(Result& result)
{
    std::size_t rowCount = 0;
    Table& enumerations = result.AddTable("enumerations", {{"class", "Enumeration"},
                                                           {"lowerBound", "Above", Align::Right},
                                                           {"upperBound", "Below", Align::Right},
                                                           {"rows", "Rows", Align::Right}});
    for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
    {
        rowCount += enumeration.rows.size();
        enumerations.Add(
            {enumeration.className, enumeration.lowerBound, enumeration.upperBound, enumeration.rows.size()});
    }
    result.AddLine(std::to_string(enumerations.GetRowCount()) + " enumerations, " + std::to_string(rowCount) +
                   " rows\n");

    rowCount = 0;
    Table& masks = result.AddTable(
        "bitMasks",
        {{"class", "Bit mask"}, {"width", "Width", Align::Right}, {"rows", "Rows", Align::Right}});
    for (auto const& mask : nxVocabularyCatalogue::GetBitMasks())
    {
        rowCount += mask.rows.size();
        masks.Add({mask.className, mask.width, mask.rows.size()});
    }
    result.AddLine(std::to_string(masks.GetRowCount()) + " bit masks, " + std::to_string(rowCount) + " rows");
}

void ListClass(std::string_view className, Result& result)
{
    result.AddField("class", "class", className);
    if (auto const* const enumeration = nxVocabularyCatalogue::FindEnumeration(className))
    {
        result.AddField("lowerBound", "above", enumeration->lowerBound);
        result.AddField("upperBound", "below", enumeration->upperBound);
    }
    else if (auto const* const mask = nxVocabularyCatalogue::FindBitMask(className))
    {
        result.AddField("width", "width", mask->width);
    }
    result.AddLine("");
    bool const isMask = nxVocabularyCatalogue::FindBitMask(className) != nullptr;
    Table& rows = result.AddTable(
        "rows", {isMask ? Column{"bits", "Bits", Align::Right} : Column{"number", "Number", Align::Right},
                 {"token", "Token"},
                 {"text", "Text"}});
    for (Word const& word : AllWords())
        if (word.className == className)
            rows.Add({PlaceOf(word), word.token, word.text});
}

/// @param className  empty for all classes
void Search(std::string const& text, std::string_view className, Result& result)
{
    Table& rows = result.AddTable(
        "rows",
        {{"class", "Class"}, {"number", "Number", Align::Right}, {"token", "Token"}, {"text", "Text"}});
    std::string const folded = Folded(text);
    for (Word const& word : AllWords())
    {
        bool const ofClass = className.empty() || word.className == className;
        if (ofClass && (word.foldedToken.find(folded) != std::string::npos ||
                        word.foldedText.find(folded) != std::string::npos))
            rows.Add({word.className, PlaceOf(word), word.token, word.text});
    }
    if (rows.GetRowCount() == 0)
        result.AddProblem(text, "no row holds this text");
}

Status Run(Arguments const& arguments, Result& result)
{
    std::string const name = arguments.Get(0);
    std::string_view const className = FindClassName(name);
    if (!name.empty() && className.empty())
    {
        result.AddProblem(UnknownName(name, "no such class", ClassNames()));
        return Status::Unusable;
    }
    auto const searched = arguments.GetOption("search");
    if (searched)
        Search(*searched, className, result);
    else if (className.empty())
        ListClasses(result);
    else
        ListClass(className, result);
    return Status::Good;
}
} // namespace

Command const listCommand = {
    .name = "list",
    .arguments = "[CLASS]",
    .summary = "list the classes of the vocabulary, or the rows of one",
    .details =
        "Without CLASS all enumerations with their bounds, which are exclusive, and all bit masks with\n"
        "their width, each with its number of rows. With CLASS its rows. With -search the rows that\n"
        "hold a text, of all classes or of CLASS; the exit status is 1 when there are none.",
    .example = "nxcore list nxOrderStatusEnum",
    .options = options,
    .mostArguments = 1,
    .completes = Completes::Class,
    .run = Run,
};
} // namespace nxTool
