#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxCaseSensitivityEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <string>
#include <string_view>

class nxDate;
class nxDateTime;
class nxDecimal;
class nxMoney;
class nxTime;

/// @file
/// Values to text and text to values.

/// The conversions through which the whole library, its log and its files speak: static functions, no state.
///
/// Text is bytes. Numbers don't look at the locale and are strict: digits with at most a leading minus sign, no
/// blanks, no plus sign, no group separators, no exponents. Every function may be called from any thread. Nothing
/// logs, and nothing throws but for want of memory.
///
/// The forms of nxDecimal, nxMoney, nxDate, nxTime and nxDateTime are declared here and defined beside those
/// classes; include their headers to call them.
///
/// @code
/// std::string text("filled ");
/// nxStringHelper::AppendAsString(text, 25u);      // "filled 25"
/// int lots = 0;
/// if (!nxStringHelper::SetFromString("-12", lots).IsOK())
///     return;
/// @endcode
class NX_CORE_API nxStringHelper
{
public:
    nxStringHelper() = delete;

    /// @name GetAsString: the text of a value
    /// `bool` gives TRUE or FALSE; a `char` is a number, not a character: char(65) gives 65. Pointers are refused at
    /// compile time, or they would print as a `bool`.
    /// @{
    static std::string GetAsString(bool value);
    static std::string GetAsString(char value);
    static std::string GetAsString(short value);
    static std::string GetAsString(int value);
    static std::string GetAsString(long value);
    static std::string GetAsString(long long value);
    static std::string GetAsString(unsigned char value);
    static std::string GetAsString(unsigned short value);
    static std::string GetAsString(unsigned int value);
    static std::string GetAsString(unsigned long value) ///< what std::size_t and std::uint64_t are here
    {
        return GetAsString(static_cast<unsigned long long>(value));
    }
    static std::string GetAsString(unsigned long long value);
    /// At most nine decimals; see the form with a precision.
    static std::string GetAsString(double value);
    /// In fixed form, with trailing zeros dropped: 5.0 gives 5, 0.25 gives 0.25. A value that rounds to zero keeps
    /// its sign (-1e-12 gives -0), a negative zero gives 0. Beyond 2147483647 in magnitude, and for what is no
    /// number, the form is that of "%e": 3.000000e+09.
    ///
    /// The last digit is rounded half to even as far as the digit itself goes, but an exact half behind nines is
    /// not carried into the whole part: 0.95 at one decimal gives 0.1. Texts are compared with stored ones, so
    /// this stays.
    /// @param precision  most decimals, 0 to 9; more count as 9, and a negative `int` passed here as 0.
    static std::string GetAsString(double value, unsigned int precision);
    static std::string GetAsString(float value);
    static std::string GetAsString(std::string const& value);
    static std::string
    GetAsString(nxDecimal const& value);                 ///< with '.' before the decimals; empty unless valid
    static std::string GetAsString(nxEnum const& value); ///< its token
    static std::string GetAsString(nxDate const& value);
    static std::string GetAsString(nxTime const& value);
    static std::string GetAsString(nxDateTime const& value); ///< as 05 Mar 2024 09:30:00
    static std::string GetAsString(void const*) = delete;
    /// @}

    /// @name AppendAsString: the same text added to `out`
    /// The number forms need no memory beyond what `out` may grow by. There is none for `long`, which is cast first.
    /// @{
    static void AppendAsString(std::string& out, bool value);
    static void AppendAsString(std::string& out, char value);
    static void AppendAsString(std::string& out, short value);
    static void AppendAsString(std::string& out, int value);
    static void AppendAsString(std::string& out, long long value);
    static void AppendAsString(std::string& out, unsigned char value);
    static void AppendAsString(std::string& out, unsigned short value);
    static void AppendAsString(std::string& out, unsigned int value);
    static void AppendAsString(std::string& out, unsigned long value)
    {
        AppendAsString(out, static_cast<unsigned long long>(value));
    }
    static void AppendAsString(std::string& out, unsigned long long value);
    static void AppendAsString(std::string& out, double value);
    static void AppendAsString(std::string& out, double value, unsigned int precision);
    static void AppendAsString(std::string& out, float value);
    static void AppendAsString(std::string& out, std::string const& value);
    static void AppendAsString(std::string& out, char const* value); ///< a null pointer appends nothing
    static void AppendAsString(std::string& out, nxDecimal const& value);
    static void AppendAsString(std::string& out, nxEnum const& value);
    static void AppendAsString(std::string& out, nxDate const& value);
    static void AppendAsString(std::string& out, nxTime const& value);
    static void AppendAsString(std::string& out, nxDateTime const& value);
    static void AppendAsString(std::string& out, void const*) = delete;
    /// @}

