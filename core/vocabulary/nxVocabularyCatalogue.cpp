#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <algorithm>

namespace
{
template <typename Class>
Class const* FindByName(std::span<Class const> classes, std::string_view className)
{
    auto const found = std::ranges::find(classes, className, &Class::className);
    return found == classes.end() ? nullptr : &*found;
}

bool HasRow(nxVocabularyCatalogue::Enumeration const& enumeration, unsigned int number)
{
    return std::ranges::find(enumeration.rows, number, &nxEnumRow::number) != enumeration.rows.end();
}
} // namespace

nxVocabularyCatalogue::Enumeration const* nxVocabularyCatalogue::FindEnumeration(std::string_view className)
{
    return FindByName(GetEnumerations(), className);
}

nxVocabularyCatalogue::BitMask const* nxVocabularyCatalogue::FindBitMask(std::string_view className)
{
    return FindByName(GetBitMasks(), className);
}

nxVocabularyCatalogue::Enumeration const* nxVocabularyCatalogue::FindOwner(unsigned int number)
{
    // A row counts more than bounds, since one class has rows that lie outside its own.
    Enumeration const* owner = nullptr;
    for (Enumeration const& enumeration : GetEnumerations())
    {
        if (HasRow(enumeration, number))
            return &enumeration;
        if (enumeration.Owns(number) && !enumeration.rows.empty())
            owner = &enumeration;
    }
    return owner;
}
