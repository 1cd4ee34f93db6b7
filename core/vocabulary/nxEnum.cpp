#include "core/vocabulary/nxEnum.h"

#include "core/vocabulary/nxEnumIndex.h"
#include "core/vocabulary/nxEnumWords.h"

#include <tuple>

namespace
{
constexpr unsigned int firstSecurityError = 1001000;
constexpr unsigned int lastSecurityError = 1001048;

/// Calls use(number) for each registered number of the closed interval, in ascending order. A class whose
/// bounds are crossed has an empty interval, whatever rows lie between them.
template <typename Map, typename Use>
void ForEachRegistered(Map const& map, unsigned int minValue, unsigned int maxValue, Use use)
{
    for (auto row = map.lower_bound(minValue); row != map.end() && row->first <= maxValue; ++row)
        use(static_cast<nxEnumValue>(row->first));
}
} // namespace

nxEnum::Descriptions const* nxEnum::_Find(unsigned int value)
{
    if (value < nxEnumWords::numberLimit)
        return nxEnumIndex::ofRegistry.Find(value);
    auto const& map = _Map();
    auto const row = map.find(value);
    return row == map.end() ? nullptr : &row->second;
}

nxEnum::Descriptions const& nxEnum::_Describe(unsigned int value)
{
    Descriptions const* const descriptions = _Find(value);
    return descriptions != nullptr ? *descriptions : *_Find(NX_NOT_REGISTERED);
}

std::string const& nxEnum::GetShortDescription() const
{
    Descriptions const* const descriptions = nxEnumIndex::ofRegistry.Find(_value);
    return descriptions != nullptr ? descriptions->first : _Describe(_value).first;
}

std::string const& nxEnum::GetLongDescription() const
{
    Descriptions const* const descriptions = nxEnumIndex::ofRegistry.Find(_value);
    return descriptions != nullptr ? descriptions->second : _Describe(_value).second;
}

std::string const& nxEnum::GetAsString() const
{
    return GetShortDescription();
}

bool nxEnum::IsTimeout() const noexcept
{
    return _value == NX_ERR_MSG_RECEIPT_TIMED_OUT || _value == NX_ERR_MSG_RESPONSE_TIMED_OUT;
}

bool nxEnum::IsSecurityError() const noexcept
{
    return _value >= firstSecurityError && _value <= lastSecurityError;
}

bool nxEnum::IsSpecificTypeForInstance()
{
    return _value > _MinValue() && _value < _MaxValue();
}

bool nxEnum::IsRegisteredEnumValue(unsigned int value)
{
    return _Find(value) != nullptr;
}

void nxEnum::GetRegisteredEnumValuesForInstance(std::vector<nxEnumValue>& values) const
{
    values.clear();
    ForEachRegistered(_Map(), _MinValue(), _MaxValue(),
                      [&values](nxEnumValue value) { values.push_back(value); });
}

void nxEnum::GetRegisteredEnumValuesForInstance(std::set<nxEnumValue>& values) const
{
    values.clear();
    ForEachRegistered(_Map(), _MinValue(), _MaxValue(),
                      [&values](nxEnumValue value) { values.insert(values.end(), value); });
}

bool nxEnum::SetFromShortDescriptionString(std::string const& token)
{
    std::uint64_t const number = nxEnumIndex::ofRegistry.Find(token);
    return number != nxEnumIndex::none && _Set(static_cast<unsigned int>(number));
}

bool nxEnum::SetFromString(std::string const& token)
{
    return SetFromShortDescriptionString(token);
}

nxEnum const& nxEnum::operator=(unsigned int value) noexcept
{
    (void)_Set(value);
    return *this;
}

nxEnum const& nxEnum::operator=(nxEnumValue value) noexcept
{
    (void)_Set(value);
    return *this;
}

nxEnum const& nxEnum::operator=(nxEnum const& other) noexcept
{
    (void)_Set(other);
    return *this;
}

bool nxEnum::_Set(unsigned int value) noexcept
{
    _value = _Checked(value, _MinValue(), _MaxValue());
    return _value == value;
}

bool nxEnum::_Set(nxEnumValue value) noexcept
{
    return _Set(static_cast<unsigned int>(value));
}

bool nxEnum::_Set(nxEnum const& other) noexcept
{
    return _Set(other._value);
}

bool nxEnum::_Register(unsigned int value, std::string const& token, std::string const& text)
{
    auto& map = _Map();
    auto& reverseMap = _ReverseMap();
    auto const place = map.lower_bound(value);
    if (place != map.end() && place->first == value)
        return false;
    auto const reversePlace = reverseMap.lower_bound(token);
    if (reversePlace != reverseMap.end() && reversePlace->first == token)
        return false;
    if (token.size() > nxEnumWords::maxTokenLength)
        return false;
    reverseMap.emplace_hint(reversePlace, token, value);
    auto const row = map.emplace_hint(place, value, Descriptions(token, text));
    nxEnumIndex::ofRegistry.Add(value, row->second);
    return true;
}

bool nxEnum::_RegisterRows(std::span<nxEnumWords const> rows)
{
    auto& map = _Map();
    auto& index = nxEnumIndex::ofRegistry;
    // The rows of a class stand in ascending order, but for a few: each belongs behind the one before.
    auto place = map.end();
    for (nxEnumWords const& row : rows)
    {
        auto const entered =
            map.emplace_hint(place, std::piecewise_construct, std::forward_as_tuple(row.number),
                             std::forward_as_tuple(row.GetToken(), row.GetText()));
        index.Add(row, entered->second);
        place = std::next(entered);
    }
    return true;
}

void nxEnum::_RegisterTokens()
{
    auto& reverseMap = _ReverseMap();
    for (unsigned int const number : nxEnumWords::NumbersByToken())
        reverseMap.emplace_hint(reverseMap.end(), _Find(number)->first, number);
    nxEnumIndex::ofRegistry.AddTokens();
}

bool nxEnum::_RegisterValues()
{
    return _RegisterRows(nxEnumWords::OfAllClasses());
}
