#include "core/logging/nxLog.h"

#include "core/logging/nxLogManager.h"

#include <charconv>
#include <cstdio>

namespace
{

template <typename Integer>
void AppendInteger(std::string& out, Integer value)
{
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

} // namespace

nxLog::nxLog(nxLogLevelEnum const& level, char const* sourceFile, unsigned int line)
    : _level(level), _sourceFile(sourceFile), _lineNumber(line)
{
}

nxLog& nxLog::operator<<(char const* text)
{
    _entry.append(text ? text : "");
    return *this;
}

nxLog& nxLog::operator<<(std::string const& text)
{
    return *this << text.c_str();
}

nxLog& nxLog::operator<<(char value)
{
    return *this << static_cast<int>(value);
}

nxLog& nxLog::operator<<(unsigned char value)
{
    return *this << static_cast<unsigned int>(value);
}

nxLog& nxLog::operator<<(short value)
{
    return *this << static_cast<int>(value);
}

nxLog& nxLog::operator<<(unsigned short value)
{
    return *this << static_cast<unsigned int>(value);
}

nxLog& nxLog::operator<<(int value)
{
    AppendInteger(_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(unsigned int value)
{
    AppendInteger(_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(long const& value)
{
    AppendInteger(_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(unsigned long value)
{
    AppendInteger(_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(long long value)
{
    AppendInteger(_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(unsigned long long value)
{
    AppendInteger(_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(bool value)
{
    _entry.append(value ? "TRUE" : "FALSE");
    return *this;
}

nxLog& nxLog::operator<<(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", value);
    _entry.append(text);
    return *this;
}

nxLog& nxLog::operator<<(float value)
{
    return *this << static_cast<double>(value);
}

nxLog& nxLog::operator<<(nxEnum const& value)
{
    _entry.append(value.GetShortDescription());
    return *this;
}

nxLog& nxLog::operator<<(nxErrorEnum const& value)
{
    return *this << "(" << value.GetValue() << ") " << value.GetShortDescription() << " - '"
                 << value.GetLongDescription() << "'";
}

nxLog& nxLog::operator<<(nxBitMask const& value)
{
    _entry.append(value.GetShortDescription(" "));
    return *this;
}

nxLog& nxLog::operator<<(nxLogTerminator const&)
{
    nxLogManager::GetInstance().Write(*this);
    return *this;
}
