#pragma once

#include "core/vocabulary/nxErrorEnum.h"

#include <string>

/// An error with a free text, for the few places that can't return a result. Thrown by value; it is not
/// derived from the standard exception. The library itself throws it only where calendar fields can't be
/// turned into a time.
class NX_CORE_API nxException
{
public:
    nxException(nxErrorEnum const& error);
    nxException(nxErrorEnum const& error, std::string const& description);
    nxException(nxException const& other) = default;
    nxException const& operator=(nxException const& other);
    virtual ~nxException() = default;

    void SetError(nxErrorEnum error);
    nxErrorEnum GetError() const;

    void SetDescription(std::string const& description);
    std::string const& GetDescription() const;

private:
    nxException() = default; // an exception always carries an error

    nxErrorEnum _error;
    std::string _description;
};
