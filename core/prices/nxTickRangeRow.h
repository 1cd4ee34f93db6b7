#pragma once

/// @file
/// The ranges of the catalogue's ladders as constants of the program.

/// One range of a ladder as two decimals, each as its digits without the point and its count of decimal places.
struct nxTickRangeRow
{
    long long top;
    long long increment;
    unsigned char topPlaces;
    unsigned char incrementPlaces;
};
