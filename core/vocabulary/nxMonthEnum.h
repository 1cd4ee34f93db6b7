#pragma once

#include "core/vocabulary/nxEnum.h"

/// A calendar month.
class NX_CORE_API nxMonthEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMonthEnum, 220, 233)

    /// @param number  1 for January to 12
    /// @return false for any other number, which leaves the value as it was.
    bool SetFromMonthNumber(unsigned int number);

    /// 1 for January to 12. Nothing is checked: undefined wraps around to 4294967076.
    unsigned int GetAsMonthNumber() const;

    /// Sets the month from its first three letters, in capitals: "JAN". Any other word stores 0.
    void SetFrom3DigitString(std::string const& name);

    /// The whole token, "JANUARY": callers know it so, whatever the name says.
    std::string GetAs3DigitString() const;

    /// The three-letter names with the number of their month, 1 to 12.
    static std::map<std::string, unsigned int> const& GetThreeDigitNameMap();

private:
    /// Hides the registration of nxEnum: notes the three-letter names in the same pass over the rows.
    static bool _RegisterRows(std::span<nxEnumWords const> rows);

    static std::map<std::string, unsigned int>& _GetThreeDigitNameMap();
};
