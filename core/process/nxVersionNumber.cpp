#include "core/process/nxVersionNumber.h"

#include "core/text/nxStringParser.h"

#include <limits>

namespace
{

constexpr char libraryVersion[] = "1.37.2032";

bool IsBlank(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// As atoi() does in the C locale, with a defined result for a number that doesn't fit.
int ReadLeadingNumber(std::string const& text)
{
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i]))
    {
        ++i;
    }
    bool const isNegative = i < text.size() && text[i] == '-';
    if (isNegative || (i < text.size() && text[i] == '+'))
    {
        ++i;
    }
    constexpr long long largest = std::numeric_limits<int>::max();
    constexpr long long smallest = std::numeric_limits<int>::min();
    long long magnitude = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
    {
        // Stops growing once it is beyond both limits.
        magnitude = magnitude > largest ? magnitude : magnitude * 10 + (text[i] - '0');
    }
    if (isNegative)
    {
        return static_cast<int>(-magnitude < smallest ? smallest : -magnitude);
    }
    return static_cast<int>(magnitude > largest ? largest : magnitude);
}

unsigned int TakePart(nxStringParser& parser)
{
    return static_cast<unsigned int>(ReadLeadingNumber(parser.GetSubString('.')));
}

} // namespace

nxVersionNumber::nxVersionNumber()
{
}

nxVersionNumber::nxVersionNumber(nxVersionNumber const&)
{
}

nxVersionNumber& nxVersionNumber::operator=(nxVersionNumber const&)
{
    return *this;
}

nxVersionNumber::~nxVersionNumber()
{
}

nxVersionNumber& nxVersionNumber::GetInstance()
{
    static nxVersionNumber* const instance = new nxVersionNumber;
    return *instance;
}

std::string nxVersionNumber::GetVersionNumber() const
{
    return libraryVersion;
}

void nxVersionNumber::GetMajorMinorSubVersionParts(std::string const& version, unsigned int& major,
                                                   unsigned int& minor, unsigned int& sub) const
{
    nxStringParser parser(version);
    major = TakePart(parser);
    minor = TakePart(parser);
    sub = TakePart(parser);
}

bool nxVersionNumber::IsCompatibleVersionNumber(std::string const& other) const
{
    unsigned int otherMajor = 0;
    unsigned int otherMinor = 0;
    unsigned int ownMajor = 0;
    unsigned int ownMinor = 0;
    unsigned int sub = 0;
    GetMajorMinorSubVersionParts(other, otherMajor, otherMinor, sub);
    GetMajorMinorSubVersionParts(libraryVersion, ownMajor, ownMinor, sub);
    return otherMajor == ownMajor && otherMinor == ownMinor;
}
