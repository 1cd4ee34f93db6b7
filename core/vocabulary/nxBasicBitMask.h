#pragma once

#include "core/platform/nxExport.h"

#include <limits>
#include <map>
#include <string>
#include <utility>

/// @file
/// What the 32-bit and the 64-bit masks have in common.

struct nxBitMaskRow;
class nxRegistration;

/// A set of flags of which the two highest bits are the states "null" and "no change". The operations of
/// nxBitMask (32 bits, of which 31 is null and 30 no change) and of nxBitMask64 (63 and 62).
///
/// @tparam Mask       the class that derives from this one
/// @tparam Number     what holds the flags
/// @tparam Parameter  how operations take a number
///
/// A new mask is valid and empty. Any number may be stored: there is no range check. The rows of a mask (bit,
/// token, text) are kept for each class by itself, so bits and tokens may repeat between classes.
///
/// Nothing here throws or logs. Registration is finished before `main`; from then on any number of threads
/// may ask for descriptions. A mask that threads share is guarded by its owner.
template <typename Mask, typename Number, typename Parameter>
class NX_CORE_API nxBasicBitMask
{
public:
    virtual ~nxBasicBitMask() = default;

    /// True when neither reserved bit is set.
    virtual bool IsValid() const;

    /// True when the "no change" bit is set, whatever else is.
    virtual bool IsNoChange() const;

    /// True when the null bit is set, whatever else is.
    virtual bool IsNull() const;

    /// Adds bits. A mask that is not valid starts again from 0. The reserved bits of the argument are not
    /// filtered.
    virtual void SetBits(Mask const& other);
    virtual void SetBits(Parameter bits);

    /// Stores the null bit alone.
    virtual void SetNull();

    /// Stores the "no change" bit alone.
    virtual void SetNoChange();

    /// The tokens of the bits that are set, from the lowest bit upward, joined by the separator; "???" for a
    /// bit without a row. "Null" and "No Change" for these states, "No Description Available" for a class
    /// without rows, nothing for 0.
    virtual std::string GetShortDescription(std::string const& separator) const;

    /// The same with the texts in the place of the tokens.
    virtual std::string GetLongDescription(std::string const& separator) const;

    /// The name of the concrete class.
    virtual std::string GetClassNameA() const = 0;

    /// Stores any number.
    void SetValue(Parameter value)
    {
        _value = value;
    }

    Number GetValue() const
    {
        return _value;
    }

    Mask& operator=(Parameter value)
    {
        _value = value;
        return _Self();
    }

    Mask& operator=(Mask const& other)
    {
        _value = other.GetValue();
        return _Self();
    }

    /// Plain comparisons of the number.
    friend bool operator==(Mask const& left, Parameter right)
    {
        return left.GetValue() == right;
    }
    friend bool operator==(Mask const& left, Mask const& right)
    {
        return left.GetValue() == right.GetValue();
    }

    /// The same as the SetBits() of the argument's kind.
    Mask& operator|=(Parameter bits)
    {
        SetBits(bits);
        return _Self();
    }
    Mask& operator|=(Mask const& other)
    {
        SetBits(other);
        return _Self();
    }

    /// True when every bit of the argument is set, so for 0 too.
    bool AreAllBitsSet(Parameter bits) const
    {
        return (_value & bits) == bits;
    }
    bool AreAllBitsSet(Mask const& other) const
    {
        return AreAllBitsSet(other.GetValue());
    }

    /// True when some bit of the argument is set.
    bool AreAnyBitsSet(Parameter bits) const
    {
        return (_value & bits) != 0;
    }
    bool AreAnyBitsSet(Mask const& other) const
    {
        return AreAnyBitsSet(other.GetValue());
    }

    /// Takes bits away, reserved ones too when they are named; whether the mask is valid does not matter.
    void ClearBits(Parameter bits)
    {
        _value &= ~bits;
    }
    void ClearBits(Mask const& other)
    {
        ClearBits(other.GetValue());
    }

    /// Stores 0.
    void Clear()
    {
        _value = 0;
    }

protected:
    /// The two reserved bits.
    static constexpr Number _nullBit = Number{1} << (std::numeric_limits<Number>::digits - 1);
    static constexpr Number _noChangeBit = _nullBit >> 1;

    nxBasicBitMask() = default;
    nxBasicBitMask(Parameter value) : _value(value)
    {
    }
    nxBasicBitMask(nxBasicBitMask const& other) = default;

    /// Class name, then bits, then token and text.
    using Rows = std::map<Number, std::pair<std::string, std::string>>;
    /// The registry, built on first use and never destroyed.
    static std::map<std::string, Rows>& _GetDescriptionMap();

    /// Enters a row of the instance's class. The first row of a bit stands; the result is always true.
    bool _Register(Parameter bits, std::string const& token, std::string const& text);
    static bool _Register(std::string const& className, Parameter bits, std::string const& token,
                          std::string const& text);

    /// Enters rows up to the one without a token. The first row of a bit stands.
    bool _RegisterRows(nxBitMaskRow const* rows);

    Number _value = 0;

private:
    friend class nxRegistration;

    Mask& _Self()
    {
        return static_cast<Mask&>(*this);
    }

    std::string _Describe(std::string const& separator,
                          std::string std::pair<std::string, std::string>::*word) const;
};

/// The name of a concrete mask and the registration of its rows. What is only declared here is defined from
/// the class's rows in core/vocabulary/tables.
#define NX_MASK_ROWS(Class)                                                                                  \
public:                                                                                                      \
    std::string GetClassNameA() const override;                                                              \
                                                                                                             \
private:                                                                                                     \
    friend class nxRegistration;                                                                             \
    bool _RegisterValues();                                                                                  \
    NX_CORE_LOCAL static bool _registered;                                                                   \
                                                                                                             \
public:

/// What every concrete mask has, of either width.
#define NX_MASK_COMMON(Class, Base)                                                                          \
    Class(Class const& other) = default;                                                                     \
    Class& operator=(Class const& other) = default;                                                          \
    using Base::operator=;                                                                                   \
    NX_MASK_ROWS(Class)
