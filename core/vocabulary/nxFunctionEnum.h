#pragma once

#include "core/vocabulary/nxEnum.h"

/// Everything that a user or a program may do on the platform. A row is at once the identity of a request
/// or broadcast on the message bus and a permission that is granted or refused; some rows are only the
/// one or the other.
class NX_CORE_API nxFunctionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFunctionEnum, 100000, 199999)
    NX_ENUM_LESS(nxFunctionEnum)

    /// Replaces what the set holds by all functions that there are. Meant for set-up; keep the result.
    void GetAllRegisteredFunctionPermissions(std::set<nxFunctionEnum>& functions) const;

    /// False for the functions that even a super user is given one by one, such as those that restrict or
    /// merely mark a user; true for all else, undefined and numbers without a row included.
    bool IsPermissionAutomaticallyGrantedToSuperUsers() const;

    /// Whether a request of this function is acknowledged before it is answered. False for submitting,
    /// amending and pulling an order, true for all else.
    bool RequestRequiresReceipt() const;

    /// The function's word in the subject of a message: the token without "NX_FUNCTION_".
    /// @throws std::out_of_range when undefined or "no change", whose tokens are shorter than that. A number
    ///         without a row gives "ED", the end of "NOT_REGISTERED".
    std::string GetAsSubjectName() const;
};
