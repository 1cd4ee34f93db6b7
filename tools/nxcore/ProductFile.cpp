#include "ProductFile.h"

#include "PriceWords.h"
#include "RowLines.h"
#include "core/prices/nxVolumeConverter_Raw.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nxTool
{
namespace
{
constexpr std::array<std::string_view, 10> columnNames = {
    "symbol",       "exchange", "description", "type", "currency",
    "price_format", "tick",     "tick_table",  "last", "volume"};

std::string Quoted(std::string const& text)
{
    return '"' + text + '"';
}

/// One row on its way to a product; collects its faults.
class RowReader
{
public:
    RowReader(nxCSVFileRow const& header, std::vector<unsigned int> const& positions, nxCSVFileRow const& row,
              Problem place, Result& result)
        : _header(header), _positions(positions), _row(row), _place(std::move(place)), _result(result)
    {
    }

    std::optional<Product> Read();

private:
    std::string _Get(std::string_view column) const;
    void _Fail(std::string_view column, std::string reason);

    bool _CheckColumnCount();
    nxProductTypeEnum _ReadType();
    nxCurrencyEnum _ReadCurrency();
    std::optional<PriceRule> _ReadRule(nxPriceFormatEnum const& format);
    std::optional<nxDecimal> _ReadPrice(PriceRule const& rule);
    nxVolume _ReadVolume();

    nxCSVFileRow const& _header;
    std::vector<unsigned int> const& _positions;
    nxCSVFileRow const& _row;
    Problem _place;
    Result& _result;
    bool _isSound = true;
};

std::string RowReader::_Get(std::string_view column) const
{
    auto const index = static_cast<std::size_t>(std::ranges::find(columnNames, column) - columnNames.begin());
    return _row.GetColValue(_positions[index]);
}

void RowReader::_Fail(std::string_view column, std::string reason)
{
    _isSound = false;
    Problem problem = _place;
    problem.column = column;
    problem.reason = std::move(reason);
    _result.AddProblem(std::move(problem));
}

std::optional<Product> RowReader::Read()
{
    if (!_CheckColumnCount())
        return std::nullopt;
    nxProductTypeEnum const type = _ReadType();
    nxCurrencyEnum const currency = _ReadCurrency();
    std::optional<nxPriceFormatEnum> const format = FindPriceFormat(_Get("price_format"));
    std::optional<PriceRule> rule;
    std::optional<nxDecimal> last;
    if (!format)
        _Fail("price_format", UnknownPriceFormat(_Get("price_format")));
    else
        rule = _ReadRule(*format);
    if (rule)
        last = _ReadPrice(*rule);
    nxVolume const volume = _ReadVolume();
    if (!_isSound || !rule)
        return std::nullopt;
    return Product{_Get("symbol"), _Get("exchange"), type, currency, *format, std::move(*rule), last, volume};
}

/// The first row may name more columns than are read here; each row has all of them.
bool RowReader::_CheckColumnCount()
{
    unsigned int const count = _row.GetColCount();
    unsigned int const expected = _header.GetColCount();
    std::string const counts = std::to_string(count) + " columns in place of " + std::to_string(expected);
    if (count > expected)
        _Fail("", "too many columns: " + counts);
    else if (count < expected)
        _Fail(_header.GetColValue(count), "too few columns: " + counts);
    return count == expected;
}

nxProductTypeEnum RowReader::_ReadType()
{
    nxProductTypeEnum type;
    if (!type.SetFromCode(_Get("type")).IsOK())
        _Fail("type", "unknown product type " + Quoted(_Get("type")));
    return type;
}

nxCurrencyEnum RowReader::_ReadCurrency()
{
    nxCurrencyEnum currency;
    (void)currency.SetFromString(_Get("currency"));
    if (!nxEnum::IsRegisteredEnumValue(currency.GetValue()) || !currency.IsSpecificTypeForInstance())
        _Fail("currency", "unknown currency " + Quoted(_Get("currency")));
    return currency;
}

std::optional<PriceRule> RowReader::_ReadRule(nxPriceFormatEnum const& format)
{
    if (std::string const name = _Get("tick_table"); !name.empty())
    {
        nxVariableTickTable const* const ladder = FindLadder(name);
        if (ladder != nullptr)
            return PriceRule(format, *ladder);
        _Fail("tick_table", UnknownLadder(name));
        return std::nullopt;
    }
    std::string const text = _Get("tick");
    if (text.empty() && !PriceRule::NeedsTick(format))
        return PriceRule(format);
    std::string reason = "neither a tick nor a tick table";
    std::optional<nxDecimal> const tick = text.empty() ? std::nullopt : ReadTick(text, reason);
    if (tick)
        return PriceRule(format, *tick);
    _Fail("tick", reason);
    return std::nullopt;
}

std::optional<nxDecimal> RowReader::_ReadPrice(PriceRule const& rule)
{
    std::string const text = _Get("last");
    if (text.empty())
        return std::nullopt;
    std::string const fault = rule.GetFault(text);
    if (!fault.empty())
        _Fail("last", fault);
    return rule.Read(text);
}

nxVolume RowReader::_ReadVolume()
{
    nxVolume volume;
    bool tooPrecise = false;
    std::string const text = _Get("volume");
    bool const isNumber = text.find_first_not_of("0123456789") == std::string::npos;
    constexpr std::size_t safeDigits = 9; // more may wrap at 32 bits
    if (!isNumber)
        _Fail("volume", '"' + text + "\" is no whole number");
    else if (!nxVolumeConverter_Raw().SetVolumeFromString(text, volume, tooPrecise) ||
             (text.size() > safeDigits && text != std::to_string(volume.GetValue())))
        _Fail("volume", text + " is more than a volume holds");
    return volume;
}

/// Where in a row each of columnNames stands, or nothing for a column that the first row doesn't name.
std::optional<std::vector<unsigned int>> FindColumns(nxCSVFileRow const& header, Problem place,
                                                     Result& result)
{
    std::vector<unsigned int> positions;
    for (std::string_view const name : columnNames)
    {
        unsigned int position = 0;
        while (position < header.GetColCount() && header.GetColValue(position) != name)
            ++position;
        if (position == header.GetColCount())
        {
            place.column = name;
            place.reason = "the first row does not name this column";
            result.AddProblem(place);
            return std::nullopt;
        }
        positions.push_back(position);
    }
    return positions;
}
} // namespace

std::optional<std::vector<Product>> ReadProducts(std::string const& path, Result& result)
{
    constexpr char separator = ',';
    RowLines lines(separator);
    nxCSVFileReader reader(separator, true, &lines);
    bool const isWhole = ReadRows(reader, path, lines, result);
    if (reader.GetRowCount() == 0)
    {
        if (isWhole)
            result.AddProblem({path, 0, "", "holds no products"});
        return std::nullopt;
    }
    nxCSVFileRow const& header = *reader.GetRow(0);
    auto const positions = FindColumns(header, {path, lines.GetLine(0), "", ""}, result);
    if (!positions)
        return std::nullopt;
    std::vector<Product> products;
    for (unsigned int index = 1; index < reader.GetRowCount(); ++index)
    {
        RowReader row(header, *positions, *reader.GetRow(index), {path, lines.GetLine(index), "", ""},
                      result);
        if (auto product = row.Read())
            products.push_back(std::move(*product));
    }
    return products;
}
} // namespace nxTool
