#include "core/platform/nxInitialiseFirst.h"
#include "core/vocabulary/nxBitMaskRow.h"
#include "core/vocabulary/nxEnumIndex.h"
#include "core/vocabulary/nxEnumRow.h"
#include "core/vocabulary/nxVocabulary.h"

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

nxEnumIndex& nxEnum::_Index()
{
    // Constant-initialised, so it needs no guard; what it points to is never freed.
    static constinit nxEnumIndex index;
    return index;
}

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

// The class's name and bounds, and its rows as one array, which the compiler takes far faster than a call a row.
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
        static constexpr nxEnumRow rows[] = {
#define NX_ROW(number, token, text) {number, #token, text},
#define NX_WORD(number, token, text) {number, #token, text},
#define NX_TEXT(number, enumerator, token, text) {number, token, text},
#define NX_ENUM_END(Class)                                                                                   \
        {}};                                                                                                 \
        return _RegisterRows(rows);                                                                          \
    }
#include "core/vocabulary/tables/enumerations.def"

#define NX_MASK_BEGIN(Class)                                                                                 \
    bool Class::_registered = false;                                                                         \
    std::string Class::GetClassNameA() const                                                                 \
    {                                                                                                        \
        return #Class;                                                                                       \
    }                                                                                                        \
    bool Class::_RegisterValues()                                                                            \
    {                                                                                                        \
        static constexpr nxBitMaskRow<decltype(Class::_value)> rows[] = {
#define NX_BIT(bits, token, text) {bits, token, text},
#define NX_MASK_END(Class)                                                                                   \
        {}};                                                                                                 \
        return _RegisterRows(rows);                                                                          \
    }
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
    }
};

// Before every other static object, of a host that links the static library too: those may already print.
NX_INITIALISE_FIRST nxRegistration const registration;
