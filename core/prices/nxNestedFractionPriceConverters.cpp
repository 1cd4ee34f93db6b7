#include "core/prices/nxFraction40thsTickPriceConverter.h"
#include "core/prices/nxFractionEighth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionHalf64thsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedEighth32ndsAltTickPriceConverter.h"
#include "core/prices/nxFractionModifiedEighth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionQuarter32ndsTickPriceConverter.h"
#include "core/prices/nxFractionSixteenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionTenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionText.h"

// The fraction formats with parts of parts, together because their differences are what matters: which digits stand
// behind the separator, and which of them are refused.

namespace
{
constexpr char separator = '-';
}

nxFraction40thsTickPriceConverter::nxFraction40thsTickPriceConverter() : nxFractionPriceConverter(10, 40)
{
}

std::string const& nxFraction40thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, "0257");
    }
    return _text;
}

bool nxFraction40thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction40thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 10, accumulator);
}

bool nxFraction40thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& value)
{
    nxFractionDigits::Accumulate(accumulator, accumulator * 4);
    return nxFractionDigits::TakeEntry(digit, "0257", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionHalf32ndsTickPriceConverter::nxFractionHalf32ndsTickPriceConverter()
    : nxFractionPriceConverter(32, 64)
{
}

std::string const& nxFractionHalf32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, "05");
    }
    return _text;
}

bool nxFractionHalf32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionHalf32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                             unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionHalf32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                              unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 2, accumulator);
}

bool nxFractionHalf32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                             unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "05", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionQuarter32ndsTickPriceConverter::nxFractionQuarter32ndsTickPriceConverter()
    : nxFractionPriceConverter(32, 128)
{
}

std::string const& nxFractionQuarter32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, "0257");
    }
    return _text;
}

bool nxFractionQuarter32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionQuarter32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                unsigned short& accumulator,
                                                                double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionQuarter32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                 unsigned short& accumulator,
                                                                 double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 4, accumulator);
}

bool nxFractionQuarter32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "0257", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionEighth32ndsTickPriceConverter::nxFractionEighth32ndsTickPriceConverter()
    : nxFractionPriceConverter(32, 256)
{
}

std::string const& nxFractionEighth32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrNothing(_text, fraction.second, "01234567");
    }
    return _text;
}

bool nxFractionEighth32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionEighth32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                               unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionEighth32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                unsigned short& accumulator,
                                                                double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 8, accumulator);
}

bool nxFractionEighth32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                               unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "01234567", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionModifiedEighth32ndsTickPriceConverter::nxFractionModifiedEighth32ndsTickPriceConverter()
    : nxFractionPriceConverter(32, 256)
{
}

std::string const& nxFractionModifiedEighth32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrNothing(_text, fraction.second, "01235678");
    }
    return _text;
}

bool nxFractionModifiedEighth32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionModifiedEighth32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                       unsigned short& accumulator,
                                                                       double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionModifiedEighth32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                        unsigned short& accumulator,
                                                                        double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 7, 8, accumulator);
}

bool nxFractionModifiedEighth32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                       unsigned short& accumulator,
                                                                       double& value)
{
    return nxFractionDigits::TakeEntry(digit, "01235678", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionModifiedEighth32ndsAltTickPriceConverter::nxFractionModifiedEighth32ndsAltTickPriceConverter()
    : nxFractionPriceConverter(32, 256), _thirdPositionSeen(false)
{
}

std::string const& nxFractionModifiedEighth32ndsAltTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrNothing(_text, fraction.second, " 123+567");
    }
    return _text;
}

bool nxFractionModifiedEighth32ndsAltTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2 || length == 3;
}

bool nxFractionModifiedEighth32ndsAltTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                          unsigned short& accumulator,
                                                                          double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionModifiedEighth32ndsAltTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                           unsigned short& accumulator,
                                                                           double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 8, accumulator);
}

bool nxFractionModifiedEighth32ndsAltTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                          unsigned short& accumulator,
                                                                          double& value)
{
    _thirdPositionSeen =
        nxFractionDigits::TakeEntry(digit, "01234567", 1, accumulator) && _AddTicks(accumulator, value);
    return _thirdPositionSeen;
}

void nxFractionModifiedEighth32ndsAltTickPriceConverter::_ResetParse()
{
    _thirdPositionSeen = false;
}

void nxFractionModifiedEighth32ndsAltTickPriceConverter::_FinishParse(unsigned short& accumulator,
                                                                      double& value)
{
    if (!_thirdPositionSeen)
    {
        (void)_AddTicks(accumulator, value);
    }
}

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

nxFractionSixteenth32ndsTickPriceConverter::nxFractionSixteenth32ndsTickPriceConverter()
    : nxFractionPriceConverter(32, 512)
{
}

std::string const& nxFractionSixteenth32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendNumber(_text, fraction.second, 2);
    }
    return _text;
}

unsigned char nxFractionSixteenth32ndsTickPriceConverter::GetMaxFractionDecimalPlaces() const
{
    return 9;
}

bool nxFractionSixteenth32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 4;
}

bool nxFractionSixteenth32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                  unsigned short& accumulator,
                                                                  double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionSixteenth32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                   unsigned short& accumulator,
                                                                   double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 16, accumulator);
}

bool nxFractionSixteenth32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                  unsigned short& accumulator,
                                                                  double& /*value*/)
{
    return nxFractionDigits::TakeEntry(digit, "01", 10, accumulator);
}

bool nxFractionSixteenth32ndsTickPriceConverter::_ParseFourthDigit(unsigned short& digit,
                                                                   unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "0123456789", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionTenth32ndsTickPriceConverter::nxFractionTenth32ndsTickPriceConverter()
    : nxFractionPriceConverter(32, 320)
{
}

std::string const& nxFractionTenth32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, "0123456789");
    }
    return _text;
}

bool nxFractionTenth32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionTenth32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                              unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionTenth32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                               unsigned short& accumulator, double& /*value*/)
{
    int const parts = accumulator * 10 + digit;
    if (parts > 31)
    {
        return false;
    }
    nxFractionDigits::Accumulate(accumulator, parts * 10);
    return true;
}

bool nxFractionTenth32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                              unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "0123456789", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionHalf64thsTickPriceConverter::nxFractionHalf64thsTickPriceConverter()
    : nxFractionPriceConverter(64, 128)
{
}

std::string const& nxFractionHalf64thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrNothing(_text, fraction.second, "05");
    }
    return _text;
}

bool nxFractionHalf64thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionHalf64thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                             unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 7, accumulator);
}

bool nxFractionHalf64thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                              unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 4, 6, 2, accumulator);
}

bool nxFractionHalf64thsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                             unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "05", 1, accumulator) && _AddTicks(accumulator, value);
}
