#include "core/numbers/nxDecimal.h"
#include "core/vocabulary/nxPriceFormatEnum.h"

// The steps of the price formats are decimals, so they stand here, above the vocabulary.

namespace
{
/// A format's smallest step.
struct Step
{
    nxEnumValue format;
    long long numerator;
    long long denominator;
    unsigned char places;
};

// The step of the modified 10,000ths is indeed a thousandth.
constexpr Step steps[] = {
    {NX_PRICE_FORMAT_DECIMALS, 1, 100, 2},
    {NX_PRICE_FORMAT_FRACTION_FULL_TICK, 1, 1, 0},
    {NX_PRICE_FORMAT_FRACTION_HALF_TICK, 1, 2, 1},
    {NX_PRICE_FORMAT_FRACTION_QUARTER_TICK, 1, 4, 2},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_TICK, 1, 4, 2},
    {NX_PRICE_FORMAT_FRACTION_8THS_TICK, 1, 8, 3},
    {NX_PRICE_FORMAT_FRACTION_10THS_TICK, 1, 10, 2},
    {NX_PRICE_FORMAT_FRACTION_16THS_TICK, 1, 16, 4},
    {NX_PRICE_FORMAT_FRACTION_20THS_TICK, 1, 20, 2},
    {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 1, 32, 5},
    {NX_PRICE_FORMAT_FRACTION_40THS_TICK, 1, 40, 3},
    {NX_PRICE_FORMAT_FRACTION_64THS_TICK, 1, 64, 6},
    {NX_PRICE_FORMAT_FRACTION_100THS_TICK, 1, 100, 2},
    {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, 1, 64, 6},
    {NX_PRICE_FORMAT_FRACTION_QUARTER_32NDS_TICK, 1, 128, 7},
    {NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK, 1, 128, 7},
    {NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK, 5, 1000, 3},
    {NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS, 1, 100, 2},
    {NX_PRICE_FORMAT_MODIFIED_DECIMALS_10000THS, 1, 1000, 3},
    {NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK, 1, 320, 7},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, 1, 64, 6},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK, 1, 128, 7},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, 25, 10000, 4},
    {NX_PRICE_FORMAT_FRACTION_12THS_TICK, 1, 12, 10},
    {NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK, 1, 256, 8},
    {NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK, 1, 512, 9},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, 1, 256, 8},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, 1, 256, 8},
};
} // namespace

void nxPriceFormatEnum::GetDefaultNumericValue(nxDecimal& step) const
{
    for (Step const& row : steps)
    {
        if (row.format != _value)
            continue;
        step = nxDecimal(row.numerator, row.denominator, row.places);
        return;
    }
    step.SetNull();
}
