#include "core/logging/nxLogStampText.h"

#include "core/text/nxDigits.h"

namespace
{

// Three digits of a number below 1000.
void PutThousandth(char* out, unsigned int number)
{
    (void)nxDigits::WriteLowestBackward(out + 3, number, 3);
}

} // namespace

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
            return {};
    }
    else
    {
        PutThousandth(_text + millisecondsPlace, stamp.GetMilliseconds());
        PutThousandth(_text + microsecondsPlace, stamp.GetMicroseconds() % microsecondsPerMillisecond);
    }
    return std::string_view(_text, sizeof _text - 1);
}
