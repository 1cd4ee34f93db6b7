#include "core/time/nxDate.h"

#include "core/platform/nxClock.h"
#include "core/text/nxStringHelper.h"
#include "core/time/nxDateTime.h"

nxDate::nxDate() : _isoDate(static_cast<unsigned int>(nxDateTime().GetAsISODate()))
{
    if (_isoDate == 0) // the answer of a date-time that is null
        SetNull();
}

nxErrorEnum nxDate::SetFromString(std::string const& text)
{
    return nxStringHelper::SetFromString(text, _isoDate);
}

std::string nxDate::GetAsString() const
{
    std::string text;
    AppendAsString(text);
    return text;
}

std::string nxDate::GetAsString(std::string const& format) const
{
    std::string text;
    AppendAsString(text, format);
    return text;
}

void nxDate::AppendAsString(std::string& text) const
{
    if (IsValid())
        nxStringHelper::AppendAsString(text, _isoDate);
}

void nxDate::AppendAsString(std::string& text, std::string const& format) const
{
    if (IsValid())
        _AppendAsString(text, format.c_str());
}

std::string nxDate::GetAsLogString() const
{
    std::string text;
    AppendAsLogString(text);
    return text;
}

std::string nxDate::GetAsLogString(std::string const& format) const
{
    std::string text;
    AppendAsLogString(text, format);
    return text;
}

void nxDate::AppendAsLogString(std::string& text) const
{
    if (!_AppendMarkAsLogString(text))
        nxStringHelper::AppendAsString(text, _isoDate);
}

void nxDate::AppendAsLogString(std::string& text, std::string const& format) const
{
    if (!_AppendMarkAsLogString(text))
        _AppendAsString(text, format.c_str());
}

void nxDate::_AppendAsString(std::string& text, char const* format) const
{
    auto const date = static_cast<long long>(_isoDate);
    std::tm fields = {};
    fields.tm_mday = static_cast<int>(date % 100);
    fields.tm_mon = static_cast<int>(date / 100 % 100 - 1);
    fields.tm_year = static_cast<int>(date / 10000 - 1900);
    char buffer[1024];
    text.append(buffer, nxPlatform::strftime(buffer, sizeof(buffer), format, fields));
}

// Returns false, with nothing appended, for a day.
bool nxDate::_AppendMarkAsLogString(std::string& text) const
{
    if (IsValid())
        return false;
    text += IsNull() ? "NULL" : "NO_CHANGE";
    return true;
}

std::string nxStringHelper::GetAsString(nxDate const& value)
{
    return value.GetAsString();
}

void nxStringHelper::AppendAsString(std::string& out, nxDate const& value)
{
    value.AppendAsString(out);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, nxDate& value)
{
    return value.SetFromString(text);
}
