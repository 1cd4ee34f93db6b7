#include "core/prices/nxFraction100thsTickPriceConverter.h"
#include "core/prices/nxFraction10thsTickPriceConverter.h"
#include "core/prices/nxFraction12thsTickPriceConverter.h"
#include "core/prices/nxFraction16thsTickPriceConverter.h"
#include "core/prices/nxFraction20thsTickPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFraction40thsTickPriceConverter.h"
#include "core/prices/nxFraction64thsTickPriceConverter.h"
#include "core/prices/nxFraction8thsTickPriceConverter.h"
#include "core/prices/nxFractionEighth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionFive1000thsTickPriceConverter.h"
#include "core/prices/nxFractionHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionHalf64thsTickPriceConverter.h"
#include "core/prices/nxFractionHalfTickPriceConverter.h"
#include "core/prices/nxFractionModifiedEighth32ndsAltTickPriceConverter.h"
#include "core/prices/nxFractionModifiedEighth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarter100thsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarter32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarterTickPriceConverter.h"
#include "core/prices/nxFractionQuarter32ndsTickPriceConverter.h"
#include "core/prices/nxFractionQuarterTickPriceConverter.h"
#include "core/prices/nxFractionSixteenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionTenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionText.h"

// The classes of the fraction formats, out of their table. A class overrides the steps of those positions that it has.

using namespace nxFractionText;
using namespace nxFractionDigits;

#define NX_FRACTION(format, base, separator, isValidLength, firstText, secondText)                           \
    nxFraction##format##TickPriceConverter::nxFraction##format##TickPriceConverter() : base                  \
    {                                                                                                        \
    }                                                                                                        \
                                                                                                             \
    std::string const& nxFraction##format##TickPriceConverter::GetPriceAsString()                            \
    {                                                                                                        \
        _Fraction fraction;                                                                                  \
        if (_BeginFractionText(separator, fraction))                                                         \
        {                                                                                                    \
            firstText.Append(_text, fraction.first);                                                         \
            secondText.Append(_text, fraction.second);                                                       \
        }                                                                                                    \
        return _text;                                                                                        \
    }                                                                                                        \
                                                                                                             \
    bool nxFraction##format##TickPriceConverter::_IsValidFractionLength(unsigned short length)               \
    {                                                                                                        \
        return isValidLength;                                                                                \
    }

#define NX_POSITION(format, position, step)                                                                  \
    bool nxFraction##format##TickPriceConverter::_Parse##position##Digit(                                    \
        unsigned short& digit, unsigned short& accumulator, double& /*value*/)                               \
    {                                                                                                        \
        return step.Take(digit, accumulator);                                                                \
    }

#define NX_LAST(format, position, step, unit)                                                                \
    bool nxFraction##format##TickPriceConverter::_Parse##position##Digit(                                    \
        unsigned short& digit, unsigned short& accumulator, double& value)                                   \
    {                                                                                                        \
        return step.Take(digit, accumulator) && Add(value, accumulator * double(unit));                      \
    }

#define NX_LAST_OR_NONE(format, step, unit, scale, otherUnit)                                                \
    bool nxFraction##format##TickPriceConverter::_ParseThirdDigit(                                           \
        unsigned short& digit, unsigned short& accumulator, double& value)                                   \
    {                                                                                                        \
        _thirdPositionSeen = step.Take(digit, accumulator) && Add(value, accumulator * double(unit));        \
        return _thirdPositionSeen;                                                                           \
    }                                                                                                        \
                                                                                                             \
    void nxFraction##format##TickPriceConverter::_ResetParse()                                               \
    {                                                                                                        \
        _thirdPositionSeen = false;                                                                          \
    }                                                                                                        \
                                                                                                             \
    void nxFraction##format##TickPriceConverter::_FinishParse(unsigned short& accumulator, double& value)    \
    {                                                                                                        \
        if (!_thirdPositionSeen)                                                                             \
        {                                                                                                    \
            accumulator = static_cast<unsigned short>(accumulator * scale);                                  \
            value += accumulator * double(otherUnit);                                                        \
        }                                                                                                    \
    }

#include "core/prices/tables/fractions.def"

bool nxFractionModifiedEighth32ndsAltTickPriceConverter::_ParseCharacter(char const* character,
                                                                         unsigned short& position,
                                                                         unsigned short& digit,
                                                                         bool& negative, bool& separatorFound)
{
    switch (*character)
    {
    case '+': digit = 4; return true;
    case ' ': digit = 0; return true;
    default:
        return nxFractionPriceConverter::_ParseCharacter(character, position, digit, negative,
                                                         separatorFound);
    }
}

unsigned char nxFractionSixteenth32ndsTickPriceConverter::GetMaxFractionDecimalPlaces() const
{
    return 9;
}
