#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxEnumValue.h"

#include <concepts>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// @file
/// The base of all enumerations, their registry, and the recipe of a concrete class.

class nxEnumIndex;
struct nxEnumWords;
class nxRegistration;

/// One number out of a closed set: an order's state, a product's type, an error.
///
/// An instance is one word of data (beside its type) and is copied freely. All classes share one registry
/// that maps a number to its token (the machine's word: "ORDER_HELD") and its text (the human's: "Held"), and
/// a token back to its number; so any value can be printed without knowing its class.
///
/// Three numbers are common to all classes: 0 is undefined, the state of a new instance and of every refused
/// assignment; 2 stands for "no change"; 1 is only the row as which a number without a row prints.
///
/// Each class owns the open interval between its two bounds. Checked assignment stores a number inside the
/// interval (with or without a row), 0 and 2; any other number stores 0, and nothing is reported unless the
/// operation returns a `bool`.
///
/// Nothing here throws or logs. Registration is finished before `main`; from then on any number of threads
/// may call every reading operation. An instance that threads share is guarded by its owner.
class NX_CORE_API nxEnum
{
public:
    /// The number.
    unsigned int GetValue() const noexcept
    {
        return _value;
    }

    /// The number, as an enumerator.
    nxEnumValue GetEnumValue() const noexcept
    {
        return static_cast<nxEnumValue>(_value);
    }

    /// The token, "NOT_REGISTERED" for a number that has no row. Allocates nothing; valid until the process
    /// ends.
    std::string const& GetShortDescription() const;

    /// The text, "not registered" for a number that has no row. Allocates nothing; valid until the process
    /// ends.
    std::string const& GetLongDescription() const;

    /// The same as GetShortDescription().
    std::string const& GetAsString() const;

    /// True for 0.
    bool IsUndefined() const noexcept
    {
        return _value == NX_UNDEFINED;
    }

    /// True for 2.
    bool IsNoChange() const noexcept
    {
        return _value == NX_NO_CHANGE;
    }

    /// True for the two errors that mean that a request's receipt or response did not come in time. Other
    /// errors that speak of time are not meant. Looks at the number alone, whatever the class.
    bool IsTimeout() const noexcept;

    /// True for the whole group of security errors. Looks at the number alone, whatever the class.
    bool IsSecurityError() const noexcept;

    /// True when the number lies inside the bounds of the instance's class. Not const, as callers know it.
    bool IsSpecificTypeForInstance();

    /// True when the number has a row, in any class.
    static bool IsRegisteredEnumValue(unsigned int value);

    /// Replaces what the container holds by the numbers of this class that have a row, in ascending order.
    void GetRegisteredEnumValuesForInstance(std::vector<nxEnumValue>& values) const;
    void GetRegisteredEnumValuesForInstance(std::set<nxEnumValue>& values) const;

    /// Sets the number whose token this is, byte for byte; texts are not looked up.
    /// @return false for an unknown word, which leaves the old value, and for the token of another class (or
    ///         "NOT_REGISTERED"), which stores 0. The difference is wanted.
    bool SetFromShortDescriptionString(std::string const& token);

    /// The same as SetFromShortDescriptionString().
    bool SetFromString(std::string const& token);

    /// Stores 0.
    void Clear() noexcept
    {
        _value = NX_UNDEFINED;
    }

    /// Stores 2.
    void SetNoChange() noexcept
    {
        _value = NX_NO_CHANGE;
    }

    /// Checked assignment; a refused number stores 0.
    nxEnum const& operator=(unsigned int value) noexcept;
    nxEnum const& operator=(nxEnumValue value) noexcept;
    nxEnum const& operator=(nxEnum const& other) noexcept;

    /// The name of the concrete class, such as "nxBuySellEnum". Not const, as callers know it.
    virtual std::string GetClassNameA() = 0;

    /// Comparison is by number alone, whatever the classes. As friends these are not hidden by a class's own
    /// comparison, and a number is compared as it is, never checked against the bounds.
    template <std::derived_from<nxEnum> Enumeration>
    friend bool operator==(Enumeration const& left, nxEnumValue right) noexcept
    {
        return left.GetValue() == right;
    }

    template <std::derived_from<nxEnum> Enumeration>
    friend bool operator==(Enumeration const& left, unsigned int right) noexcept
    {
        return left.GetValue() == right;
    }

    friend bool operator==(nxEnum const& left, nxEnum const& right) noexcept
    {
        return left._value == right._value;
    }

protected:
    nxEnum() = default;

    /// Checked assignment.
    /// @return false when the number was refused and 0 was stored.
    bool _Set(unsigned int value) noexcept;
    bool _Set(nxEnumValue value) noexcept;
    bool _Set(nxEnum const& other) noexcept;

    /// The exclusive bounds of the class. They must not throw.
    virtual unsigned int _MinValue() const = 0;
    virtual unsigned int _MaxValue() const = 0;

