// Every class of the vocabulary by number, token and text, against its table; every mask by its bits.

#include "fuzz/FuzzInput.h"

#include "core/vocabulary/nxVocabulary.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <iterator>

namespace
{
using Catalogue = nxVocabularyCatalogue;

nxEnumRow const* FindToken(std::string const& token, Catalogue::Enumeration const*& owner)
{
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
        for (nxEnumRow const& row : enumeration.rows)
            if (token == row.token)
                return owner = &enumeration, &row;
    return nullptr;
}

/// What a class keeps of a number that it is given.
unsigned int Checked(Catalogue::Enumeration const& bounds, unsigned int number)
{
    return bounds.Owns(number) || number == NX_NO_CHANGE ? number : 0;
}

void CheckWords(nxEnum const& value)
{
    unsigned int const number = value.GetValue();
    Catalogue::Enumeration const* const owner = Catalogue::FindOwner(number);
    std::string token = number == 0 ? "UNDEFINED" : number == NX_NO_CHANGE ? "NO_CHANGE" : "NOT_REGISTERED";
    for (std::size_t i = 0; owner != nullptr && i < owner->rows.size(); ++i)
        if (owner->rows[i].number == number)
            token = owner->rows[i].token;
    FUZZ_EQUAL(value.GetShortDescription(), token);
    FUZZ_EQUAL(value.GetAsString(), token);
    FUZZ_EQUAL(nxEnum::IsRegisteredEnumValue(number),
               token != "NOT_REGISTERED" || number == NX_NOT_REGISTERED);
}

template <class EnumerationT>
void CheckEnumeration(char const* name, unsigned int number, std::string const& token)
{
    Catalogue::Enumeration const& bounds = *Catalogue::FindEnumeration(name);
    EnumerationT value(static_cast<nxEnumValue>(number));
    FUZZ_EQUAL(value.GetValue(), Checked(bounds, number));
    CheckWords(value);
    FUZZ_EQUAL(value.IsSpecificTypeForInstance(), bounds.Owns(value.GetValue()));
    FUZZ_EQUAL(value.GetClassNameA(), std::string(name));
    EnumerationT assigned;
    static_cast<nxEnum&>(assigned) = number;
    FUZZ_EQUAL(assigned.GetValue(), value.GetValue());

    Catalogue::Enumeration const* owner = nullptr;
    nxEnumRow const* const row = FindToken(token, owner);
    unsigned int const before = value.GetValue();
    bool const taken = value.SetFromShortDescriptionString(token);
    if (row != nullptr)
    {
        FUZZ_EQUAL(value.GetValue(), Checked(bounds, row->number));
        FUZZ_EQUAL(taken, bounds.Owns(row->number));
    }
    else if (token == "UNDEFINED" || token == "NO_CHANGE" || token == "NOT_REGISTERED")
    {
        FUZZ_EQUAL(value.GetValue(), token == "NO_CHANGE" ? 2u : 0u);
        FUZZ_EQUAL(taken, token != "NOT_REGISTERED");
    }
    else
    {
        FUZZ_CHECK(!taken);
        FUZZ_EQUAL(value.GetValue(), before);
    }
}

template <class MaskT>
void CheckMask(char const* name, unsigned long long bits, std::string const& separator)
{
    Catalogue::BitMask const& table = *Catalogue::FindBitMask(name);
    MaskT mask;
    using Number = decltype(mask.GetValue());
    mask.SetValue(static_cast<Number>(bits));
    constexpr Number nullBit = Number{1} << (sizeof(Number) * 8 - 1);
    constexpr Number noChangeBit = nullBit >> 1;
    Number const value = mask.GetValue();
    std::string tokens;
    for (Number bit = 1; bit != 0 && bit <= value; bit <<= 1)
    {
        if ((value & bit) == 0)
            continue;
        char const* token = "???";
        for (nxBitMaskRow const& row : table.rows)
            if (row.bits == bit)
                token = row.token;
        tokens += (tokens.empty() ? "" : separator) + token;
    }
    if (table.rows.empty())
        tokens = "No Description Available";
    if (mask.IsNull() || mask.IsNoChange())
        tokens = mask.IsNull() ? "Null" : "No Change";
    FUZZ_EQUAL(mask.GetShortDescription(separator), tokens);
    // One class gives its null up for a flag.
    constexpr bool hasNull = !std::is_same_v<MaskT, nxExtendedAttributeHighlightBitMask>;
    FUZZ_EQUAL(mask.IsNull(), hasNull && (value & nullBit) != 0);
    FUZZ_EQUAL(mask.IsNoChange(), (value & noChangeBit) != 0);
    bool const startsAnew = !mask.IsValid();
    mask.SetBits(static_cast<Number>(6));
    FUZZ_EQUAL(mask.GetValue(), static_cast<Number>((startsAnew ? 0 : value) | 6));
    mask.ClearBits(static_cast<Number>(6));
    FUZZ_CHECK(!mask.AreAnyBitsSet(static_cast<Number>(6)) && mask.AreAllBitsSet(static_cast<Number>(0)));
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

constexpr unsigned int classesAtOnce = 10;

/// The words a fuzzer can't guess, and those it can.
std::string TakeToken(FuzzInput& input)
{
    if (input.Truth())
        return input.Text();
    auto const enumerations = Catalogue::GetEnumerations();
    auto const& rows = enumerations[input.Below(static_cast<unsigned int>(enumerations.size()))].rows;
    auto const place = input.Take<unsigned short>();
    return rows.empty() ? "NO_CHANGE" : rows[place % rows.size()].token;
}

/// Bounds and their neighbours, or any number.
unsigned int TakeNumber(FuzzInput& input)
{
    if (input.Truth())
        return input.Take<unsigned int>();
    auto const enumerations = Catalogue::GetEnumerations();
    auto const& bounds = enumerations[input.Below(static_cast<unsigned int>(enumerations.size()))];
    return (input.Truth() ? bounds.lowerBound : bounds.upperBound) + input.Below(3) - 1;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::string const token = TakeToken(input);
    unsigned int const number = TakeNumber(input);
    auto const bits = input.Take<unsigned long long>();
    unsigned int const first = input.Take<unsigned char>();
    for (unsigned int i = first; i < first + classesAtOnce; ++i)
    {
        enumerationChecks[i % std::size(enumerationChecks)](number, token);
        maskChecks[i % std::size(maskChecks)](bits, token);
    }
    return 0;
}
