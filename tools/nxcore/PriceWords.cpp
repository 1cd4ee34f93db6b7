#include "PriceWords.h"

#include "NearMiss.h"
#include "core/prices/nxVariableTickTableContainer.h"

namespace nxTool
{
namespace
{
constexpr std::string_view formatPrefix = "NX_PRICE_FORMAT_";
constexpr std::string_view methodPrefix = "NX_ROUNDING_METHOD_";

/// A registered value whose token is the word, or the prefix and the word.
template <class Enumeration>
std::optional<Enumeration> Find(std::string const& word, std::string_view prefix)
{
    Enumeration value;
    std::string const token = word.starts_with(prefix) ? word : std::string(prefix) + word;
    if (!value.SetFromString(token))
        return std::nullopt;
    return value;
}

std::string Unknown(std::string_view kind, std::string const& word, std::span<std::string_view const> known)
{
    return "unknown " + std::string(kind) + " " + word + DidYouMean(word, known);
}

template <class Enumeration>
std::string UnknownToken(std::string_view kind, std::string const& word, std::string_view prefix)
{
    std::vector<nxEnumValue> values;
    Enumeration().GetRegisteredEnumValuesForInstance(values);
    std::vector<std::string> tokens; // with the prefix only if the word has it
    for (nxEnumValue const value : values)
        tokens.push_back(
            Enumeration(value).GetAsString().substr(word.starts_with(prefix) ? 0 : prefix.size()));
    return Unknown(kind, word, std::vector<std::string_view>(tokens.begin(), tokens.end()));
}
} // namespace

std::span<std::string_view const> LadderNames()
{
    static constexpr std::string_view names[] = {
#define NX_LADDER_BEGIN(name) #name,
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
    };
    return names;
}

nxVariableTickTable const* FindLadder(std::string const& word)
{
    std::string const identifier = nxVariableTickTableContainer::GetVariableTickTableID(word);
    return nxVariableTickTableContainer::GetVariableTickTable(identifier.empty() ? word : identifier);
}

std::optional<nxPriceFormatEnum> FindPriceFormat(std::string const& word)
{
    return Find<nxPriceFormatEnum>(word, formatPrefix);
}

std::vector<std::string> PriceFormatNames()
{
    std::vector<nxEnumValue> formats;
    nxPriceFormatEnum().GetRegisteredEnumValuesForInstance(formats);
    std::vector<std::string> names;
    for (nxEnumValue const format : formats)
    {
        std::string const& token = nxPriceFormatEnum(format).GetAsString();
        names.push_back(token.starts_with(formatPrefix) ? token.substr(formatPrefix.size()) : token);
    }
    return names;
}

std::optional<nxRoundingMethodEnum> FindRoundingMethod(std::string const& word)
{
    return Find<nxRoundingMethodEnum>(word, methodPrefix);
}

std::span<nxEnumValue const> RoundingMethods()
{
    static constexpr nxEnumValue methods[] = {NX_ROUNDING_METHOD_DOWN, NX_ROUNDING_METHOD_UP,
                                              NX_ROUNDING_METHOD_NEAREST,
                                              NX_ROUNDING_METHOD_MODIFIED_NEAREST};
    return methods;
}

std::string ShortNameOf(nxRoundingMethodEnum const& method)
{
    return method.GetAsString().substr(methodPrefix.size());
}

std::string UnknownLadder(std::string const& word)
{
    return Unknown("ladder", word, LadderNames());
}

std::string UnknownPriceFormat(std::string const& word)
{
    return UnknownToken<nxPriceFormatEnum>("price format", word, formatPrefix);
}

std::string UnknownRoundingMethod(std::string const& word)
{
    return UnknownToken<nxRoundingMethodEnum>("rounding method", word, methodPrefix);
}
} // namespace nxTool
