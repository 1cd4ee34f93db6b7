// Asks for the whole vocabulary while static objects are made. Compiled for each place that does so.

#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxBitMask64.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <string>
#include <type_traits>

namespace
{
template <typename Mask>
bool Holds(char const* className, nxBitMaskRow const& row)
{
    auto const& rows = nxOpenMask<Mask>::_GetDescriptionMap()[className];
    auto const found = rows.find(static_cast<typename std::decay_t<decltype(rows)>::key_type>(row.bits));
    return found != rows.end() && found->second.first == row.token && found->second.second == row.text;
}

bool Holds(nxEnumRow const& row)
{
    nxAnyEnum value(row.number);
    std::string const token = value.GetShortDescription();
    bool const isKnown = token == row.token && value.GetLongDescription() == row.text;
    value.SetNoChange();
    return isKnown && value.SetFromString(token) && value.GetValue() == row.number;
}

unsigned int CountRows()
{
    unsigned int count = 0;
    for (nxVocabularyCatalogue::Enumeration const& enumeration : nxVocabularyCatalogue::GetEnumerations())
        for (nxEnumRow const& row : enumeration.rows)
            count += Holds(row);
    for (nxVocabularyCatalogue::BitMask const& mask : nxVocabularyCatalogue::GetBitMasks())
        for (nxBitMaskRow const& row : mask.rows)
            count += mask.width == 32 ? Holds<nxBitMask>(mask.className, row)
                                      : Holds<nxBitMask64>(mask.className, row);
    return count;
}
} // namespace

/// The rows that are known and sound at that moment.
[[gnu::visibility("default")]] extern unsigned int const NX_EARLY_ROWS;
unsigned int const NX_EARLY_ROWS = CountRows();
