// The texts of numbers against the C library and plain sums, and the text helpers against plain ones.

#include "fuzz/FuzzInput.h"

#include "core/text/nxStringHelper.h"

#include <strings.h>

namespace
{
/// Reads as the strict parsers do, in the width of the number.
template <class IntegerT>
void CheckInteger(std::string const& text)
{
    std::string digits = text.c_str();
    bool const isNegative = std::is_signed_v<IntegerT> && digits.starts_with('-');
    digits.erase(0, isNegative);
    bool const sound = !text.empty() && (!isNegative || !digits.empty()) && FuzzIsDigits(digits);
    auto const expected = static_cast<IntegerT>(!sound       ? 42
                                                : isNegative ? 0 - FuzzNumber(digits)
                                                             : FuzzNumber(digits));
    IntegerT value = 42;
    FUZZ_EQUAL(nxStringHelper::SetFromString(text, value).IsOK(), sound);
    FUZZ_EQUAL(value, expected);
    std::string appended = "x";
    nxStringHelper::AppendAsString(appended, value);
    FUZZ_EQUAL(nxStringHelper::GetAsString(value), std::to_string(expected));
    FUZZ_EQUAL(appended, 'x' + std::to_string(expected));
}

void CheckReal(std::string const& text, char separator)
{
    double value = 42;
    bool const taken = nxStringHelper::SetFromString(text, value, separator).IsOK();
    std::string digits = text.c_str();
    bool const isNegative = digits.starts_with('-');
    digits.erase(0, isNegative);
    std::size_t const point = std::min(digits.find(separator), digits.size());
    digits.erase(point, 1);
    FUZZ_EQUAL(taken, !digits.empty() && digits.find(separator) == std::string::npos && FuzzIsDigits(digits));
    double gathered = 0; // in doubles, digit by digit
    double divisor = 1;
    for (std::size_t i = 0; i < digits.size(); ++i)
    {
        gathered = gathered * 10.0 + (digits[i] - '0');
        divisor *= i >= point ? 10.0 : 1.0;
    }
    if (!taken)
        FUZZ_EQUAL(value, 42.0);
    else if (digits.size() < 300)
        FUZZ_EQUAL(value, (isNegative ? -gathered : gathered) / divisor);
}

void CheckRealText(double value, unsigned int precision)
{
    std::string const text = nxStringHelper::GetAsString(value, precision);
    std::string appended = "x";
    appended.reserve(100); // the short way of usual numbers wants room
    nxStringHelper::AppendAsString(appended, value, precision);
    FUZZ_EQUAL(appended, 'x' + text);
    FUZZ_CHECK(text.size() <= 24);
    if (std::fabs(value) > 2147483647.0)
        FUZZ_EQUAL(text, FUZZ_FORMAT("%e", value));
    unsigned int const places = precision > 0x7FFFFFFFu ? 0 : std::min(precision, 9u);
    double const scaled = std::fabs(value) * std::pow(10.0, places);
    bool const isNearTie = std::fabs(scaled - std::floor(scaled) - 0.5) <= 1e-3; // one rounding more decides
    if (!(std::fabs(value) <= 2147483647.0) || value == 0.0 || isNearTie)
        return;
    if (scaled < 1e12)
        FUZZ_EQUAL(text, FuzzFixed(value, places));
    double back = 0;
    FUZZ_CHECK(nxStringHelper::SetFromString(text, back).IsOK());
    FUZZ_CHECK(std::fabs(back - value) <= 0.5000001 * std::pow(0.1, places) + std::fabs(value) * 1e-15);
}

void CheckHandling(std::string const& text, std::string const& from, std::string const& to)
{
    std::string const right = nxStringHelper::GetRightTrimmed(text);
    FUZZ_EQUAL(nxStringHelper::GetLeftTrimmed(right), FuzzTrim(text));
    FUZZ_CHECK(text.starts_with(right) && text.ends_with(nxStringHelper::GetLeftTrimmed(text)));
    std::string expected;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        bool const found = !from.empty() && text.compare(i, from.size(), from) == 0;
        expected += found ? to : text.substr(i, 1);
        i += found ? from.size() - 1 : 0;
    }
    std::string replaced = text;
    nxStringHelper::Replace(replaced, from, to);
    FUZZ_EQUAL(replaced, expected);
}

void CheckComparison(std::string const& a, std::string const& b)
{
    int const order = strcasecmp(a.c_str(), b.c_str());
    FUZZ_EQUAL(nxStringHelper::Compare(a, b, NX_CASE_SENSITIVE), a == b);
    FUZZ_EQUAL(nxStringHelper::CompareAlphabetically(a, b, NX_CASE_SENSITIVE),
               std::clamp(std::strcmp(a.c_str(), b.c_str()), -1, 1));
    FUZZ_CHECK((nxStringHelper::CompareAlphabetically(a, b, NX_CASE_INSENSITIVE) <=> 0) == (order <=> 0));
    if ((a + b).find('\0') == std::string::npos)
        FUZZ_EQUAL(nxStringHelper::Compare(a, b, NX_CASE_INSENSITIVE), order == 0);
    FUZZ_CHECK(!nxStringHelper::Compare(a, a, nxCaseSensitivityEnum()));
    FUZZ_EQUAL(nxStringHelper::CompareAlphabetically(a, b, nxCaseSensitivityEnum()), 0);
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    auto const number = input.Take<double>();
    auto const precision = input.Below(20) == 19 ? 0xFFFFFFFFu : input.Below(12);
    char const separator = input.Truth() ? '.' : input.Take<char>();
    std::string const text = input.Text();
    std::string const other = input.Text();

    CheckRealText(number, precision);
    CheckInteger<unsigned short>(text);
    CheckInteger<unsigned int>(text);
    CheckInteger<unsigned long long>(text);
    CheckInteger<short>(text);
    CheckInteger<int>(text);
    CheckInteger<long long>(text);
    CheckReal(text, separator);
    bool truth = true;
    FUZZ_EQUAL(nxStringHelper::SetFromString(text, truth).IsOK(), text == "TRUE" || text == "FALSE");
    FUZZ_EQUAL(truth, text == "TRUE");
    CheckHandling(text, other, input.Text());
    CheckComparison(text, other);
}
