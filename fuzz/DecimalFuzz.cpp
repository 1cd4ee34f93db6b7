// nxDecimal against a model that does each operation step by step: integers of 128 bits where it is exact, and the
// C library's floor and ceil where it goes through doubles.

#include "fuzz/FuzzInput.h"

#include "core/numbers/nxDecimal.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"

#include <cmath>
#include <limits>

namespace
{
__extension__ typedef __int128 Wide;

constexpr long long smallest = std::numeric_limits<long long>::min();

long long Wrap(Wide value)
{
    return static_cast<long long>(static_cast<unsigned long long>(value));
}

unsigned long long PowerOfTen(unsigned int places)
{
    unsigned long long power = 1;
    for (; places != 0; --places)
        power *= 10;
    return power;
}

long long ToInteger(double value)
{
    return value >= -0x1p63 && value < 0x1p63 ? static_cast<long long>(value) : smallest;
}

struct Model
{
    nxEnumValue status = NX_VALID;
    long long value = 0;
    unsigned char places = 0;

    bool IsValid() const
    {
        return status == NX_VALID;
    }

    double AsDouble() const
    {
        return IsValid() ? static_cast<double>(value) / static_cast<double>(PowerOfTen(places)) : 0.0;
    }

    static Model FromDouble(double number, unsigned char places)
    {
        long long const whole = ToInteger(number);
        double const scaled = (number - static_cast<double>(whole)) * static_cast<double>(PowerOfTen(places));
        double rounded = std::floor(scaled);
        if (scaled - rounded >= 0.5)
            rounded = std::ceil(scaled);
        return {NX_VALID, Wrap(Wide{ToInteger(rounded)} + Wrap(Wide{whole} * Wide{PowerOfTen(places)})),
                places};
    }

    /// The sign is that of the operation: +, -, * or /.
    Model Combine(char sign, Model const& right) const
    {
        if (!IsValid() || !right.IsValid())
            return *this;
        Wide const left = value;
        unsigned char const most = std::max(places, right.places);
        switch (sign)
        {
        case '+':
            return places == right.places ? Model{NX_VALID, Wrap(left + right.value), places}
                                          : FromDouble(AsDouble() + right.AsDouble(), most);
        case '-':
            return places == right.places ? Model{NX_VALID, Wrap(left - right.value), places}
                                          : FromDouble(AsDouble() - right.AsDouble(), most);
        case '*':
            return most == 0 ? Model{NX_VALID, Wrap(left * right.value), 0}
                             : FromDouble(AsDouble() * right.AsDouble(), most);
        default: return FromDouble(AsDouble() / right.AsDouble(), most);
        }
    }

    bool Equals(Model const& right) const
    {
        if (!IsValid() || !right.IsValid())
            return status == right.status;
        if (places == right.places)
            return value == right.value;
        return std::fabs(AsDouble() - right.AsDouble()) <= 2.220446049250313e-16;
    }

    bool IsLess(Model const& right) const
    {
        if (!IsValid())
            return right.IsValid() || status < right.status;
        if (!right.IsValid())
            return false;
        return places == right.places ? value < right.value : !Equals(right) && AsDouble() < right.AsDouble();
    }

    long long IntegerPart() const
    {
        unsigned long long const power = PowerOfTen(places);
        return power == 0 ? 0 : Wrap(Wide{value} / Wide{power});
    }

