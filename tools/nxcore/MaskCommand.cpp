// `nxcore mask`: the bits of a mask in words, or the number that words make.

#include "Arguments.h"
#include "Commands.h"
#include "Result.h"
#include "Words.h"

#include "core/vocabulary/nxVocabulary.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace nxTool
{
namespace
{
using Number = unsigned long long;

constexpr Option options[] = {
    {"separator", "S", "what stands between the words; a comma by default"},
};
constexpr std::string_view defaultSeparator = ",";

/// What a class says of a value.
struct Description
{
    char const* state;
    std::string tokens;
    std::string texts;
};

template <typename Mask>
Description Describe(Number value, std::string const& separator)
{
    Mask const mask(static_cast<decltype(Mask().GetValue())>(value));
    char const* state = mask.IsValid() ? "valid" : "not valid";
    if (mask.IsNull())
        state = "null";
    else if (mask.IsNoChange())
        state = "no change";
    return {state, mask.GetShortDescription(separator), mask.GetLongDescription(separator)};
}

struct MaskClass
{
    std::string_view name;
    Description (*describe)(Number value, std::string const& separator);
};

constexpr MaskClass maskClasses[] = {
#define NX_MASK_BEGIN(Class) {#Class, Describe<Class>},
#define NX_BIT(bits, token, text)
#define NX_MASK_END(Class)
#include "core/vocabulary/tables/masks.def"
};

bool LooksLikeNumber(std::string_view text)
{
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

/// A decimal number or one in 0x form that fits the width; nothing when it is neither.
std::optional<Number> ReadNumber(std::string_view text, unsigned int width)
{
    constexpr int decimal = 10;
    constexpr int hexadecimal = 16;
    bool const isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal)
        text.remove_prefix(2);
    Number number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number,
                                              isHexadecimal ? hexadecimal : decimal);
    bool const fits = width == 64 || number >> width == 0;
    if (error != std::errc() || end != text.data() + text.size() || !fits)
        return std::nullopt;
    return number;
}

std::string_view Trimmed(std::string_view text)
{
    std::size_t const first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The bits of one token, letters in either case; blanks around it don't count, since one token ends in a blank itself.
std::optional<Number> BitsOf(nxVocabularyCatalogue::BitMask const& mask, std::string_view token)
{
    for (nxBitMaskRow const& row : mask.rows)
        if (EqualInEitherCase(Trimmed(row.token), Trimmed(token)))
            return row.bits;
    return std::nullopt;
}

Problem UnknownToken(nxVocabularyCatalogue::BitMask const& mask, std::string_view token)
{
    std::vector<std::string_view> candidates;
    for (nxBitMaskRow const& row : mask.rows)
        candidates.push_back(row.token);
    return UnknownName(token, "no token of " + std::string(mask.className), candidates);
}

/// The number that tokens joined by commas make; what is no token is a problem. Nothing when none is one.
std::optional<Number> ReadTokens(nxVocabularyCatalogue::BitMask const& mask, std::string_view text,
                                 Result& result)
{
    std::optional<Number> number;
    while (true)
    {
        std::size_t const comma = text.find(',');
        std::string_view const token = text.substr(0, comma);
        auto const bits = BitsOf(mask, token);
        if (bits)
            number = number.value_or(0) | *bits;
        else
            result.AddProblem(UnknownToken(mask, token));
        if (comma == std::string_view::npos)
            return number;
        text.remove_prefix(comma + 1);
    }
}

void ShowBits(nxVocabularyCatalogue::BitMask const& mask, Number value, Result& result)
{
    Table& bits =
        result.AddTable("bits", {{"bit", "Bit", Align::Right}, {"token", "Token"}, {"text", "Text"}});
    for (unsigned int index = 0; index < mask.width; ++index)
    {
        Number const bit = Number{1} << index;
        if ((value & bit) == 0)
            continue;
        auto const row = std::ranges::find(mask.rows, bit, &nxBitMaskRow::bits);
        bool const known = row != mask.rows.end();
        bits.Add({Cell(Hexadecimal(bit), bit), known ? row->token : "???", known ? row->text : "???"});
    }
}

std::vector<std::string_view> MaskNames()
{
    std::vector<std::string_view> names;
    for (auto const& mask : nxVocabularyCatalogue::GetBitMasks())
        names.push_back(mask.className);
    return names;
}

Status Run(Arguments const& arguments, Result& result)
{
    auto const* const mask = nxVocabularyCatalogue::FindBitMask(FindClassName(arguments.Get(0)));
    if (mask == nullptr)
    {
        result.AddProblem(UnknownName(arguments.Get(0), "no such bit mask", MaskNames()));
        return Status::Unusable;
    }

    std::string const text = arguments.Get(1);
    bool const asNumber = LooksLikeNumber(text);
    auto const value = asNumber ? ReadNumber(text, mask->width) : ReadTokens(*mask, text, result);
    if (!value)
    {
        if (asNumber)
            result.AddProblem(text, "no number of " + std::to_string(mask->width) + " bits");
        return Status::Unusable;
    }

    auto const maskClass = std::ranges::find(maskClasses, mask->className, &MaskClass::name);
    Description const description =
        maskClass->describe(*value, arguments.GetOption("separator", defaultSeparator));
    result.AddField("class", "class", mask->className);
    result.AddField("value", "value", *value);
    result.AddField("hexadecimal", "hexadecimal", Hexadecimal(*value));
    result.AddField("state", "state", description.state);
    result.AddField("tokens", "tokens", description.tokens);
    result.AddField("texts", "texts", description.texts);
    result.AddLine("");
    ShowBits(*mask, *value, result);
    return Status::Good;
}
} // namespace

Command const maskCommand = {
    .name = "mask",
    .arguments = "CLASS VALUE",
    .summary = "read the value of a bit mask, or make one from tokens",
    .details =
        "VALUE is a decimal number, a number in 0x form, or tokens joined by commas. Shows the value, its\n"
        "state, the words as the library prints them, and each bit that is set with token and text; a\n"
        "bit without a row is \"???\". A token that the class does not know is named with the most similar\n"
        "one, and the exit status is 1.",
    .example = "nxcore mask nxExchangePriceFilterBitMask 0x25 -separator \" | \"",
    .options = options,
    .fewestArguments = 2,
    .mostArguments = 2,
    .completes = Completes::Class,
    .run = Run,
};
} // namespace nxTool
