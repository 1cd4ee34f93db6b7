#include "core/numbers/nxDoubleValueWrapper.h"

#include "core/text/nxStringHelper.h"

nxDoubleValueWrapper nxDoubleValueWrapper::GetNullInstance()
{
    return nxDoubleValueWrapper(nullValue);
}

nxDoubleValueWrapper nxDoubleValueWrapper::GetNoChangeInstance()
{
    return nxDoubleValueWrapper(noChangeValue);
}

nxValueStatusEnum nxDoubleValueWrapper::GetStatus() const
{
    return nxValueStatusEnum(IsNoChange() ? NX_NOCHANGE : IsNull() ? NX_NULL : NX_VALID);
}

nxDoubleValueWrapper nxDoubleValueWrapper::GetMax(nxDoubleValueWrapper const& a,
                                                  nxDoubleValueWrapper const& b)
{
    if (a.IsValid() && b.IsValid())
        return a < b ? b : a;
    return a.IsValid() ? a : b;
}

nxDoubleValueWrapper nxDoubleValueWrapper::GetMin(nxDoubleValueWrapper const& a,
                                                  nxDoubleValueWrapper const& b)
{
    if (a.IsValid() && b.IsValid())
        return a > b ? b : a;
    return a.IsValid() ? a : b;
}

std::string nxDoubleValueWrapper::GetAsString() const
{
    return IsValid() ? nxStringHelper::GetAsString(_value) : std::string();
}

std::string nxDoubleValueWrapper::GetAsLogString() const
{
    // A null is no word here but its number: readers of old logs know it as that.
    return IsNoChange() ? std::string("NO_CHANGE") : nxStringHelper::GetAsString(_value);
}

nxErrorEnum nxDoubleValueWrapper::SetFromString(std::string const& text)
{
    nxErrorEnum const result = nxStringHelper::SetFromString(text, _value, '.');
    if (!result.IsOK())
        SetNull();
    return result;
}