    bool _EqualTo(unsigned int value) const noexcept
    {
        return _value == value;
    }
    bool _EqualTo(nxEnum const& other) const noexcept
    {
        return _value == other._value;
    }
    bool _NotEqualTo(unsigned int value) const noexcept
    {
        return _value != value;
    }
    bool _NotEqualTo(nxEnum const& other) const noexcept
    {
        return _value != other._value;
    }
    bool _LessThan(unsigned int value) const noexcept
    {
        return _value < value;
    }
    bool _LessThan(nxEnum const& other) const noexcept
    {
        return _value < other._value;
    }
    bool _GreaterThan(unsigned int value) const noexcept
    {
        return _value > value;
    }
    bool _GreaterThan(nxEnum const& other) const noexcept
    {
        return _value > other._value;
    }

    /// Enters a row. Belongs into a class's `_RegisterValues`, before `main` and on one thread.
    /// @return false, with nothing entered, for a number or token that has a row and for a token of more than
    ///         64 characters.
    static bool _Register(unsigned int value, std::string const& token, std::string const& text);

    /// Enters rows of the library's own tables, of which none is ever refused: the compiler has checked them. The
    /// result is true.
    static bool _RegisterRows(std::span<nxEnumWords const> rows);

    /// The rule of checked assignment with the bounds as constants, for constructors.
    static constexpr unsigned int _Checked(unsigned int value, unsigned int minValue, unsigned int maxValue)
    {
        bool const inside = value > minValue && value < maxValue;
        return inside || value == NX_NO_CHANGE ? value : static_cast<unsigned int>(NX_UNDEFINED);
    }

    unsigned int _value = 0;

private:
    friend class nxRegistration;

    nxEnum(nxEnum const& other) = default;

    /// The registry: number to token and text, and token to number. Built on first use and never destroyed,
    /// so that static destructors may still print.
    using Descriptions = std::pair<std::string, std::string>;
    static std::map<unsigned int, Descriptions>& _Map();
    static std::map<std::string, unsigned int>& _ReverseMap();

    static Descriptions const* _Find(unsigned int value);
    static Descriptions const& _Describe(unsigned int value);

    /// Makes the tokens of the library's own rows known, all at once and in their order, when the rows are in.
    static void _RegisterTokens();

    static bool _RegisterValues();
    NX_CORE_LOCAL static bool _registered;
};

/// What every concrete class has. The bounds are exclusive. What is only declared here is defined from the
/// class's rows in core/vocabulary/tables.
#define NX_ENUM_COMMON(Class, Lower, Upper)                                                                  \
public:                                                                                                      \
    Class() = default;                                                                                       \
    Class(Class const& other) noexcept : nxEnum()                                                            \
    {                                                                                                        \
        _value = other._value;                                                                               \
    }                                                                                                        \
    Class(nxEnumValue value) noexcept                                                                        \
    {                                                                                                        \
        _value = _Checked(value, _lowerBound, _upperBound);                                                  \
    }                                                                                                        \
    std::string GetClassNameA() override;                                                                    \
                                                                                                             \
protected:                                                                                                   \
    unsigned int _MinValue() const override;                                                                 \
    unsigned int _MaxValue() const override;                                                                 \
                                                                                                             \
private:                                                                                                     \
    friend class nxRegistration;                                                                             \
    static constexpr unsigned int _lowerBound = Lower;                                                       \
    static constexpr unsigned int _upperBound = Upper;                                                       \
    static bool _RegisterValues();                                                                           \
    NX_CORE_LOCAL static bool _registered;                                                                   \
                                                                                                             \
public:

/// Declares a concrete class: checked assignment from an enumerator; a copy, an assignment and comparisons of
/// its own kind that take the number as it is.
#define NX_ENUM_CLASS(Class, Lower, Upper)                                                                   \
    NX_ENUM_COMMON(Class, Lower, Upper)                                                                      \
    using nxEnum::operator=;                                                                                 \
    Class& operator=(nxEnumValue value) noexcept                                                             \
    {                                                                                                        \
        (void)_Set(value);                                                                                   \
        return *this;                                                                                        \
    }                                                                                                        \
    Class& operator=(Class const& other) noexcept                                                            \
    {                                                                                                        \
        _value = other._value;                                                                               \
        return *this;                                                                                        \
    }                                                                                                        \
    bool operator==(Class const& other) const noexcept                                                       \
    {                                                                                                        \
        return _EqualTo(other);                                                                              \
    }                                                                                                        \
    bool operator!=(Class const& other) const noexcept                                                       \
    {                                                                                                        \
        return _NotEqualTo(other);                                                                           \
    }

/// Declares a concrete class without assignments and comparisons of its own: assigning one to another is
/// checked.
#define NX_ENUM_CLASS_PLAIN(Class, Lower, Upper)                                                             \
    NX_ENUM_COMMON(Class, Lower, Upper)                                                                      \
    Class& operator=(Class const& other) = default;

/// Declares the order of a class whose values are ordered: that of their numbers.
#define NX_ENUM_LESS(Class)                                                                                  \
    bool operator<(Class const& other) const noexcept                                                        \
    {                                                                                                        \
        return _LessThan(other);                                                                             \
    }
