#pragma once

#include <limits>
#include <string>

/// @file
/// The parser of fraction prices, for the converters' sources only.

/// Reads a text for one of the two fraction bases, which are asked what each character and each digit means. A
/// friend of both; each call has a parser of its own.
template <class Converter>
class nxFractionParser
{
public:
    explicit nxFractionParser(Converter& converter) : _converter(converter)
    {
    }

    /// @return as SetPriceFromString().
    bool SetPrice(std::string const& text)
    {
        _converter._ResetParse();
        if (text.empty() || !_converter._minimumTick.IsValid())
            return false;
        if (!_Read(text))
        {
            _converter._price.SetNull();
            return false;
        }
        _converter._FinishParse(_accumulator, _value);
        _converter._price = _negative ? -_value : _value;
        return true;
    }

private:
    /// Walks the text by its length, so that a zero byte is a character like any other.
    bool _Read(std::string const& text)
    {
        if (text.size() > std::numeric_limits<unsigned short>::max())
            return false;
        auto const length = static_cast<unsigned short>(text.size());
        bool separatorSeen = false;
        unsigned short separatorPosition = 0;
        for (unsigned short position = 0; position < length; ++position)
        {
            unsigned short digit = 0;
            bool separator = false;
            if (!_converter._ParseCharacter(&text[position], position, digit, _negative, separator))
                return false;
            if (separator)
            {
                auto const following = static_cast<unsigned short>(length - position - 1);
                if (separatorSeen || !_converter._IsValidFractionLength(following))
                    return false;
                separatorSeen = true;
                separatorPosition = position;
            }
            else if (!separatorSeen)
            {
                _value = _value * 10.0 + digit; // the sign in front counts as a digit 0
            }
            else if (!_TakeDigit(position - separatorPosition, digit))
            {
                return false;
            }
        }
        return true;
    }

    bool _TakeDigit(int distance, unsigned short digit)
    {
        switch (distance)
        {
        case 1: return _converter._ParseFirstDigit(digit, _accumulator, _value);
        case 2: return _converter._ParseSecondDigit(digit, _accumulator, _value);
        case 3: return _converter._ParseThirdDigit(digit, _accumulator, _value);
        case 4:
            if constexpr (requires { &Converter::_ParseFourthDigit; })
                return _converter._ParseFourthDigit(digit, _accumulator, _value);
            return false;
        default: return false;
        }
    }

    Converter& _converter;
    double _value = 0.0;
    unsigned short _accumulator = 0;
    bool _negative = false;
};
