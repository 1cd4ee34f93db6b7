#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxInitalizers.h"
#include "core/vocabulary/nxValueStatusEnum.h"

#include <string>

/// @file
/// A text that can be null or stand for "no change".

/// A string with a status beside it; one that is not valid is empty, and a valid one may be.
class NX_CORE_API nxStringValue
{
public:
    /// An empty text, which is valid.
    nxStringValue() noexcept : _status(NX_VALID)
    {
    }

    nxStringValue(nxNullInitalizer) noexcept : _status(NX_NULL)
    {
    }

    nxStringValue(nxNoChangeInitalizer) noexcept : _status(NX_NOCHANGE)
    {
    }

    nxStringValue(std::string const& value);
    /// A null pointer gives a null.
    nxStringValue(char const* value);

    /// Both live until the process ends.
    static nxStringValue const& GetNullInstance();
    static nxStringValue const& GetNoChangeInstance();

    bool IsValid() const noexcept
    {
        return _status == NX_VALID;
    }

    bool IsNull() const noexcept
    {
        return _status == NX_NULL;
    }

    bool IsNoChange() const noexcept
    {
        return _status == NX_NOCHANGE;
    }

    nxValueStatusEnum const& GetStatus() const noexcept
    {
        return _status;
    }

    std::string const& GetValue() const noexcept ///< Empty unless valid.
    {
        return _value;
    }

    void SetNull() noexcept
    {
        _Clear(NX_NULL);
    }

    void SetNoChange() noexcept
    {
        _Clear(NX_NOCHANGE);
    }

    /// Takes any text, an empty one too, and becomes valid; never fails.
    nxErrorEnum SetFromString(std::string const& text);

    /// @name Text, empty unless valid
    /// @{
    std::string GetAsString() const;
    void GetAsString(std::string& text) const;
    void AppendAsString(std::string& text) const;
    /// @}

    /// @name Text that gives NULL and NO_CHANGE for the other two states
    /// @{
    std::string GetAsLogString() const;
    void GetAsLogString(std::string& text) const;
    void AppendAsLogString(std::string& text) const;
    /// @}

private:
    void _Clear(nxEnumValue status) noexcept
    {
        _value.clear();
        _status = nxValueStatusEnum(status);
    }

    std::string _value;
    nxValueStatusEnum _status;
};
