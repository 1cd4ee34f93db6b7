#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>

/// @file
/// What every fuzz target needs: the bytes of an input taken apart, and a check that fails the input.

/// Hands out an input from front to back. What lies past its end is zero and empty, so any input is a whole one.
class FuzzInput
{
public:
    FuzzInput(std::uint8_t const* data, std::size_t size)
        : _next(reinterpret_cast<char const*>(data)), _end(_next + size)
    {
    }

    bool IsEmpty() const
    {
        return _next == _end;
    }

    /// A value of a plain type, in the byte order of the machine.
    template <class ValueT>
    ValueT Take()
    {
        static_assert(std::is_arithmetic_v<ValueT> && !std::is_same_v<ValueT, bool>);
        ValueT value{};
        std::size_t const count = std::min(sizeof(value), static_cast<std::size_t>(_end - _next));
        if (count != 0)
            std::memcpy(&value, _next, count);
        _next += count;
        return value;
    }

    /// A number below `limit`, from one byte.
    unsigned int Below(unsigned int limit)
    {
        return Take<std::uint8_t>() % limit;
    }

    bool Truth()
    {
        return Below(2) != 0;
    }

    /// The bytes up to the next 0xFF, which is taken too.
    std::string Text()
    {
        constexpr int endOfText = 0xFF;
        auto const left = static_cast<std::size_t>(_end - _next);
        auto const* const end =
            left == 0 ? nullptr : static_cast<char const*>(std::memchr(_next, endOfText, left));
        std::string text(_next, end == nullptr ? _end : end);
        _next = end == nullptr ? _end : end + 1;
        return text;
    }

    /// All that is left.
    std::string Rest()
    {
        std::string text(_next, _end);
        _next = _end;
        return text;
    }

private:
    char const* _next;
    char const* _end;
};

/// Keeps the lines of the log off the console. Called before anything logs.
inline void FuzzQuietLog()
{
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
}

/// What the library gave, as a text for the complaint.
template <class ValueT>
std::string FuzzShow(ValueT const& value)
{
    if constexpr (std::is_convertible_v<ValueT, std::string>)
        return '"' + std::string(value) + '"';
    else if constexpr (std::is_floating_point_v<ValueT>)
    {
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", static_cast<double>(value));
        return text;
    }
    else if constexpr (sizeof(value) > sizeof(long long))
        return std::to_string(static_cast<long double>(value)); // 128 bits
    else
        return std::to_string(value);
}

[[noreturn]] inline void FuzzFail(char const* file, int line, std::string const& complaint)
{
    std::fprintf(stderr, "%s:%d: %s\n", file, line, complaint.c_str());
    std::abort();
}

/// Ends the process, and with it the input as a finding, unless the condition holds.
#define FUZZ_CHECK(condition)                                                                                \
    do                                                                                                       \
    {                                                                                                        \
        if (!(condition))                                                                                    \
            FuzzFail(__FILE__, __LINE__, #condition);                                                        \
    } while (false)

/// The same for two values that have to be equal, which it shows.
#define FUZZ_EQUAL(got, expected)                                                                            \
    do                                                                                                       \
    {                                                                                                        \
        auto const fuzzGot = (got);                                                                          \
        decltype(fuzzGot) const fuzzExpected = (expected);                                                   \
        if (!(fuzzGot == fuzzExpected))                                                                      \
            FuzzFail(__FILE__, __LINE__,                                                                     \
                     #got " is " + FuzzShow(fuzzGot) + ", expected " + FuzzShow(fuzzExpected));              \
    } while (false)