    /// @name SetFromString: the value of a text
    /// @return OK, or NX_ERR_INVALID_PARAMETER with the value untouched, unless a form says otherwise.
    ///
    /// Numbers are read up to the first zero byte, so a text that begins with one is the integer 0; an empty text is
    /// refused. Too large a number is not refused but wraps in the width of its type: 4294967296 is 0u.
    /// @{
    static nxErrorEnum SetFromString(std::string const& text, unsigned int& value);
    static nxErrorEnum SetFromString(std::string const& text, unsigned short& value);
    static nxErrorEnum SetFromString(std::string const& text, unsigned long& value);
    static nxErrorEnum SetFromString(std::string const& text, unsigned long long& value);
    static nxErrorEnum SetFromString(std::string const& text, int& value);
    static nxErrorEnum SetFromString(std::string const& text, short& value);
    static nxErrorEnum SetFromString(std::string const& text, long& value);
    static nxErrorEnum SetFromString(std::string const& text, long long& value);
    /// Takes TRUE and FALSE, in capitals. Whatever else the text is, the value becomes false.
    static nxErrorEnum SetFromString(std::string const& text, bool& value);
    /// @param separator  stands before the decimals. One side of it may be empty: "5." and ".5" are numbers.
    static nxErrorEnum SetFromString(std::string const& text, double& value, char separator = '.');
    /// Copies; never fails.
    static nxErrorEnum SetFromString(std::string const& text, std::string& value);
    static nxErrorEnum SetFromString(std::string const& text, nxDecimal& value, char separator = '.');
    /// Takes a token of the value's class. An unknown word leaves the value, a token of another class clears it.
    static nxErrorEnum SetFromString(std::string const& text, nxEnum& value);
    static nxErrorEnum SetFromString(std::string const& text, nxMoney& value, char separator = '.');
    static nxErrorEnum SetFromString(std::string const& text, nxDate& value);
    static nxErrorEnum SetFromString(std::string const& text, nxTime& value);
    /// As the form for strings, but the view's length counts: a zero byte is refused like any other bad byte.
    static nxErrorEnum SetFromStringView(std::string_view const& text, unsigned int& value);
    /// @}

    /// @name Trimming, of space, tab, line feed and carriage return where no set is given
    /// @{
    static void LeftTrim(std::string& text);
    static void RightTrim(std::string& text);
    static void RightTrim(std::string& text, std::string const& set);
    static std::string GetLeftTrimmed(std::string const& text);
    static std::string GetRightTrimmed(std::string const& text);
    /// @}

    /// Removes every `c`.
    static void Strip(std::string& text, char c);
    /// Replaces every `from`; what was put in is not searched again. An empty `from` changes nothing.
    static void Replace(std::string& text, std::string const& from, std::string const& to);
    /// Lengthens the text to `width` with `fill` at the front; never cuts.
    static void PadLeft(std::string& text, unsigned int const& width, char const& fill);
    /// Lengthens the text to `width` with `fill` at the back; never cuts.
    static void PadRight(std::string& text, unsigned int const& width, char const& fill);

    /// Byte by byte, by the C library's `toupper` and `tolower`. So they see the locale, as nothing else here does but
    /// the case-insensitive comparisons and GetUppercaseAndUnderscoreFormatted().
    static void ToUpper(std::string& text);
    static void ToLower(std::string& text);
    /// Only A to Z.
    static bool IsUppercase(char c);
    /// Only a to z.
    static bool IsLowercase(char c);
    /// firstName gives FIRST_NAME: an underscore before each capital that follows a small letter. HTTPServer gives
    /// HTTPSERVER.
    static std::string GetUppercaseAndUnderscoreFormatted(std::string const& text);

    /// Whether both texts are equal over their whole length, zero bytes included.
    /// @param sensitivity  any value but its two rows gives false.
    static bool Compare(std::string const& left, std::string const& right,
                        nxCaseSensitivityEnum const& sensitivity);
    /// The order of two texts by unsigned bytes, each up to its first zero byte.
    /// @param sensitivity  NX_CASE_INSENSITIVE compares in small letters, so that '_' comes before 'A'; any value but
    ///                     the two rows gives 0.
    /// @return below, at or above 0; exactly -1, 0 or 1 for NX_CASE_SENSITIVE.
    static int CompareAlphabetically(std::string const& left, std::string const& right,
                                     nxCaseSensitivityEnum const& sensitivity);
};
