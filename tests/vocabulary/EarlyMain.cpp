// F19: that the whole vocabulary is there before main, wherever it is asked for.

#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <cstdio>

extern unsigned int const rowsInTheFirstFile;
extern unsigned int const rowsInTheLastFile;
extern unsigned int const rowsInAnotherLibrary; // of the shared kind only

int main()
{
    unsigned int rows = 0;
    for (nxVocabularyCatalogue::Enumeration const& enumeration : nxVocabularyCatalogue::GetEnumerations())
        rows += static_cast<unsigned int>(enumeration.rows.size());
    for (nxVocabularyCatalogue::BitMask const& mask : nxVocabularyCatalogue::GetBitMasks())
        rows += static_cast<unsigned int>(mask.rows.size());
    bool isKept = rowsInTheFirstFile == rows && rowsInTheLastFile == rows && rows > 2000;
    std::printf("F19 vocabulary before main, %u rows: %u known to the file linked first, %u to the last",
                rows, rowsInTheFirstFile, rowsInTheLastFile);
#ifdef NX_EARLY_LIBRARY
    isKept = isKept && rowsInAnotherLibrary == rows;
    std::printf(", %u to a shared library of the host's, shared%s\n", rowsInAnotherLibrary,
                isKept ? "" : " FAILED");
#else
    std::printf(", static%s\n", isKept ? "" : " FAILED");
#endif
    return isKept ? 0 : 1;
}
