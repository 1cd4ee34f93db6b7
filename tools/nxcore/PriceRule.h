#pragma once

#include "core/prices/nxPriceConverter.h"
#include "core/prices/nxPriceManipulator.h"
#include "core/prices/nxVariableTickTable.h"
#include "core/vocabulary/nxPriceFormatEnum.h"

#include <memory>
#include <optional>
#include <string>

namespace nxTool
{
/// How the prices of a product are written, and how far they move.
class PriceRule
{
public:
    /// With the format's own tick, that of its smallest fraction; 0.01 for decimals, 1 for whole ticks and for decimals
    /// of a ratio.
    explicit PriceRule(nxPriceFormatEnum const& format);
    /// @param tick  in units of the price, above zero. It does not change the texts of the fraction formats.
    PriceRule(nxPriceFormatEnum const& format, nxDecimal const& tick);
    PriceRule(nxPriceFormatEnum const& format, nxVariableTickTable const& ladder);

    /// True for the formats whose texts are decimals or whole numbers: the tick is the product's.
    static bool NeedsTick(nxPriceFormatEnum const& format);

    /// The price of a text of the format, on the tick or not; nothing for a text that is no price, or too large.
    std::optional<nxDecimal> Read(std::string const& text) const;
    std::string Show(nxDecimal const& price) const;

    /// What is wrong with a text: no price of the format, too large, or off the tick; empty when nothing is.
    std::string GetFault(std::string const& text) const;

    /// Whether the price, and what lies so many ticks from it, have no more than `mostDigits` at the tick's decimal
    /// places.
    bool Holds(nxDecimal const& price, int ticks = 0) const;

    bool IsOnTick(nxDecimal const& price) const;

    /// The price so many ticks away; from a price off the tick, the first step leads to the one beside it.
    nxDecimal Stepped(nxDecimal const& price, int ticks) const;
    nxDecimal Rounded(nxDecimal const& price, nxEnumValue method) const;

    /// The tick in force at a price.
    nxDecimal TickAt(nxDecimal const& price) const;

private:
    void _SetTick(nxPriceManipulator const& manipulator, nxDecimal const& smallestTick);

    nxPriceFormatEnum _format;
    std::unique_ptr<nxPriceConverter> _converter; // for texts
    std::unique_ptr<nxPriceConverter> _reader;    // takes prices that are off the tick too
    nxPriceManipulator _manipulator;
    nxVariableTickTable const* _ladder = nullptr;
    bool _isTickOfFormat = false; // then no text of the format can miss it
};

/// The digits of a number that doubles and decimals keep apart, whatever is done with it.
inline constexpr int mostDigits = 15;

/// Whether a number has no more than `mostDigits` when it has so many decimal places.
bool FitsDigits(double value, unsigned char decimalPlaces);

/// Whether a text has more digits than `mostDigits`, zeros in front left out: read, it would be another number.
bool HasTooManyDigits(std::string const& text);

/// @param reason  why there is none
/// @return the decimal of a text; nothing for a text that is none, or too large to stand on the ladder
std::optional<nxDecimal> ReadPrice(std::string const& text, nxVariableTickTable const& ladder,
                                   std::string& reason);

/// @param reason  why there is none
/// @return the tick of a text: a decimal above zero, and not too small for a price to be held against it
std::optional<nxDecimal> ReadTick(std::string const& text, std::string& reason);

/// A decimal without zeros at its end.
std::string Trimmed(nxDecimal price);
} // namespace nxTool
