#include "core/logging/nxLogLine.h"

#include "core/text/nxDigits.h"

#include <algorithm>

namespace
{

char* Put(char* out, std::string_view text)
{
    return std::copy(text.begin(), text.end(), out); // an empty text may have no address
}

// Line and index are printed as signed numbers, as "%d" does.
char* PutNumber(char* out, unsigned int number)
{
    char digits[nxDigits::maximum];
    bool const isNegative = static_cast<int>(number) < 0;
    char* const end = digits + sizeof digits;
    char* const begin = nxDigits::WriteBackward(end, isNegative ? 0u - number : number);
    if (isNegative)
    {
        *out++ = '-';
    }
    return Put(out, std::string_view(begin, static_cast<std::size_t>(end - begin)));
}

// Three digits of a number below 1000.
void PutThousandth(char* out, unsigned int number)
{
    (void)nxDigits::WriteLowestBackward(out + 3, number, 3);
}

} // namespace

std::size_t nxLogLine::GetMostSize() const
{
    constexpr std::size_t numbersAndFrame = 64; // two numbers of at most 11 characters and the brackets
    return level.size() + stamp.size() + message.size() + sourceFile.size() + end.size() + numbersAndFrame;
}

char* nxLogLine::Write(char* out) const
{
    *out++ = '[';
    out = Put(out, level);
    out = Put(out, "][");
    out = Put(out, stamp);
    if (hasThreadIndex)
    {
        out = Put(out, "][");
        out = PutNumber(out, threadIndex);
    }
    out = Put(out, "] ");
    out = Put(out, message);
    out = Put(out, " [");
    out = Put(out, sourceFile);
    *out++ = ':';
    out = PutNumber(out, lineNumber);
    *out++ = ']';
    return Put(out, end);
}

std::string_view nxLogStampText::Get(nxTimeStamp const& stamp)
{
    constexpr std::size_t millisecondsPlace = 17;
    constexpr std::size_t microsecondsPlace = 21;
    constexpr unsigned int microsecondsPerMillisecond = 1000;

    if (!_isSet || stamp.GetAsTimeValue() != _seconds)
    {
        _seconds = stamp.GetAsTimeValue();
        _isSet = stamp.GetAsStringFast(_text, sizeof _text) != 0;
        if (!_isSet)
        {
            return {};
        }
    }
    else
    {
        PutThousandth(_text + millisecondsPlace, stamp.GetMilliseconds());
        PutThousandth(_text + microsecondsPlace, stamp.GetMicroseconds() % microsecondsPerMillisecond);
    }
    return std::string_view(_text, sizeof _text - 1);
}
