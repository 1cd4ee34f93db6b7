#include "core/numbers/nxRatio.h"

#include "core/text/nxDigits.h"
#include "core/text/nxStringHelper.h"

nxRatio::nxRatio() : _left(0), _right(0), _status(NX_NULL)
{
}

nxRatio::nxRatio(unsigned int left, unsigned int right) : _left(left), _right(right), _status(NX_VALID)
{
}

void nxRatio::SetValue(unsigned int const& left, unsigned int const& right)
{
    _Set(left, right, left != 0 && right != 0 ? NX_VALID : NX_NULL);
}

void nxRatio::SetNull()
{
    _Set(0, 0, NX_NULL);
}

void nxRatio::SetNoChange()
{
    _Set(0, 0, NX_NOCHANGE);
}

void nxRatio::_Set(unsigned int left, unsigned int right, nxEnumValue status)
{
    _left = left;
    _right = right;
    _status = nxValueStatusEnum(status);
}

bool nxRatio::IsValid() const
{
    return _status == NX_VALID;
}

bool nxRatio::IsNull() const
{
    return _status == NX_NULL;
}

bool nxRatio::IsNoChange() const
{
    return _status == NX_NOCHANGE;
}

unsigned int nxRatio::GetLHS() const
{
    return _left;
}

unsigned int nxRatio::GetRHS() const
{
    return _right;
}

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

bool nxRatio::operator==(nxRatio const& right) const
{
    if (!IsValid() || !right.IsValid())
        return _status == right._status; // the numbers of a null don't count
    return _left == right._left && _right == right._right;
}

bool nxRatio::operator!=(nxRatio const& right) const
{
    return !(*this == right);
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
