// nxDecimal against a model that does each operation step by step: integers of 128 bits where it is exact,
// and the C library's floor and ceil where it goes through doubles.

#include "fuzz/FuzzInput.h"

#include "core/numbers/nxDecimal.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"

namespace
{
constexpr long long smallest = std::numeric_limits<long long>::min();
constexpr long long largest = std::numeric_limits<long long>::max();

long long Wrap(FuzzWide value)
{
    return static_cast<long long>(value);
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
        return static_cast<double>(value) / static_cast<double>(FuzzPowerOfTen(places));
    }

    static Model FromDouble(double number, unsigned char places)
    {
        long long const whole = ToInteger(number);
        double const scaled =
            (number - static_cast<double>(whole)) * static_cast<double>(FuzzPowerOfTen(places));
        double const below = std::floor(scaled);
        long long const rounded = ToInteger(scaled - below >= 0.5 ? std::ceil(scaled) : below);
        return {NX_VALID, Wrap(FuzzWide{whole} * FuzzPowerOfTen(places) + rounded), places};
    }

    Model Combine(char operation, Model const& right) const
    {
        auto const apply = [operation](auto a, auto b) {
            return operation == '+' ? a + b : operation == '-' ? a - b : operation == '*' ? a * b : a / b;
        };
        unsigned char const most = std::max(places, right.places);
        if (!IsValid() || !right.IsValid())
            return *this;
        if (operation == '*' ? most == 0 : operation != '/' && places == right.places)
            return {NX_VALID, Wrap(apply(FuzzWide{value}, FuzzWide{right.value})), most};
        return FromDouble(apply(AsDouble(), right.AsDouble()), most);
    }

    /// What is not valid comes first, by its number; nearly the same is the same, if the places differ.
    std::strong_ordering operator<=>(Model const& right) const
    {
        if (!IsValid() || !right.IsValid())
            return (IsValid() ? ~0u : status) <=> (right.IsValid() ? ~0u : right.status);
        if (places == right.places)
            return value <=> right.value;
        bool const isNear = std::fabs(AsDouble() - right.AsDouble()) <= 2.220446049250313e-16;
        return isNear ? 0 <=> 0 : AsDouble() < right.AsDouble() ? 0 <=> 1 : 1 <=> 0;
    }

    void Negate()
    {
        value = Wrap(-FuzzWide{value});
    }

    void SetPlaces(unsigned char wanted, bool onlyDropZeros)
    {
        for (; IsValid() && places < wanted; ++places)
            value = Wrap(FuzzWide{value} * 10);
        for (; places > wanted && (!onlyDropZeros || value % 10 == 0); --places)
            value /= 10;
    }

    /// Digits with as many zeros in front as there are places; only for powers that don't wrap.
    std::string Text(unsigned int shown, char separator) const
    {
        std::string digits = std::to_string(value).substr(value < 0 ? 1 : 0);
        if (digits.size() <= places)
            digits.insert(0, places + 1 - digits.size(), '0');
        std::string const whole = (value < 0 ? "-" : "") + digits.substr(0, digits.size() - places);
        std::string const decimals =
            digits.substr(digits.size() - places, std::min({shown, 12u, unsigned{places}}));
        return !IsValid() ? "" : decimals.empty() ? whole : whole + separator + decimals;
    }

    bool Parse(std::string const& text, char separator)
    {
        std::string digits = text.c_str();
        bool const isNegative = digits[0] == '-';
        if (digits[0] == '-' || digits[0] == '+')
            digits.erase(0, 1);
        std::size_t const point = std::min(digits.find(separator), digits.size());
        digits.erase(point, 1);
        if (digits.empty() || !FuzzIsDigits(digits) || digits.find(separator) != std::string::npos)
            return false;
        *this = {NX_VALID, static_cast<long long>(FuzzNumber(digits)),
                 static_cast<unsigned char>(digits.size() - point)};
        if (isNegative)
            Negate();
        return true;
    }
};

