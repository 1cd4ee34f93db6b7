// `nxcore describe`: what a number or a word of the platform means.

#include "Arguments.h"
#include "Commands.h"
#include "Facts.h"
#include "NearMiss.h"
#include "Result.h"
#include "Words.h"

#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <charconv>
#include <functional>
#include <optional>

namespace nxTool
{
namespace
{
/// The text as a number; nothing when it is a word. A number past all classes' is the largest one, which has no class.
std::optional<unsigned int> NumberOf(std::string const& text)
{
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    unsigned int number = 0;
    auto const read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() ? number : ~0u;
}

std::vector<Word const*> WordsThat(std::function<bool(Word const&)> const& match)
{
    std::vector<Word const*> found;
    for (Word const& word : AllWords())
        if (match(word))
            found.push_back(&word);
    return found;
}

/// The words meant by a text: those that are it, else those that are it in another case, else those with it inside;
/// people who read a screen know the texts only, so these come last.
std::vector<Word const*> WordsMeantBy(std::string_view text)
{
    if (text.empty())
        return {};
    auto found = WordsThat([&](Word const& word) { return word.token == text || word.enumerator == text; });
    if (found.empty())
        found = WordsThat(
            [&](Word const& word)
            { return EqualInEitherCase(word.token, text) || EqualInEitherCase(word.enumerator, text); });
    std::string const folded = Folded(text);
    if (found.empty())
        found =
            WordsThat([&](Word const& word) { return word.foldedToken.find(folded) != std::string::npos; });
    if (found.empty())
        found =
            WordsThat([&](Word const& word) { return word.foldedText.find(folded) != std::string::npos; });
    return found;
}

void AddWord(Records& records, Word const& word)
{
    std::vector<Field> fields = {{"class", "class", word.className}};
    if (word.isBit)
        fields.push_back({"bits", "bits", Cell(Hexadecimal(word.number), word.number)});
    else
        fields.push_back({"number", "number", word.number});
    fields.push_back({"token", "token", word.token});
    fields.push_back({"text", "text", word.text});
    if (!word.isBit)
    {
        fields.push_back({"enumerator", "enumerator", word.enumerator});
        for (Field& fact : FactsOf(word.className, static_cast<unsigned int>(word.number)))
            fields.push_back(std::move(fact));
    }
    records.Add(std::move(fields));
}

void DescribeNumber(std::string const& text, unsigned int number, Records& records, Result& result)
{
    auto const found = WordsThat([&](Word const& word) { return !word.isBit && word.number == number; });
    for (Word const* const word : found)
        AddWord(records, *word);
    if (!found.empty())
        return;
    auto const* const owner = nxVocabularyCatalogue::FindOwner(number);
    std::string const reason = owner == nullptr ? "no class has this number"
                                                : "inside the bounds of " + std::string(owner->className) +
                                                      ", but without a row; it prints as NOT_REGISTERED";
    result.AddProblem(text, reason);
}

void DescribeWord(std::string const& text, Records& records, Result& result)
{
    auto const found = WordsMeantBy(text);
    for (Word const* const word : found)
        AddWord(records, *word);
    if (!found.empty())
        return;
    if (!FindClassName(text).empty())
    {
        result.AddProblem(text, "a class, nxcore list shows its rows");
        return;
    }
    std::vector<std::string_view> candidates;
    for (Word const& word : AllWords())
    {
        candidates.push_back(word.token);
        candidates.push_back(word.enumerator);
    }
    result.AddProblem(UnknownName(text, "no such word", candidates));
}

Status Run(Arguments const& arguments, Result& result)
{
    Records& records = result.AddRecords("words");
    for (std::string const& text : arguments.GetAll())
    {
        auto const number = NumberOf(text);
        if (number)
            DescribeNumber(text, *number, records, result);
        else
            DescribeWord(text, records, result);
    }
    return Status::Good; // what was not found is a problem, which makes it faulty
}
} // namespace

Command const describeCommand = {
    .name = "describe",
    .arguments = "WHAT...",
    .summary = "say what a number or a word of the platform means",
    .details =
        "WHAT is a number, a token, an enumerator, or a part of a token, letters in either case; where no\n"
        "token has it, a part of a text. Shows the class, number, token and text, the enumerator in C++,\n"
        "and what the class can tell of the number, such as whether an order in this state is working.\n"
        "Words of bit masks are shown with their bits. What is not found is named with the most similar\n"
        "word, and the exit status is 1.",
    .example = "nxcore describe 1103 NX_FUNCTION_SUBMIT_ORDER trail_stop",
    .fewestArguments = 1,
    .mostArguments = 1000,
    .run = Run,
};
} // namespace nxTool