    void Round(Model const& step, nxEnumValue method)
    {
        if (!IsValid() || !step.IsValid() || step.value == 0)
            return;
        bool const negative = value < 0;
        Model number = *this;
        if (negative)
        {
            number.value = Wrap(-Wide{value});
            if (method == NX_ROUNDING_METHOD_DOWN || method == NX_ROUNDING_METHOD_UP)
                method = method == NX_ROUNDING_METHOD_DOWN ? NX_ROUNDING_METHOD_UP : NX_ROUNDING_METHOD_DOWN;
        }
        bool const inIntegers = places == 0 && step.places == 0;
        long long const quotient =
            inIntegers ? Wrap(Wide{number.value} / step.value) : number.Combine('/', step).IntegerPart();
        Model const base = Model{NX_VALID, quotient, 0}.Combine('*', step);
        Model const next = base.Combine('+', step);
        Model const rest = number.Combine('-', base);
        auto const placesOfHalf = static_cast<unsigned char>(step.places + 1);
        Model const two = {NX_VALID, Wrap(2 * Wide{PowerOfTen(placesOfHalf)}), placesOfHalf};
        Model const half = step.Combine('/', two);
        bool stays = false;
        switch (method)
        {
        case NX_ROUNDING_METHOD_DOWN: stays = true; break;
        case NX_ROUNDING_METHOD_UP: stays = rest.Equals(Model()); break;
        case NX_ROUNDING_METHOD_MODIFIED_NEAREST: stays = rest.IsLess(half) || rest.Equals(half); break;
        default: stays = rest.IsLess(half);
        }
        *this = stays ? base : next;
        if (negative)
            value = Wrap(-Wide{value});
    }

    void SetPlaces(unsigned char wanted, bool onlyDropZeros)
    {
        for (; IsValid() && places < wanted; ++places)
            value = Wrap(Wide{value} * 10);
        for (; places > wanted && (!onlyDropZeros || value % 10 == 0); --places)
            value /= 10;
    }

    /// Digits with as many zeros in front as there are places; only for powers that don't wrap.
    std::string Text(unsigned int shown, char separator) const
    {
        if (!IsValid())
            return "";
        Wide const magnitude = value < 0 ? -Wide{value} : Wide{value};
        std::string digits = std::to_string(static_cast<unsigned long long>(magnitude));
        if (digits.size() <= places)
            digits.insert(0, places + 1 - digits.size(), '0');
        std::string const decimals = digits.substr(digits.size() - places).substr(0, std::min(shown, 12u));
        return (value < 0 ? "-" : "") + digits.substr(0, digits.size() - places) +
               (decimals.empty() ? "" : separator + decimals);
    }

