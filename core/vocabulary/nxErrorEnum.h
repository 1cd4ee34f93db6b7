#pragma once

#include "core/vocabulary/nxEnum.h"

/// The result of every operation that can fail.
///
/// Success is the number 0, a default-constructed instance; it has no row of its own and prints "UNDEFINED".
/// A number outside the bounds turns into 0 like in any enumeration and so reads as success: whoever builds
/// an error from a number has to keep that in mind. One number, no allocation: the message is fetched only
/// when somebody prints it. GetShortDescription() is the token, GetLongDescription() the message.
class NX_CORE_API [[nodiscard]] nxErrorEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxErrorEnum, 1000000, 1999999)

    /// Checked assignment.
    nxErrorEnum& operator=(nxEnumValue value) noexcept
    {
        (void)_Set(value);
        return *this;
    }

    /// True for 0 alone; "no change" is not a success.
    bool IsOK() const noexcept
    {
        return _value == NX_UNDEFINED;
    }
};
