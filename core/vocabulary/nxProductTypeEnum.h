#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

/// The kind of instrument that a product is. Its codes open product identifiers.
class NX_CORE_API nxProductTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductTypeEnum, 77, 87)
    NX_ENUM_LESS(nxProductTypeEnum)

    /// The code: "W" warrant, "FWD" forward, "NDF", "E" equity, "F" future, "O" option, "S" strategy, "C"
    /// currency, "B" bond; "*" for any other value.
    std::string GetAsCode() const;

    /// The value of a code, exactly as GetAsCode() writes it; 0 for anything else, "*" included.
    static nxEnumValue GetValueFromCode(std::string const& code);

    /// Sets the value from a code.
    /// @return OK; NX_ERR_INVALID_PARAMETER for an unknown code, which leaves the value as it was.
    nxErrorEnum SetFromCode(std::string const& code);

    /// The product type that an identifier begins with, 0 for none and for fewer than two characters.
    ///
    /// The first character is the code, but an identifier that begins with 'A' is asked for its first two. No
    /// code has two characters, so that is always 0; and since one character is all that is read, "FWD1" is a
    /// future.
    static nxEnumValue GetValueFromID(std::string const& productID);
};
