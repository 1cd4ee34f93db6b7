#include "core/platform/nxEnvironmentLock.h"
#include "core/platform/nxInitialiseFirst.h"
#include "core/vocabulary/nxBitMaskRows.h"
#include "core/vocabulary/nxEnumIndex.h"
#include "core/vocabulary/nxEnumRow.h"
#include "core/vocabulary/nxEnumWords.h"
#include "core/vocabulary/nxVocabulary.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <array>
#include <iterator>
#include <type_traits>

// All rows of all classes become known here, in one unit: the order is fixed, and a program that links the
// static library can't lose a class, since every description goes through the maps that are defined here too.

std::map<unsigned int, nxEnum::Descriptions>& nxEnum::_Map()
{
    static auto& map = *new std::map<unsigned int, Descriptions>;
    return map;
}

std::map<std::string, unsigned int>& nxEnum::_ReverseMap()
{
    static auto& map = *new std::map<std::string, unsigned int>;
    return map;
}

constinit nxEnumIndex nxEnumIndex::ofRegistry;

template <typename Mask, typename Number, typename Parameter>
auto nxBasicBitMask<Mask, Number, Parameter>::_GetDescriptionMap() -> std::map<std::string, Rows>&
{
    static auto& map = *new std::map<std::string, Rows>;
    return map;
}

template std::map<std::string, nxBasicBitMask<nxBitMask, unsigned int, unsigned int>::Rows>&
nxBasicBitMask<nxBitMask, unsigned int, unsigned int>::_GetDescriptionMap();
template std::map<std::string,
                  nxBasicBitMask<nxBitMask64, unsigned long long, unsigned long long const&>::Rows>&
nxBasicBitMask<nxBitMask64, unsigned long long, unsigned long long const&>::_GetDescriptionMap();

// clang-format off

// The places of the classes in the order of registration.
namespace
{
enum class Place
{
#define NX_ENUM_BEGIN(Class) Class,
#define NX_ROW(number, token, text)
#define NX_WORD(number, token, text)
#define NX_TEXT(number, enumerator, token, text)
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"
};

std::span<nxEnumWords const> WordsOf(Place place)
{
    return nxEnumWords::OfClass(static_cast<std::size_t>(place));
}
} // namespace

// What the recipes of the classes only declare.
#define NX_ENUM_BEGIN(Class)                                                                                 \
    bool Class::_registered = false;                                                                         \
    std::string Class::GetClassNameA()                                                                       \
    {                                                                                                        \
        return #Class;                                                                                       \
    }                                                                                                        \
    unsigned int Class::_MinValue() const                                                                    \
    {                                                                                                        \
        return _lowerBound;                                                                                  \
    }                                                                                                        \
    unsigned int Class::_MaxValue() const                                                                    \
    {                                                                                                        \
        return _upperBound;                                                                                  \
    }                                                                                                        \
    bool Class::_RegisterValues()                                                                            \
    {                                                                                                        \
        return _RegisterRows(WordsOf(Place::Class));                                                         \
    }
#define NX_ROW(number, token, text)
#define NX_WORD(number, token, text)
#define NX_TEXT(number, enumerator, token, text)
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"

#define NX_MASK_BEGIN(Class)                                                                                 \
    bool Class::_registered = false;                                                                         \
    std::string Class::GetClassNameA() const                                                                 \
    {                                                                                                        \
        return #Class;                                                                                       \
    }                                                                                                        \
    bool Class::_RegisterValues()                                                                            \
    {                                                                                                        \
        return _RegisterRows(Class##Rows);                                                                   \
    }
#define NX_BIT(bits, token, text)
#define NX_MASK_END(Class)
#include "core/vocabulary/tables/masks.def"

// clang-format on

bool nxEnum::_registered = false;

/// Registers everything, in the one order: the masks (32 bits, then 64), the rows common to all enumerations,
/// all other enumerations.
class nxRegistration
{
public:
    nxRegistration()
    {
#define NX_MASK_BEGIN(Class) Class::_registered = Class()._RegisterValues();
#define NX_BIT(bits, token, text)
#define NX_MASK_END(Class)
#include "core/vocabulary/tables/masks.def"

        nxEnum::_registered = nxEnum::_RegisterValues();

#define NX_ENUM_BEGIN(Class) Class::_registered = Class::_RegisterValues();
#define NX_ROW(number, token, text)
#define NX_WORD(number, token, text)
#define NX_TEXT(number, enumerator, token, text)
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"

        nxEnum::_RegisterTokens();
    }

    static std::span<nxVocabularyCatalogue::Enumeration const> Enumerations()
    {
        // Made when it is first asked for: as a constant it would be thousands of pointers that every start of
        // every program relocates. No fork() comes between: a child could not wait for another thread to finish it.
        nxPlatform::EnvironmentLock lock;
        static auto const enumerations = std::to_array<nxVocabularyCatalogue::Enumeration>({
#define NX_ENUM_BEGIN(Class) {#Class, Class::_lowerBound, Class::_upperBound, _Unpack(WordsOf(Place::Class))},
#define NX_ROW(number, token, text)
#define NX_WORD(number, token, text)
#define NX_TEXT(number, enumerator, token, text)
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"
        });
        return enumerations;
    }

    static std::span<nxVocabularyCatalogue::BitMask const> BitMasks()
    {
        static constexpr nxVocabularyCatalogue::BitMask bitMasks[] = {
#define NX_MASK_BEGIN(Class)                                                                                 \
    {#Class, std::is_base_of_v<nxBitMask64, Class> ? 64u : 32u, {Class##Rows, std::size(Class##Rows) - 1}},
#define NX_BIT(bits, token, text)
#define NX_MASK_END(Class)
#include "core/vocabulary/tables/masks.def"
        };
        return bitMasks;
    }

private:
    /// The rows of the next class as readers of the catalogue know them.
    static std::span<nxEnumRow const> _Unpack(std::span<nxEnumWords const> words);
};

std::span<nxEnumRow const> nxRegistration::_Unpack(std::span<nxEnumWords const> words)
{
    static std::array<nxEnumRow, nxEnumWords::count> rows;
    static std::size_t used = 0;
    nxEnumRow* const first = rows.data() + used;
    for (nxEnumWords const& row : words)
        rows[used++] = {row.number, row.GetEnumerator(), row.GetToken().data(), row.GetText().data()};
    return {first, words.size()};
}

std::span<nxVocabularyCatalogue::Enumeration const> nxVocabularyCatalogue::GetEnumerations()
{
    return nxRegistration::Enumerations();
}

std::span<nxVocabularyCatalogue::BitMask const> nxVocabularyCatalogue::GetBitMasks()
{
    return nxRegistration::BitMasks();
}

// Before every other static object, of a host that links the static library too: those may already print.
NX_INITIALISE_FIRST nxRegistration const registration;
