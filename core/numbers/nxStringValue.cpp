#include "core/numbers/nxStringValue.h"

nxStringValue::nxStringValue(std::string const& value) : _value(value), _status(NX_VALID)
{
}

nxStringValue::nxStringValue(char const* value)
    : _value(value == nullptr ? "" : value), _status(value == nullptr ? NX_NULL : NX_VALID)
{
}

// Never destroyed, so that static destructors may still read them.
nxStringValue const& nxStringValue::GetNullInstance()
{
    static nxStringValue const* const instance = new nxStringValue(nxNullInitalizer{});
    return *instance;
}

nxStringValue const& nxStringValue::GetNoChangeInstance()
{
    static nxStringValue const* const instance = new nxStringValue(nxNoChangeInitalizer{});
    return *instance;
}

// Built at load: a child of fork() could not wait for another thread to finish them.
[[maybe_unused]] static nxStringValue const* const builtAtLoad[] = {&nxStringValue::GetNullInstance(),
                                                                    &nxStringValue::GetNoChangeInstance()};

nxErrorEnum nxStringValue::SetFromString(std::string const& text)
{
    _value = text;
    _status = nxValueStatusEnum(NX_VALID);
    return nxErrorEnum();
}

std::string nxStringValue::GetAsString() const
{
    return _value;
}

void nxStringValue::GetAsString(std::string& text) const
{
    text = _value;
}

void nxStringValue::AppendAsString(std::string& text) const
{
    text.append(_value);
}

std::string nxStringValue::GetAsLogString() const
{
    std::string text;
    AppendAsLogString(text);
    return text;
}

void nxStringValue::GetAsLogString(std::string& text) const
{
    text.clear();
    AppendAsLogString(text);
}

void nxStringValue::AppendAsLogString(std::string& text) const
{
    if (IsNull())
        text.append("NULL");
    else if (IsNoChange())
        text.append("NO_CHANGE");
    else
        text.append(_value);
}
