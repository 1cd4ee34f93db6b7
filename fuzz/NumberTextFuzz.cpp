// The texts of numbers: reals against the C library, integers against plain sums, and the text helpers against plain ones.

#include "fuzz/FuzzInput.h"

#include "core/text/nxStringHelper.h"

#include <cmath>
#include <strings.h>

namespace
{
/// Reads as the strict parsers do, in the width of the number.
template <class IntegerT>
bool Parse(std::string digits, IntegerT& value)
{
    bool const isEmpty = digits.empty();
    digits = digits.c_str();
    bool const negative = std::is_signed_v<IntegerT> && digits.starts_with('-');
    if (negative)
        digits.erase(0, 1);
    if (isEmpty || (negative && digits.empty()) ||
        digits.find_first_not_of("0123456789") != std::string::npos)
        return false;
    unsigned long long number = 0;
    for (char const digit : digits)
        number = number * 10 + static_cast<unsigned int>(digit - '0');
    value = static_cast<IntegerT>(negative ? 0 - number : number);
    return true;
}

template <class IntegerT>
void CheckInteger(std::string const& text)
{
    IntegerT value = 42;
    IntegerT expected = 42;
    FUZZ_EQUAL(nxStringHelper::SetFromString(text, value).IsOK(), Parse(text, expected));
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
    std::string plain = digits; // for the C library
    if (digits.starts_with('-'))
        digits.erase(0, 1);
    if (std::size_t const point = digits.find(separator); point != std::string::npos)
    {
        digits.erase(point, 1);
        plain[plain.size() - digits.size() - 1 + point] = '.';
    }
    FUZZ_EQUAL(taken, !digits.empty() && digits.find(separator) == std::string::npos &&
                          digits.find_first_not_of("0123456789") == std::string::npos);
    if (!taken)
        FUZZ_EQUAL(value, 42.0);
    else if (digits.size() <= 15) // exact in a double, as its power of ten is
        FUZZ_EQUAL(value, std::strtod(plain.c_str(), nullptr));
    else if (digits.size() < 300)
        FUZZ_CHECK(std::fabs(value - std::strtod(plain.c_str(), nullptr)) <= std::fabs(value) * 1e-12);
}

/// The C library's digits with the zeros at the end cut off.
std::string CutFixed(double value, unsigned int precision)
{
    char text[400];
    std::snprintf(text, sizeof text, "%.*f", static_cast<int>(precision), value);
    std::string cut = text;
    if (cut.find('.') == std::string::npos)
        return cut;
    cut.erase(cut.find_last_not_of('0') + 1);
    if (cut.ends_with('.'))
        cut.pop_back();
    return cut;
}

void CheckRealText(double value, unsigned int precision)
{
    std::string const text = nxStringHelper::GetAsString(value, precision);
    std::string appended = "x";
    nxStringHelper::AppendAsString(appended, value, precision);
    FUZZ_EQUAL(appended, 'x' + text);
    FUZZ_CHECK(text.size() <= 24);
    if (std::isnan(value))
        return; // whatever it is
    if (std::fabs(value) > 2147483647.0)
    {
        char scientific[40];
        std::snprintf(scientific, sizeof scientific, "%e", value);
        FUZZ_EQUAL(text, std::string(scientific));
        return;
    }
    unsigned int const places = precision > 0x7FFFFFFFu ? 0 : std::min(precision, 9u);
    double const scaled = std::fabs(value) * std::pow(10.0, places);
    constexpr double doubtful = 1e-3; // nearer to a tie, one rounding more decides
    if (std::fabs(scaled - std::floor(scaled) - 0.5) > doubtful && scaled < 1e12 && value != 0.0)
        FUZZ_EQUAL(text, CutFixed(value, places));
    if (places == 9 && value != 0.0 && std::fabs(scaled - std::floor(scaled) - 0.5) > doubtful)
    {
        double back = 0;
        FUZZ_CHECK(nxStringHelper::SetFromString(text, back).IsOK());
        FUZZ_CHECK(std::fabs(back - value) <= 0.5000001e-9 + std::fabs(value) * 1e-15);
        if (back != 0.0 && std::fabs(back) < 1e6) // up to 15 digits are read without a loss
            FUZZ_EQUAL(nxStringHelper::GetAsString(back, places), text);
    }
}

void CheckTrimming(std::string const& text)
{
    constexpr char const blanks[] = " \t\n\r";
    std::string const set(blanks);
    std::size_t const first = text.find_first_not_of(set);
    FUZZ_EQUAL(nxStringHelper::GetLeftTrimmed(text), first == std::string::npos ? "" : text.substr(first));
    FUZZ_EQUAL(nxStringHelper::GetRightTrimmed(text), text.substr(0, text.find_last_not_of(set) + 1));
}

void CheckReplace(std::string const& text, std::string const& from, std::string const& to)
{
    std::string expected;
    for (std::size_t i = 0; i < text.size();)
    {
        bool const found = !from.empty() && text.compare(i, from.size(), from) == 0;
        expected += found ? to : text.substr(i, 1);
        i += found ? from.size() : 1;
    }
    std::string replaced = text;
    nxStringHelper::Replace(replaced, from, to);
    FUZZ_EQUAL(replaced, expected);
}

int Sign(int number)
{
    return (number > 0) - (number < 0);
}

void CheckComparison(std::string const& a, std::string const& b)
{
    nxCaseSensitivityEnum const exact(NX_CASE_SENSITIVE);
    nxCaseSensitivityEnum const loose(NX_CASE_INSENSITIVE);
    FUZZ_EQUAL(nxStringHelper::Compare(a, b, exact), a == b);
    FUZZ_EQUAL(nxStringHelper::CompareAlphabetically(a, b, exact), Sign(std::strcmp(a.c_str(), b.c_str())));
    FUZZ_EQUAL(Sign(nxStringHelper::CompareAlphabetically(a, b, loose)),
               Sign(strcasecmp(a.c_str(), b.c_str())));
    if (a.find('\0') == std::string::npos && b.find('\0') == std::string::npos)
        FUZZ_EQUAL(nxStringHelper::Compare(a, b, loose), strcasecmp(a.c_str(), b.c_str()) == 0);
    FUZZ_CHECK(!nxStringHelper::Compare(a, a, nxCaseSensitivityEnum()));
    FUZZ_EQUAL(nxStringHelper::CompareAlphabetically(a, b, nxCaseSensitivityEnum()), 0);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
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
    CheckTrimming(text);
    CheckReplace(text, other, input.Text());
    CheckComparison(text, other);
    return 0;
}
