#include "core/process/nxVersionNumber.h"

#include "core/text/nxDigits.h"
#include "core/text/nxStringParser.h"

namespace
{

constexpr char libraryVersion[] = "1.37.2032";

unsigned int TakePart(nxStringParser& parser)
{
    return static_cast<unsigned int>(nxDigits::ReadLeading(parser.GetSubString('.')));
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

// Built at load: a child of fork() could not wait for another thread to finish it.
[[maybe_unused]] static nxVersionNumber const& builtAtLoad = nxVersionNumber::GetInstance();

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
