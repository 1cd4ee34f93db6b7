#include "core/prices/nxFraction100thsTickPriceConverter.h"
#include "core/prices/nxFraction10thsTickPriceConverter.h"
#include "core/prices/nxFraction12thsTickPriceConverter.h"
#include "core/prices/nxFraction16thsTickPriceConverter.h"
#include "core/prices/nxFraction20thsTickPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFraction64thsTickPriceConverter.h"
#include "core/prices/nxFraction8thsTickPriceConverter.h"
#include "core/prices/nxFractionFive1000thsTickPriceConverter.h"
#include "core/prices/nxFractionHalfTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarterTickPriceConverter.h"
#include "core/prices/nxFractionQuarterTickPriceConverter.h"
#include "core/prices/nxFractionText.h"

// The fraction formats with one level of parts, together because their differences are what matters: which digits stand
// behind the separator, and which of them are refused.

namespace
{
constexpr char separator = '-';
}

nxFractionHalfTickPriceConverter::nxFractionHalfTickPriceConverter() : nxFractionPriceConverter(2, 0)
{
}

std::string const& nxFractionHalfTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendEntryOrLast(_text, fraction.first, "05");
    }
    return _text;
}

bool nxFractionHalfTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 1;
}

bool nxFractionHalfTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                        double& value)
{
    return nxFractionDigits::TakeEntry(digit, "05", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionQuarterTickPriceConverter::nxFractionQuarterTickPriceConverter() : nxFractionPriceConverter(4, 0)
{
}

std::string const& nxFractionQuarterTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendEntryOrLast(_text, fraction.first, "0246");
    }
    return _text;
}

bool nxFractionQuarterTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 1;
}

bool nxFractionQuarterTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                           double& value)
{
    return nxFractionDigits::TakeEntry(digit, "0246", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFractionModifiedQuarterTickPriceConverter::nxFractionModifiedQuarterTickPriceConverter()
    : nxFractionPriceConverter(4, 0)
{
}

std::string const& nxFractionModifiedQuarterTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendEntryOrLast(_text, fraction.first, "0257");
    }
    return _text;
}

bool nxFractionModifiedQuarterTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 1;
}

bool nxFractionModifiedQuarterTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                                   unsigned short& accumulator, double& value)
{
    return nxFractionDigits::TakeEntry(digit, "0257", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction8thsTickPriceConverter::nxFraction8thsTickPriceConverter() : nxFractionPriceConverter(8, 0)
{
}

std::string const& nxFraction8thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first);
    }
    return _text;
}

bool nxFraction8thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 1;
}

bool nxFraction8thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                        double& value)
{
    return nxFractionDigits::TakeEntry(digit, "01234567", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction10thsTickPriceConverter::nxFraction10thsTickPriceConverter() : nxFractionPriceConverter(10, 0)
{
}

std::string const& nxFraction10thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first);
    }
    return _text;
}

bool nxFraction10thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 1;
}

bool nxFraction10thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& value)
{
    return nxFractionDigits::TakeEntry(digit, "0123456789", 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction12thsTickPriceConverter::nxFraction12thsTickPriceConverter() : nxFractionPriceConverter(12, 0)
{
}

std::string const& nxFraction12thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
    }
    return _text;
}

bool nxFraction12thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction12thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 2, accumulator);
}

bool nxFraction12thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& value)
{
    return nxFractionDigits::TakeSecond(digit, 3, 1, 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction16thsTickPriceConverter::nxFraction16thsTickPriceConverter() : nxFractionPriceConverter(16, 0)
{
}

std::string const& nxFraction16thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
    }
    return _text;
}

bool nxFraction16thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction16thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 2, accumulator);
}

bool nxFraction16thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& value)
{
    return nxFractionDigits::TakeSecond(digit, 6, 1, 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction20thsTickPriceConverter::nxFraction20thsTickPriceConverter() : nxFractionPriceConverter(20, 0)
{
}

std::string const& nxFraction20thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first * 5, 2);
    }
    return _text;
}

bool nxFraction20thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction20thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 10, accumulator);
}

bool nxFraction20thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& value)
{
    if (digit != 0 && digit != 5)
    {
        return false;
    }
    nxFractionDigits::Accumulate(accumulator, accumulator * 10 + digit);
    value += accumulator * 0.01; // two decimals, of which the tick is five hundredths
    return true;
}

nxFraction32ndsTickPriceConverter::nxFraction32ndsTickPriceConverter() : nxFractionPriceConverter(32, 0)
{
}

std::string const& nxFraction32ndsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
    }
    return _text;
}

bool nxFraction32ndsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction32ndsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 4, accumulator);
}

bool nxFraction32ndsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& value)
{
    return nxFractionDigits::TakeSecond(digit, 2, 3, 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction64thsTickPriceConverter::nxFraction64thsTickPriceConverter() : nxFractionPriceConverter(64, 0)
{
}

std::string const& nxFraction64thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
    }
    return _text;
}

bool nxFraction64thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction64thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                         double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 7, accumulator);
}

bool nxFraction64thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& value)
{
    return nxFractionDigits::TakeSecond(digit, 4, 6, 1, accumulator) && _AddTicks(accumulator, value);
}

nxFraction100thsTickPriceConverter::nxFraction100thsTickPriceConverter() : nxFractionPriceConverter(100, 0)
{
}

std::string const& nxFraction100thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first, 2);
    }
    return _text;
}

bool nxFraction100thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 2;
}

bool nxFraction100thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit, unsigned short& accumulator,
                                                          double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 10, accumulator);
}

bool nxFraction100thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit, unsigned short& accumulator,
                                                           double& value)
{
    nxFractionDigits::Accumulate(accumulator, accumulator * 10 + digit);
    return _AddTicks(accumulator, value);
}

nxFractionFive1000thsTickPriceConverter::nxFractionFive1000thsTickPriceConverter()
    : nxFractionPriceConverter(200, 0)
{
}

std::string const& nxFractionFive1000thsTickPriceConverter::GetPriceAsString()
{
    _Fraction fraction;
    if (_BeginFractionText(separator, fraction))
    {
        nxFractionText::AppendNumber(_text, fraction.first * 5, 3);
    }
    return _text;
}

bool nxFractionFive1000thsTickPriceConverter::_IsValidFractionLength(unsigned short length)
{
    return length == 3;
}

bool nxFractionFive1000thsTickPriceConverter::_ParseFirstDigit(unsigned short& digit,
                                                               unsigned short& accumulator, double& /*value*/)
{
    return nxFractionDigits::TakeFirst(digit, 10, accumulator);
}

bool nxFractionFive1000thsTickPriceConverter::_ParseSecondDigit(unsigned short& digit,
                                                                unsigned short& accumulator,
                                                                double& /*value*/)
{
    nxFractionDigits::Accumulate(accumulator, accumulator * 10 + digit);
    return true;
}

bool nxFractionFive1000thsTickPriceConverter::_ParseThirdDigit(unsigned short& digit,
                                                               unsigned short& accumulator, double& value)
{
    if (digit != 0 && digit != 5)
    {
        return false;
    }
    nxFractionDigits::Accumulate(accumulator, accumulator * 10 + digit);
    value += accumulator * 0.001; // three decimals, of which the tick is five thousandths
    return true;
}
