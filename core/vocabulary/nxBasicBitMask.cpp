#include "core/vocabulary/nxBasicBitMask.h"

#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxBitMask64.h"
#include "core/vocabulary/nxBitMaskRow.h"

#include <tuple>

template <typename Mask, typename Number, typename Parameter>
bool nxBasicBitMask<Mask, Number, Parameter>::IsValid() const
{
    return (_value & (_nullBit | _noChangeBit)) == 0;
}

template <typename Mask, typename Number, typename Parameter>
bool nxBasicBitMask<Mask, Number, Parameter>::IsNoChange() const
{
    return (_value & _noChangeBit) != 0;
}

template <typename Mask, typename Number, typename Parameter>
bool nxBasicBitMask<Mask, Number, Parameter>::IsNull() const
{
    return (_value & _nullBit) != 0;
}

template <typename Mask, typename Number, typename Parameter>
void nxBasicBitMask<Mask, Number, Parameter>::SetBits(Mask const& other)
{
    if (!IsValid())
        _value = 0;
    SetBits(other.GetValue());
}

template <typename Mask, typename Number, typename Parameter>
void nxBasicBitMask<Mask, Number, Parameter>::SetBits(Parameter bits)
{
    if (!IsValid())
        _value = 0;
    _value |= bits;
}

template <typename Mask, typename Number, typename Parameter>
void nxBasicBitMask<Mask, Number, Parameter>::SetNull()
{
    _value = _nullBit;
}

template <typename Mask, typename Number, typename Parameter>
void nxBasicBitMask<Mask, Number, Parameter>::SetNoChange()
{
    _value = _noChangeBit;
}

template <typename Mask, typename Number, typename Parameter>
std::string nxBasicBitMask<Mask, Number, Parameter>::GetShortDescription(std::string const& separator) const
{
    return _Describe(separator, &std::pair<std::string, std::string>::first);
}

template <typename Mask, typename Number, typename Parameter>
std::string nxBasicBitMask<Mask, Number, Parameter>::GetLongDescription(std::string const& separator) const
{
    return _Describe(separator, &std::pair<std::string, std::string>::second);
}

template <typename Mask, typename Number, typename Parameter>
std::string nxBasicBitMask<Mask, Number, Parameter>::_Describe(
    std::string const& separator, std::string std::pair<std::string, std::string>::*word) const
{
    if (IsNull())
        return "Null";
    if (IsNoChange())
        return "No Change";
    auto const& descriptions = _GetDescriptionMap();
    auto const rows = descriptions.find(GetClassNameA());
    if (rows == descriptions.end())
        return "No Description Available";

    std::string result;
    for (int index = 0; index < std::numeric_limits<Number>::digits; ++index)
    {
        Number const bit = Number{1} << index;
        if (bit > _value)
            break;
        if ((_value & bit) == 0)
            continue;
        if (!result.empty())
            result += separator;
        auto const row = rows->second.find(bit);
        result += row == rows->second.end() ? "???" : row->second.*word;
    }
    return result;
}

template <typename Mask, typename Number, typename Parameter>
bool nxBasicBitMask<Mask, Number, Parameter>::_Register(Parameter bits, std::string const& token,
                                                        std::string const& text)
{
    return _Register(GetClassNameA(), bits, token, text);
}

template <typename Mask, typename Number, typename Parameter>
bool nxBasicBitMask<Mask, Number, Parameter>::_Register(std::string const& className, Parameter bits,
                                                        std::string const& token, std::string const& text)
{
    _GetDescriptionMap()[className].try_emplace(bits, token, text);
    return true;
}

template <typename Mask, typename Number, typename Parameter>
bool nxBasicBitMask<Mask, Number, Parameter>::_RegisterRows(nxBitMaskRow const* rows)
{
    if (rows->token == nullptr)
        return true; // a class without rows stays unknown to the registry
    auto& known = _GetDescriptionMap()[GetClassNameA()];
    // The rows stand in ascending order for the most part, so the end is where a new one belongs.
    for (nxBitMaskRow const* row = rows; row->token != nullptr; ++row)
        known.emplace_hint(known.end(), std::piecewise_construct,
                           std::forward_as_tuple(static_cast<Number>(row->bits)),
                           std::forward_as_tuple(row->token, row->text));
    return true;
}

template class nxBasicBitMask<nxBitMask, unsigned int, unsigned int>;
template class nxBasicBitMask<nxBitMask64, unsigned long long, unsigned long long const&>;
