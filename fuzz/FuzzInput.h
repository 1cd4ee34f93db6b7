#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

/// @file
/// What every fuzz target needs: the bytes of an input taken apart, plain helpers for its model, and a check
/// that fails the input. A target defines FuzzOne(), and FuzzStart() for what comes before the first input.

__extension__ typedef __int128 FuzzWide;

/// Hands out an input from front to back. What lies past its end is zero and empty: any input is whole.
class FuzzInput
{
public:
    FuzzInput(std::uint8_t const* data, std::size_t size)
        : _next(reinterpret_cast<char const*>(data)), _end(_next + size)
    {
    }

    /// True for as many steps as an input may have, which is what keeps a sequence of calls short.
    bool HasStep()
    {
        return _next != _end && _steps-- != 0;
    }

    /// A value of a plain type, in the byte order of the machine.
    template <class ValueT>
    ValueT Take()
    {
        ValueT value{};
        std::size_t const count = std::min(sizeof value, static_cast<std::size_t>(_end - _next));
        if (count != 0)
            std::memcpy(&value, _next, count);
        _next += count;
        return value;
    }

    /// A number below `limit`, from one byte.
    unsigned int Below(std::size_t limit)
    {
        return static_cast<unsigned int>(Take<std::uint8_t>() % limit);
    }

    bool Truth()
    {
        return Below(2) != 0;
    }

    /// The bytes up to the next 0xFF, which is taken too.
    std::string Text()
    {
        char const* const end = std::find(_next, _end, static_cast<char>(0xFF));
        std::string text(_next, end);
        _next = end == _end ? end : end + 1;
        return text;
    }

    /// All that is left.
    std::string Rest()
    {
        return {std::exchange(_next, _end), _end};
    }

private:
    char const* _next;
    char const* _end;
    unsigned int _steps = 64;
};

void FuzzOne(FuzzInput& input);
[[gnu::weak]] void FuzzStart();

inline std::vector<std::string> FuzzSplit(std::string const& text, char separator)
{
    std::vector<std::string> fields;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find(separator, start)) != text.npos; start = end + 1)
        fields.emplace_back(text, start, end - start);
    fields.emplace_back(text, start);
    return fields;
}

inline std::string FuzzTrim(std::string const& text)
{
    constexpr char const blanks[] = " \t\n\r";
    std::size_t const first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Whether there are none but digits, if any.
inline bool FuzzIsDigits(std::string const& text)
{
    return text.find_first_not_of("0123456789") == std::string::npos;
}

/// Wraps at 64 bits, from 20 places on, and is none from 64 on.
inline unsigned long long FuzzPowerOfTen(unsigned int places)
{
    unsigned long long power = 1;
    for (; places != 0 && power != 0; --places)
        power *= 10;
    return power;
}

/// The digits as a number that wraps at 64 bits.
inline unsigned long long FuzzNumber(std::string const& digits)
{
    unsigned long long number = 0;
    for (char const digit : digits)
        number = number * 10 + static_cast<unsigned int>(digit - '0');
    return number;
}

/// As printf, into a text; a macro, so that the compiler sees the format.
#define FUZZ_FORMAT(...)                                                                                     \
    [&]                                                                                                      \
    {                                                                                                        \
        char fuzzText[400];                                                                                  \
        std::snprintf(fuzzText, sizeof fuzzText, __VA_ARGS__);                                               \
        return std::string(fuzzText);                                                                        \
    }()

/// The C library's digits of a real with the zeros at the end cut off.
inline std::string FuzzFixed(double value, unsigned int places)
{
    std::string text = FUZZ_FORMAT("%#.*f", static_cast<int>(places), value); // always with a point
    text.erase(text.find_last_not_of('0') + 1);
    return text.substr(0, text.size() - text.ends_with('.'));
}

/// What the library gave, as a text for the complaint.
template <class ValueT>
std::string FuzzShow(ValueT const& value)
{
    if constexpr (std::is_convertible_v<ValueT, std::string>)
        return '"' + std::string(value) + '"';
    else
        return FUZZ_FORMAT("%.21Lg", static_cast<long double>(value));
}

[[noreturn]] inline void FuzzFail(char const* file, int line, std::string const& complaint)
{
    std::fprintf(stderr, "%s:%d: %s\n", file, line, complaint.c_str());
    std::abort();
}

/// Ends the process, and with it the input as a finding, unless the condition holds.
#define FUZZ_CHECK(condition) (condition) ? (void)0 : FuzzFail(__FILE__, __LINE__, #condition)

/// The same for two values that have to be equal, which it shows.
#define FUZZ_EQUAL(got, expected) FuzzEqual(got, expected, __FILE__, __LINE__, #got)

template <class ValueT>
void FuzzEqual(ValueT const& got, std::type_identity_t<ValueT> const& expected, char const* file, int line,
               char const* what)
{
    if (!(got == expected))
        FuzzFail(file, line, std::string(what) + " is " + FuzzShow(got) + ", expected " + FuzzShow(expected));
}

/// A folder of the process's own, in memory where there is a place for that, gone when the process ends.
inline std::string const& FuzzFolder()
{
    static std::string& folder = *new std::string;
    if (folder.empty())
    {
        folder = std::filesystem::exists("/dev/shm") ? "/dev/shm/fuzz-XXXXXX" : "/tmp/fuzz-XXXXXX";
        FUZZ_CHECK(mkdtemp(folder.data()) != nullptr);
        (void)std::atexit([] { std::filesystem::remove_all(folder); }); // a forked child ends by _exit
    }
    return folder;
}

/// The path of a file in memory, which is made anew for each content.
inline std::string FuzzFile(std::string const& content)
{
    static int const file = memfd_create("fuzz", MFD_CLOEXEC);
    FUZZ_EQUAL(ftruncate(file, 0), 0);
    FUZZ_EQUAL(pwrite(file, content.data(), content.size(), 0), static_cast<ssize_t>(content.size()));
    return "/proc/self/fd/" + std::to_string(file);
}

/// As main() gets them: a null pointer ends them.
inline std::vector<char*> FuzzPointers(std::vector<std::string>& words)
{
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// A decimal of any value and places, of a class that the target knows.
template <class DecimalT, class IntegerT>
DecimalT FuzzDecimal(FuzzInput& input)
{
    auto const value = input.Take<IntegerT>();
    return DecimalT::ConstructFromValueAndDecimalPlaces(value, input.Take<unsigned char>());
}
