#include "core/numbers/nxRatio.h"

#include "core/text/nxDigits.h"
#include "core/text/nxStringHelper.h"

nxErrorEnum nxRatio::SetFromString(std::string const& text)
{
    SetNull();
    unsigned int numbers[2] = {0, 0};
    unsigned int side = 0;
    for (char const c : text)
    {
        if (c == ':' && side == 0)
        {
            side = 1;
            continue;
        }
        unsigned int const digit = nxDigits::ValueOf(c);
        if (digit > 9)
            return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
        numbers[side] = numbers[side] * 10 + digit;
    }
    // A side without digits is zero too, and so is the right one without a colon.
    if (numbers[0] == 0 || numbers[1] == 0)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    _Set(numbers[0], numbers[1], NX_VALID);
    return nxErrorEnum();
}

std::string nxRatio::GetAsString() const
{
    std::string text;
    if (IsValid())
    {
        nxStringHelper::AppendAsString(text, _left);
        text.push_back(':');
        nxStringHelper::AppendAsString(text, _right);
    }
    return text;
}

std::string nxRatio::GetAsLogString() const
{
    return IsNull() ? "NULL" : IsNoChange() ? "NO_CHANGE" : GetAsString();
}

bool nxRatio::operator<(nxRatio const& right) const
{
    if (!IsValid())
        return right.IsValid() || _status.GetValue() < right._status.GetValue();
    if (!right.IsValid())
        return false;
    return _right == right._right ? _left < right._left : _left * right._right < right._left * _right;
}

bool nxRatio::operator<=(nxRatio const& right) const
{
    return *this == right || *this < right;
}

bool nxRatio::operator>(nxRatio const& right) const
{
    return !(*this == right) && !(*this < right);
}

bool nxRatio::operator>=(nxRatio const& right) const
{
    return !(*this < right);
}
