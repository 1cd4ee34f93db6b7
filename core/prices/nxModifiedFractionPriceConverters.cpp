#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarter100thsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarter32ndsTickPriceConverter.h"
#include "core/prices/nxFractionText.h"

// The formats whose third position may be left out; the parts of the first two are then added at the end.

nxFractionModifiedHalf32ndsTickPriceConverter::nxFractionModifiedHalf32ndsTickPriceConverter()
    : nxModifiedFractionPriceConverter(32, 64, '-'), _thirdPositionSeen(false)
{
}

std::string const& nxFractionModifiedHalf32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(_separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, " +");
    }
    return _text;
}

bool nxFractionModifiedHalf32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2 || length == 3;
}

bool nxFractionModifiedHalf32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                     unsigned short& accumulator,
                                                                     double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionModifiedHalf32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                      unsigned short& accumulator,
                                                                      double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 2, accumulator);
}

bool nxFractionModifiedHalf32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                     unsigned short& accumulator,
                                                                     double& value)
{
    _thirdPositionSeen =
        nxFractionDigits::TakeEntry(digit, "05", 1, accumulator) && _AddTicks(accumulator, value);
    return _thirdPositionSeen;
}

void nxFractionModifiedHalf32ndsTickPriceConverter::_ResetParse()
{
    _thirdPositionSeen = false;
}

void nxFractionModifiedHalf32ndsTickPriceConverter::_FinishParse(unsigned short& accumulator, double& value)
{
    if (!_thirdPositionSeen)
    {
        (void)_AddTicks(accumulator, value);
    }
}

nxFractionModifiedQuarter32ndsTickPriceConverter::nxFractionModifiedQuarter32ndsTickPriceConverter()
    : nxModifiedFractionPriceConverter(32, 128, '-'), _thirdPositionSeen(false)
{
}

std::string const& nxFractionModifiedQuarter32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(_separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, " 2+6");
    }
    return _text;
}

bool nxFractionModifiedQuarter32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2 || length == 3;
}

bool nxFractionModifiedQuarter32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                        unsigned short& accumulator,
                                                                        double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFractionModifiedQuarter32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                         unsigned short& accumulator,
                                                                         double& /*value*/)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 4, accumulator);
}

bool nxFractionModifiedQuarter32ndsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                        unsigned short& accumulator,
                                                                        double& value)
{
    _thirdPositionSeen =
        nxFractionDigits::TakeEntry(digit, "0256", 1, accumulator) && _AddTicks(accumulator, value);
    return _thirdPositionSeen;
}

void nxFractionModifiedQuarter32ndsTickPriceConverter::_ResetParse()
{
    _thirdPositionSeen = false;
}

void nxFractionModifiedQuarter32ndsTickPriceConverter::_FinishParse(unsigned short& accumulator,
                                                                    double& value)
{
    if (!_thirdPositionSeen)
    {
        (void)_AddTicks(accumulator, value);
    }
}

nxFractionModifiedQuarter100thsTickPriceConverter::nxFractionModifiedQuarter100thsTickPriceConverter()
    : nxModifiedFractionPriceConverter(100, 400, '.'), _thirdPositionSeen(false)
{
}

std::string const& nxFractionModifiedQuarter100thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(_separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
        nxFractionText::AppendEntryOrLast(_text, fraction.second, " 2+6");
    }
    return _text;
}

bool nxFractionModifiedQuarter100thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2 || length == 3;
}

bool nxFractionModifiedQuarter100thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                         unsigned short& accumulator,
                                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 10, accumulator);
}

bool nxFractionModifiedQuarter100thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                          unsigned short& accumulator,
                                                                          double& /*value*/)
{
    nxFractionDigits::Accumulate(accumulator, accumulator * 10 + digit);
    return true;
}

bool nxFractionModifiedQuarter100thsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                                         unsigned short& accumulator,
                                                                         double& value)
{
    nxFractionDigits::Accumulate(accumulator, accumulator * 100);
    _thirdPositionSeen = nxFractionDigits::TakeEntry(digit, "0256", 25, accumulator);
    if (_thirdPositionSeen)
    {
        value += accumulator * 0.0001; // four decimals, of which the tick is 25
    }
    return _thirdPositionSeen;
}

void nxFractionModifiedQuarter100thsTickPriceConverter::_ResetParse()
{
    _thirdPositionSeen = false;
}

void nxFractionModifiedQuarter100thsTickPriceConverter::_FinishParse(unsigned short& accumulator,
                                                                     double& value)
{
    if (!_thirdPositionSeen)
    {
        // Ten times the factor of the third position: two digits alone read ten times too large, "5.25" as 7.5.
        nxFractionDigits::Accumulate(accumulator, accumulator * 100);
        value += accumulator * 0.001;
    }
}
