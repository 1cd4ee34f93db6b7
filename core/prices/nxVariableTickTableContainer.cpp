#include "core/prices/nxVariableTickTableContainer.h"

#include "core/logging/nxLogSite.h"
#include "core/platform/nxInitialiseFirst.h"
#include "core/prices/nxTickRangeRow.h"
#include "core/prices/nxVariableTickTableCatalogue.h"

#include <cstddef>
#include <iterator>
#include <limits>
#include <new>

// Tables copy these two. They come before every other static object of the program, since a host may have tables of
// its own among its statics; the catalogue, whose tables need them as well, follows at the end of this file.
NX_INITIALISE_FIRST nxDecimal const nxVariableTickTable::_maxPositiveValue =
    nxDecimal::ConstructFromValueAndDecimalPlaces(std::numeric_limits<long long>::max(), 0);
NX_INITIALISE_FIRST nxDecimal const nxVariableTickTable::_defaultMinimumTickIncrement =
    nxDecimal::ConstructFromValueAndDecimalPlaces(1, 0);

namespace
{
struct Digits
{
    long long value;
    unsigned char places;
};

// As nxDecimal parses a text, at compile time: a row that is no number does not compile, and start-up parses nothing.
consteval Digits ParseRow(char const* text)
{
    Digits digits{0, 0};
    bool pointSeen = false;
    for (; *text != '\0'; ++text)
    {
        if (*text == '.' && !pointSeen)
        {
            pointSeen = true;
            continue;
        }
        if (*text < '0' || *text > '9')
            throw "a ladder's row holds digits and one point";
        digits.value = digits.value * 10 + (*text - '0');
        digits.places = static_cast<unsigned char>(digits.places + (pointSeen ? 1 : 0));
    }
    return digits;
}

consteval nxTickRangeRow MakeRow(Digits top, Digits increment)
{
    return {top.value, increment.value, top.places, increment.places};
}

// clang-format off
#define NX_LADDER_BEGIN(name) constexpr nxTickRangeRow rangesOf##name[] = {
#define NX_RANGE(top, increment) MakeRow(ParseRow(top), ParseRow(increment)),
#define NX_TOP(increment) MakeRow({std::numeric_limits<long long>::max(), 0}, ParseRow(increment)),
#define NX_LADDER_END(name) };
#include "core/prices/tables/ladders.def"

struct Entry
{
    char const* name;
    char const* identifier;
    nxVariableTickTable* (*create)();
};

#define NX_LADDER_BEGIN(name)                                                                                \
    {#name, "VTT_" #name, []() -> nxVariableTickTable* { return new nxVariableTickTable##name; }},
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
constexpr Entry catalogue[] = {
#include "core/prices/tables/ladders.def"
};
// clang-format on
} // namespace

#define NX_LADDER_BEGIN(name)                                                                                \
    nxVariableTickTable##name::nxVariableTickTable##name()                                                   \
    {                                                                                                        \
        _AddRanges(rangesOf##name, std::size(rangesOf##name));                                               \
    }
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"

nxVariableTickTableContainer::nxVariableTickTableContainer()
{
    for (Entry const& entry : catalogue)
        _Register(entry.name, entry.identifier, entry.create());
    (void)pthread_atfork(nullptr, nullptr, _RemakeLocksInChild);
}

// Another thread of the parent may have been inside a lookup. What a table remembers is one word and so is whole.
void nxVariableTickTableContainer::_RemakeLocksInChild()
{
    for (auto const& [identifier, table] : _GetInstance()._tables)
        new (&table->_mutex) nxMutex;
}

nxVariableTickTable const* nxVariableTickTableContainer::GetVariableTickTable(std::string const& identifier)
{
    auto const& tables = _GetInstance()._tables;
    auto const found = tables.find(identifier);
    return found == tables.end() ? nullptr : found->second;
}

std::string nxVariableTickTableContainer::GetVariableTickTableID(std::string const& name)
{
    auto const& identifiers = _GetInstance()._identifiers;
    auto const found = identifiers.find(name);
    return found == identifiers.end() ? std::string() : found->second;
}

void nxVariableTickTableContainer::LogRegisteredEntries()
{
    _GetInstance()._LogRegisteredEntries();
}

void nxVariableTickTableContainer::_Register(std::string const& name, std::string const& identifier,
                                             nxVariableTickTable* table)
{
    if (!table->_CheckConstraints())
        return;
    _identifiers.emplace(name, identifier);
    _tables.emplace(identifier, table);
}

void nxVariableTickTableContainer::_LogRegisteredEntries() const
{
    for (auto const& [name, identifier] : _identifiers)
    {
        auto const found = _tables.find(identifier);
        if (found == _tables.end())
            continue;
        NX_LOG(NX_INF, "Registered Variable tick table. Name: " << name);
        unsigned int entry = 0;
        for (auto const& [top, increment] : found->second->GetRangeData())
        {
            if (top == nxVariableTickTable::_maxPositiveValue)
                NX_LOG(NX_INF, "Entry #" << entry << ". Upper bound: NONE, Delta: " << increment);
            else
                NX_LOG(NX_INF, "Entry #" << entry << ". Upper bound: " << top << ", Delta: " << increment);
            ++entry;
        }
    }
}

nxVariableTickTableContainer& nxVariableTickTableContainer::_GetInstance()
{
    static nxVariableTickTableContainer& instance = *new nxVariableTickTableContainer;
    return instance;
}

namespace
{
struct CatalogueFilling
{
    CatalogueFilling()
    {
        (void)nxVariableTickTableContainer::GetVariableTickTable(std::string());
    }
};

// Fills the catalogue while there is but one thread, and before a host's static objects ask for their ladders.
NX_INITIALISE_FIRST CatalogueFilling const catalogueFilling;
} // namespace
