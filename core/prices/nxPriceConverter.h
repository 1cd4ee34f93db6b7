#pragma once

#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/prices/nxPriceManipulator.h"

#include <string>

class nxPriceConverterHelper;

/// @file
/// A price between its number and its text.

/// Holds one price and turns it to and from the text of one price format.
///
/// The price is a double in the product's own unit, whatever the format, and null until one is set. One class per
/// text form derives from this; nxPriceConverterHelper picks the class of an `nxPriceFormatEnum`. Set a tick or a
/// manipulator once; then set a price, read its text, step it, read again. Operations answer whether they worked;
/// nothing throws or logs. A price that is refused leaves the converter null, and the text of null is empty.
///
/// Not for several threads at once without a lock: price and text are members.
///
/// @code
/// nxFractionHalf32ndsTickPriceConverter converter;
/// converter.SetPriceFromString("101-165");                             // 101.515625
/// converter.ChangePrice(nxValueWrapper<int, 2147483647, 2147483646>(1));
/// converter.GetPriceAsString();                                        // "101-170"
/// @endcode
class NX_CORE_API nxPriceConverter
{
public:
    virtual ~nxPriceConverter();

    nxPriceConverter(nxPriceConverter const&) = delete;
    nxPriceConverter& operator=(nxPriceConverter const&) = delete;

    /// @param validate  false stores any price; true asks for a price on the tick, within 1e-8, and so needs a
    ///                  minimum tick even where a manipulator's table has the last word.
    /// @return false, with a null price left behind, for a price that is null, no change or off the tick, or when a
    ///         tick is asked for and there is none.
    bool SetPrice(nxDoubleValueWrapper const& price, bool const& validate);

    /// Moves the price by a number of ticks, along the manipulator's table when it has one, else by the minimum tick.
    /// @return false, with the price as it was, when ticks, price or minimum tick is null or no change.
    bool ChangePrice(nxValueWrapper<int, 2147483647, 2147483646> const& ticks);

    nxDoubleValueWrapper GetPrice() const;
    nxDoubleValueWrapper GetMinimumTickIncrement() const;

    /// @return false, with a null tick left behind, when `tick` is not VALID or within 1e-8 of zero. The fraction
    ///         formats have the tick of their denominators: they ignore this one and answer true.
    virtual bool SetMinimumTickIncrement(nxDecimal const& tick);

    /// Copies the tick rule; its table must outlive this converter.
    /// @return false, always, although it works.
    virtual bool SetPriceManipulator(nxPriceManipulator const& manipulator);

    /// @return false for a text that is not of the format, or not on the tick where the format checks that; the price
    ///         is null then. An empty text is false and leaves the price.
    virtual bool SetPriceFromString(std::string const& text) = 0;

    /// @return the text of the price, empty when there is none; a member that the next call writes anew.
    virtual std::string const& GetPriceAsString() = 0;

    /// Decimal places for hosts that show the format's prices as decimals: 8, in which the tick of every format fits
    /// but 1/12, which fits in none, and 1/512, whose class gives 9.
    virtual unsigned char GetMaxFractionDecimalPlaces() const;

protected:
    /// @param firstDenominator   parts of a whole in the fraction's first level; 0 for no fraction.
    /// @param secondDenominator  parts of a whole counting the second level as well; 0 for none.
    nxPriceConverter(unsigned short const& firstDenominator, unsigned short const& secondDenominator);

    /// @param ratio  shown value per unit of the price.
    /// @return false, with the ratio as it was, unless `ratio` is VALID and above zero.
    virtual bool _SetPriceRatio(nxDecimal const& ratio);

    /// The digits after a fraction text's separator, as parts of the denominators. They are rounded but never carried
    /// on, so each may reach its denominator.
    struct _Fraction
    {
        /// Parts of the first denominator, of which the rest is in `second`.
        unsigned short first = 0;
        /// Parts of one part; 0 in formats of one level.
        unsigned short second = 0;
    };

    /// Starts the text anew: the whole part and the separator.
    /// @return false, with an empty text, when there is no price.
    bool _BeginFractionText(char separator, _Fraction& fraction);

    /// Derives the minimum tick from the denominators, rounded to so many places; none from denominators of 0.
    void _DeriveMinimumTick(unsigned char decimalPlaces);

    nxDoubleValueWrapper _price;
    unsigned short _firstDenominator;
    unsigned short _secondDenominator;
    nxPriceManipulator _priceManipulator;
    nxDoubleValueWrapper _minimumTick;
    nxDoubleValueWrapper _priceRatio;
    std::string _text;

private:
    friend class nxPriceConverterHelper;

    bool _IsOnTick(nxDoubleValueWrapper const& price) const;
    bool _AppendWholePart();
    _Fraction _SplitFraction() const;
};
