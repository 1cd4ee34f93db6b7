#pragma once

#include "core/prices/nxPriceConverter.h"

/// @file
/// The base of the fraction formats whose last position may be a sign, a blank or missing.

/// Prices as a whole part, a separator of the class's own and two or three positions that count parts of a whole:
/// "101-16+" is 101 and 16.5 thirty-seconds.
///
/// Works as nxFractionPriceConverter does, but for its characters: everywhere in a text a '+' reads as the digit 5
/// and a blank as 0. A '-' in front is the sign; behind that it is refused where it isn't the separator.
class NX_CORE_API nxModifiedFractionPriceConverter : public nxPriceConverter
{
public:
    /// The minimum tick is one part of the larger denominator, rounded to seven places; 0 and 0 give none.
    nxModifiedFractionPriceConverter(unsigned short const& first, unsigned short const& second,
                                     char separator);

    /// Ignores the tick.
    /// @return true.
    bool SetMinimumTickIncrement(nxDecimal const& tick) override;

    /// @return false for a text that is refused, with a null price left behind; false for an empty text or where there
    ///         is no minimum tick, with the price as it was.
    bool SetPriceFromString(std::string const& text) override;

protected:
    /// @param length  characters behind the separator.
    virtual bool _IsValidFractionLength(unsigned short length);

    /// @param digit        0 to 9.
    /// @param accumulator  the parts so far; 0 at first.
    /// @param value        the price's magnitude so far; the last step adds the parts to it.
    virtual bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value);
    virtual bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value);
    virtual bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value);

    /// Called before a text is read.
    virtual void _ResetParse();
    /// Called when all of a text has been taken.
    virtual void _FinishParse(unsigned short& accumulator, double& value);

    char _separator;

private:
    template <class Converter>
    friend class nxFractionParser;

    bool _ParseCharacter(char const* character, unsigned short& position, unsigned short& digit,
                         bool& negative, bool& separator);
};
