// Every class of the vocabulary by number, token and text, against its table; every mask by its bits.

#include "fuzz/FuzzInput.h"

#include "core/vocabulary/nxVocabulary.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

namespace
{
using Catalogue = nxVocabularyCatalogue;

std::map<unsigned int, std::string> tokens;
std::map<std::string, unsigned int> numbers;

template <class EnumerationT>
void CheckEnumeration(char const* name, unsigned int number, std::string const& token)
{
    static Catalogue::Enumeration const& bounds = *Catalogue::FindEnumeration(name);
    auto const keep = [](unsigned int any) { return bounds.Owns(any) || any == NX_NO_CHANGE ? any : 0; };
    EnumerationT value(static_cast<nxEnumValue>(number));
    unsigned int const before = keep(number);
    FUZZ_EQUAL(value.GetValue(), before);
    auto const known = tokens.find(before);
    FUZZ_EQUAL(value.GetShortDescription(), known == tokens.end() ? "NOT_REGISTERED" : known->second);
    FUZZ_EQUAL(nxEnum::IsRegisteredEnumValue(number), tokens.count(number) != 0);
    FUZZ_EQUAL(value.IsSpecificTypeForInstance(), bounds.Owns(before));
    FUZZ_EQUAL(value.GetClassNameA(), name);
    EnumerationT assigned;
    static_cast<nxEnum&>(assigned) = number;
    FUZZ_EQUAL(assigned.GetValue(), before);

    auto const row = numbers.find(token);
    bool const taken = value.SetFromShortDescriptionString(token);
    FUZZ_EQUAL(value.GetValue(), row == numbers.end() ? before : keep(row->second));
    bool const isCommon = token == "UNDEFINED" || token == "NO_CHANGE";
    FUZZ_EQUAL(taken, isCommon || (row != numbers.end() && bounds.Owns(row->second)));
}

template <class MaskT>
void CheckMask(char const* name, unsigned long long bits, std::string const& separator)
{
    static Catalogue::BitMask const& table = *Catalogue::FindBitMask(name);
    MaskT mask;
    using Number = decltype(mask.GetValue());
    mask.SetValue(static_cast<Number>(bits));
    constexpr Number nullBit = Number{1} << (sizeof(Number) * 8 - 1);
    constexpr Number noChangeBit = nullBit >> 1;
    Number const value = mask.GetValue();
    std::string words;
    for (Number bit = 1; bit != 0 && bit <= value; bit <<= 1)
    {
        auto const row = std::find_if(table.rows.begin(), table.rows.end(),
                                      [bit](nxBitMaskRow const& each) { return each.bits == bit; });
        if ((value & bit) != 0)
            words += (words.empty() ? "" : separator) + (row == table.rows.end() ? "???" : row->token);
    }
    words = table.rows.empty() ? "No Description Available" : words;
    words = mask.IsNull() ? "Null" : mask.IsNoChange() ? "No Change" : words;
    FUZZ_EQUAL(mask.GetShortDescription(separator), words);
    // One class gives its null up for a flag.
    constexpr bool hasNull = !std::is_same_v<MaskT, nxExtendedAttributeHighlightBitMask>;
    FUZZ_EQUAL(mask.IsNull(), hasNull && (value & nullBit) != 0);
    FUZZ_EQUAL(mask.IsNoChange(), (value & noChangeBit) != 0);
    constexpr Number two = 6; // bits
    Number const expected = (mask.IsValid() ? value : 0) | two;
    mask.SetBits(two);
    FUZZ_EQUAL(mask.GetValue(), expected);
    mask.ClearBits(two);
    FUZZ_CHECK(!mask.AreAnyBitsSet(two) && mask.AreAllBitsSet(Number{0}));
}

constexpr void (*enumerationChecks[])(unsigned int, std::string const&) = {
#define NX_ENUM_BEGIN(Class)                                                                                 \
    [](unsigned int number, std::string const& token) { CheckEnumeration<Class>(#Class, number, token); },
#define NX_ROW(number, token, text)
#define NX_WORD(number, token, text)
#define NX_TEXT(number, enumerator, token, text)
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"
};

constexpr void (*maskChecks[])(unsigned long long, std::string const&) = {
#define NX_MASK_BEGIN(Class)                                                                                 \
    [](unsigned long long bits, std::string const& separator) { CheckMask<Class>(#Class, bits, separator); },
#define NX_BIT(bits, token, text)
#define NX_MASK_END(Class)
#include "core/vocabulary/tables/masks.def"
};

Catalogue::Enumeration const& TakeClass(FuzzInput& input)
{
    auto const enumerations = Catalogue::GetEnumerations();
    return enumerations[input.Below(enumerations.size())];
}

/// The words a fuzzer can't guess, and those it can.
std::string TakeToken(FuzzInput& input)
{
    if (input.Truth())
        return input.Text();
    auto const& rows = TakeClass(input).rows;
    auto const place = input.Take<unsigned short>();
    return rows.empty() ? "NO_CHANGE" : rows[place % rows.size()].token;
}

/// Bounds and their neighbours, or any number.
unsigned int TakeNumber(FuzzInput& input)
{
    if (input.Truth())
        return input.Take<unsigned int>();
    auto const& bounds = TakeClass(input);
    return (input.Truth() ? bounds.lowerBound : bounds.upperBound) + input.Below(3) - 1;
}
} // namespace

void FuzzStart()
{
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
        for (nxEnumRow const& row : enumeration.rows)
        {
            FUZZ_CHECK(tokens.emplace(row.number, row.token).second);
            FUZZ_CHECK(numbers.emplace(row.token, row.number).second);
        }
    for (auto const& [number, token] :
         {std::pair(0u, "UNDEFINED"), {NX_NOT_REGISTERED, "NOT_REGISTERED"}, {NX_NO_CHANGE, "NO_CHANGE"}})
        tokens.emplace(number, token), numbers.emplace(token, number);
}

void FuzzOne(FuzzInput& input)
{
    std::string const token = TakeToken(input);
    unsigned int const number = TakeNumber(input);
    auto const bits = input.Take<unsigned long long>();
    std::size_t const which = input.Take<unsigned char>();
    enumerationChecks[which % std::size(enumerationChecks)](number, token);
    maskChecks[which % std::size(maskChecks)](bits, token);
}