void CheckSame(nxDecimal const& decimal, Model const& model)
{
    FUZZ_EQUAL(decimal.GetStatus().GetValue(), static_cast<unsigned int>(model.status));
    FUZZ_EQUAL(decimal.GetValue(), model.value);
    FUZZ_EQUAL(decimal.GetDecimalPlaces(), model.places);
    FuzzWide const power = FuzzPowerOfTen(model.places);
    auto const magnitude =
        static_cast<unsigned long long>(std::max(FuzzWide{model.value}, -FuzzWide{model.value}));
    FUZZ_EQUAL(decimal.GetIntegerPart(), power == 0 ? 0 : Wrap(model.value / power));
    FUZZ_EQUAL(decimal.GetFractionalPart(),
               power == 0 ? magnitude : static_cast<unsigned long long>(magnitude % power));
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
    nxDecimal back;
    if (separator != '\0' && !FuzzIsDigits({separator}))
        FUZZ_CHECK(back.SetFromString(text, separator).IsOK()), CheckSame(back, model);
}

void CheckOrder(nxDecimal const& a, nxDecimal const& b, Model const& left, Model const& right)
{
    auto const order = left <=> right;
    FUZZ_CHECK((a == b) == (order == 0) && (a != b) == (order != 0));
    FUZZ_CHECK((a < b) == (order < 0) && (a <= b) == (order <= 0));
    FUZZ_CHECK((a > b) == (order > 0) && (a >= b) == (order >= 0));
    Model const& valid = left.IsValid() ? left : right;
    bool const both = left.IsValid() && right.IsValid();
    CheckSame(nxDecimal::GetMin(a, b), !both ? valid : right < left ? right : left);
    CheckSame(nxDecimal::GetMax(a, b), !both ? valid : order < 0 ? right : left);
}

/// One operation on `a`, with `b` as the other operand.
void Step(FuzzInput& input, nxDecimal& a, nxDecimal const& b, Model& left, Model const& right)
{
    unsigned int const operation = input.Below(15);
    auto const places = input.Take<unsigned char>();
    char const separator = places < 128 ? '.' : static_cast<char>(places);
    double const real = operation == 7 ? input.Take<double>() : 0;
    long long const whole = operation == 8 ? input.Take<long long>() : 0;
    std::string const text = operation == 9 ? input.Text() : "";
    switch (operation)
    {
    case 0: a += b, left = left.Combine('+', right); break;
    case 1: a = a - b, left = left.Combine('-', right); break;
    case 2: a *= b, left = left.Combine('*', right); break;
    case 3: a = a / b, left = left.Combine('/', right); break;
    case 4: // tests have the values; all that rounds gets the places of the step
        a.Round(b, nxRoundingMethodEnum(static_cast<nxEnumValue>(NX_ROUNDING_METHOD_DOWN + places % 5)));
        if (left.IsValid() && right.IsValid() && right.value != 0)
            left = {NX_VALID, a.GetValue(), right.places};
        break;
    case 5: a.SetDecimalPlaces(places, false), left.SetPlaces(places, false); break;
    case 6: a.SetDecimalPlaces(places, true), left.SetPlaces(places, true); break;
    case 7: a.SetFromDouble(real, places), left = Model::FromDouble(real, places); break;
    case 8:
        a.SetFromEncodedValues(whole, places), left = {NX_VALID, whole, places};
        if (whole >= largest - 1)
            left = {whole == largest ? NX_NULL : NX_NOCHANGE, 0, 0};
        break;
    case 9: FUZZ_EQUAL(a.SetFromString(text, separator).IsOK(), left.Parse(text, separator)); break;
    case 10: a.InvertSign(), left.Negate(); break;
    case 11: a.Abs(), left.value < 0 ? left.Negate() : void(); break;
    case 12: a.Normalise(places), left.places > places ? left.SetPlaces(places, true) : void(); break;
    case 13: CheckOrder(a, b, left, right); break;
    default: CheckText(a, left, places, separator);
    }
    CheckSame(a, left);
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    nxDecimal decimals[2];
    Model models[2];
    while (input.HasStep())
    {
        unsigned int const which = input.Below(2);
        Step(input, decimals[which], decimals[1 - which], models[which], models[1 - which]);
    }
}
