#include "core/vocabulary/nxException.h"

nxException::nxException(nxErrorEnum const& error) : _error(error)
{
}

nxException::nxException(nxErrorEnum const& error, std::string const& description)
    : _error(error), _description(description)
{
}

nxException const& nxException::operator=(nxException const& other)
{
    _error = other._error;
    if (this != &other)
        _description = other._description;
    return *this;
}

void nxException::SetError(nxErrorEnum error)
{
    _error = error;
}

nxErrorEnum nxException::GetError() const
{
    return _error;
}

void nxException::SetDescription(std::string const& description)
{
    _description = description;
}

std::string const& nxException::GetDescription() const
{
    return _description;
}
