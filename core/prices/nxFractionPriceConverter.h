#pragma once

#include "core/prices/nxPriceConverter.h"

/// @file
/// The base of the fraction formats whose separator is '-'.

/// Prices as a whole part, a '-' and digits that count parts of a whole: "101-16" is 101 and 16 thirty-seconds.
///
/// The parser asks the subclass what each digit behind the separator means, one step for each position; a step works
/// on the parser's variables and answers whether it takes the digit. Here every step refuses. A text with no
/// separator is a whole number of the unit. A text is not checked against the tick, since its digits can't miss it.
class NX_CORE_API nxFractionPriceConverter : public nxPriceConverter
{
public:
    /// The minimum tick is one part of the larger denominator, rounded to nine places; 0 and 0 give none.
    nxFractionPriceConverter(unsigned short const& first, unsigned short const& second);

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
    virtual bool _ParseFourthDigit(unsigned short& digit, unsigned short& accumulator, double& value);

    /// Called before a text is read.
    virtual void _ResetParse();
    /// Called when all of a text has been taken.
    virtual void _FinishParse(unsigned short& accumulator, double& value);

    /// Takes a digit, or a '-': the sign in front and the separator elsewhere.
    virtual bool _ParseCharacter(char const* character, unsigned short& position, unsigned short& digit,
                                 bool& negative, bool& separator);

private:
    template <class Converter>
    friend class nxFractionParser;
};