    bool Parse(std::string const& text, char separator)
    {
        std::string digits = text.c_str();
        bool const negative = !digits.empty() && digits[0] == '-';
        if (!digits.empty() && (digits[0] == '-' || digits[0] == '+'))
            digits.erase(0, 1);
        std::size_t const point = digits.find(separator);
        std::size_t const decimals = point == std::string::npos ? 0 : digits.size() - point - 1;
        if (point != std::string::npos)
            digits.erase(point, 1);
        if (digits.empty() || digits.find(separator) != std::string::npos ||
            digits.find_first_not_of("0123456789") != std::string::npos)
            return false;
        long long number = 0;
        for (char const digit : digits)
            number = Wrap(Wide{number} * 10 + (digit - '0'));
        *this = {NX_VALID, negative ? Wrap(-Wide{number}) : number, static_cast<unsigned char>(decimals)};
        return true;
    }
};

void CheckSame(nxDecimal const& decimal, Model const& model)
{
    FUZZ_EQUAL(decimal.GetStatus().GetValue(), static_cast<unsigned int>(model.status));
    FUZZ_EQUAL(decimal.GetValue(), model.value);
    FUZZ_EQUAL(decimal.GetDecimalPlaces(), model.places);
}

void CheckText(nxDecimal const& decimal, Model const& model, unsigned char shown, char separator)
{
    char buffer[nxDecimal::maximumTextSize];
    decimal.GetAsString(buffer, separator);
    std::string const text = decimal.GetAsString(separator);
    FUZZ_EQUAL(std::string(buffer), std::string(text.c_str()));
    std::string const trimmed = decimal.GetAsTrimmedString(shown, separator);
    nxOStream<nxSimpleAsciiStringWriter> stream;
    decimal.Write(stream, separator);
    if (model.places > 19) // powers wrap: texts mean nothing
        return;
    FUZZ_EQUAL(text, model.Text(model.places, separator));
    FUZZ_EQUAL(trimmed, model.Text(shown, separator));
    if (model.places > 12 || !model.IsValid())
        return;
    FUZZ_EQUAL(stream.GetAsString(), text);
    if (separator == '\0' || (separator >= '0' && separator <= '9'))
        return;
    nxDecimal back;
    FUZZ_CHECK(back.SetFromString(text, separator).IsOK());
    CheckSame(back, model);
}

void CheckOrder(nxDecimal const& a, nxDecimal const& b, Model const& left, Model const& right)
{
    bool const equal = left.Equals(right);
    bool const less = left.IsLess(right);
    FUZZ_EQUAL(a == b, equal);
    FUZZ_EQUAL(a != b, !equal);
    FUZZ_EQUAL(a < b, less);
    FUZZ_EQUAL(a <= b, equal || less);
    FUZZ_EQUAL(a > b, !equal && !less);
    FUZZ_EQUAL(a >= b, !less);
    bool const both = left.IsValid() && right.IsValid();
    CheckSame(nxDecimal::GetMin(a, b), both             ? (right.IsLess(left) ? right : left)
                                       : left.IsValid() ? left
                                                        : right);
    CheckSame(nxDecimal::GetMax(a, b), both             ? (left.IsLess(right) ? right : left)
                                       : left.IsValid() ? left
                                                        : right);
}

/// One operation on `a`, with `b` as the other operand.
void Step(FuzzInput& input, nxDecimal& a, nxDecimal const& b, Model& left, Model const& right)
{
    switch (input.Below(14))
    {
    case 0: a += b, left = left.Combine('+', right); break;
    case 1: a -= b, left = left.Combine('-', right); break;
    case 2: a *= b, left = left.Combine('*', right); break;
    case 3: a /= b, left = left.Combine('/', right); break;
    case 4:
    {
        auto const method = static_cast<nxEnumValue>(NX_ROUNDING_METHOD_DOWN + input.Below(5));
        a.Round(b, nxRoundingMethodEnum(method));
        left.Round(right, method);
        break;
    }
    case 5:
    {
        auto const places = input.Take<unsigned char>();
        bool const onlyDropZeros = input.Truth();
        a.SetDecimalPlaces(places, onlyDropZeros);
        left.SetPlaces(places, onlyDropZeros);
        break;
    }
    case 6:
    {
        auto const number = input.Take<double>();
        auto const places = input.Take<unsigned char>();
        a.SetFromDouble(number, places);
        left = Model::FromDouble(number, places);
        break;
    }
    case 7:
    {
        auto const number = input.Take<long long>();
        auto const places = input.Take<unsigned char>();
        a.SetFromEncodedValues(number, places);
        if (number >= std::numeric_limits<long long>::max() - 1)
            left = {number == std::numeric_limits<long long>::max() ? NX_NULL : NX_NOCHANGE, 0, 0};
        else
            left = {NX_VALID, number, places};
        break;
    }
    case 8:
    {
        std::string const text = input.Text();
        char const separator = input.Truth() ? '.' : input.Take<char>();
        FUZZ_EQUAL(a.SetFromString(text, separator).IsOK(), left.Parse(text, separator));
        break;
    }
    case 9: a.InvertSign(), left.value = Wrap(-Wide{left.value}); break;
    case 10: a.Abs(), left.value = left.value < 0 ? Wrap(-Wide{left.value}) : left.value; break;
    case 11:
    {
        auto const places = input.Take<unsigned char>();
        a.Normalise(places);
        while (left.places > places && left.value % 10 == 0)
            left.value /= 10, --left.places;
        break;
    }
    case 12: CheckText(a, left, input.Take<unsigned char>(), input.Take<char>()); break;
    default: CheckOrder(a, b, left, right);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    nxDecimal decimals[2];
    Model models[2];
    while (!input.IsEmpty())
    {
        unsigned int const which = input.Below(2);
        Step(input, decimals[which], decimals[1 - which], models[which], models[1 - which]);
        CheckSame(decimals[which], models[which]);
        FUZZ_EQUAL(decimals[which].GetIntegerPart(), models[which].IntegerPart());
    }
    return 0;
}
