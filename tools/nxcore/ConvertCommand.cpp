// `nxcore convert`: an amount of money in another currency, by a file of rates.

#include "Arguments.h"
#include "Commands.h"
#include "PriceRule.h"
#include "Result.h"
#include "RowLines.h"
#include "Words.h"

#include "core/numbers/nxExchangeRateList.h"
#include "core/text/nxCSVFileReader.h"

#include <optional>

namespace nxTool
{
namespace
{
constexpr Option options[] = {
    {"rates", "FILE", "the rates, a line each, such as USD:EUR=0.92", Completes::File},
};

std::optional<nxCurrencyEnum> ReadCurrency(std::string const& token)
{
    nxCurrencyEnum currency;
    if (!currency.SetFromString(token) || !currency.IsSpecificTypeForInstance())
        return std::nullopt;
    return currency;
}

std::vector<std::string_view> CurrencyTokens()
{
    std::vector<nxEnumValue> values;
    nxCurrencyEnum().GetRegisteredEnumValuesForInstance(values);
    std::vector<std::string_view> tokens;
    for (nxEnumValue const value : values)
        tokens.emplace_back(nxCurrencyEnum(value).GetShortDescription()); // the registry keeps the text
    return tokens;
}

Problem NoCurrency(std::string const& token)
{
    return UnknownName(Printable(token), "is no currency", CurrencyTokens());
}

/// Reads a row of "USD:EUR" and "0.92".
std::optional<nxExchangeRate> ReadRate(nxCSVFileRow const& row, Problem& problem)
{
    std::string const pair = row.GetColValue(0);
    std::size_t const colon = pair.find(':');
    if (row.GetColCount() != 2 || colon == std::string::npos)
    {
        problem.reason = "a line such as USD:EUR=0.92 expected";
        return std::nullopt;
    }
    auto const source = ReadCurrency(pair.substr(0, colon));
    auto const target = ReadCurrency(pair.substr(colon + 1));
    nxDecimal const rate(row.GetColValue(1), '.');
    if (!source || !target)
    {
        Problem const unknown = NoCurrency(source ? pair.substr(colon + 1) : pair.substr(0, colon));
        problem.column = unknown.column;
        problem.reason = unknown.reason;
        return std::nullopt;
    }
    if (!rate.IsPositive() || HasTooManyDigits(row.GetColValue(1)))
    {
        problem.column = Printable(row.GetColValue(1));
        problem.reason = "a rate above zero expected, of " + std::to_string(mostDigits) + " digits at most";
        return std::nullopt;
    }
    return nxExchangeRate(*source, *target, rate);
}

/// Every sound line becomes a rate, every other one a problem.
/// @return false when the file gave nothing at all.
bool ReadRates(std::string const& path, nxExchangeRateList& rates, Result& result)
{
    RowLines lines;
    nxCSVFileReader reader('=', false, &lines);
    bool const isWhole = ReadRows(reader, path, lines, result);
    for (unsigned int row = 0; row < reader.GetRowCount(); ++row)
    {
        Problem problem{path, lines.GetLine(row), "", ""};
        if (auto const rate = ReadRate(*reader.GetRow(row), problem))
            rates.SetExchangeRate(*rate);
        else
            result.AddProblem(problem);
    }
    return isWhole || reader.GetRowCount() != 0;
}

std::optional<nxMoney> ReadMoney(std::string const& text, Result& result)
{
    nxMoney money;
    if (!HasTooManyDigits(text) && money.SetFromString(text, '.').IsOK() && money.IsValid() &&
        money.GetCurrency().IsSpecificTypeForInstance())
        return money;
    result.AddProblem(Printable(text), "an amount such as 100.50USD expected, of " +
                                           std::to_string(mostDigits) + " digits at most");
    return std::nullopt;
}

nxExchangeRate const* FindRate(nxExchangeRateList const& rates, nxCurrencyEnum const& source,
                               nxCurrencyEnum const& target)
{
    std::vector<nxExchangeRate const*> fromSource;
    rates.GetExchangeRates(source, fromSource);
    for (nxExchangeRate const* rate : fromSource)
        if (rate->GetTargetCurrency() == target)
            return rate;
    return nullptr;
}

Status Run(Arguments const& arguments, Result& result)
{
    std::optional<nxMoney> const money = ReadMoney(arguments.Get(0), result);
    std::optional<nxCurrencyEnum> const target = ReadCurrency(arguments.Get(1));
    if (!target)
        result.AddProblem(NoCurrency(arguments.Get(1)));
    std::optional<std::string> const file = arguments.GetOption("rates");
    if (!file)
        result.AddProblem("-rates", "a file of rates expected");
    nxExchangeRateList rates;
    if (!money || !target || !file || !ReadRates(*file, rates, result))
        return Status::Unusable;

    nxMoney const converted = rates.ConvertToTargetCurrency(*money, *target);
    nxExchangeRate const* const rate = FindRate(rates, money->GetCurrency(), *target);
    bool const isConverted = converted.IsValid();
    if (rate != nullptr &&
        !FitsDigits(money->GetDecimalValue().GetAsDouble() * rate->GetConversionRate().GetAsDouble(),
                    converted.GetDecimalValue().GetDecimalPlaces()))
        return result.Refuse(arguments.Get(0),
                             "has more than " + std::to_string(mostDigits) + " digits when converted");
    result.AddField("amount", "amount", money->GetAsString('.'));
    result.AddField("rate", "rate", rate == nullptr ? Cell("none", nullptr) : Cell(rate->GetAsString()));
    result.AddField("converted", "converted",
                    isConverted ? Cell(converted.GetAsString('.')) : Cell("none", nullptr));
    if (!isConverted)
        result.AddProblem({*file, 0,
                           money->GetCurrency().GetShortDescription() + ":" + target->GetShortDescription(),
                           "has no rate; neither an inverse rate nor a third currency is used"});
    return result.GetProblems().empty() ? Status::Good : Status::Faulty;
}
} // namespace

Command const convertCommand = {
    .name = "convert",
    .arguments = "AMOUNT TO",
    .summary = "convert an amount of money by a file of rates",
    .details =
        "Converts AMOUNT, such as 100.50USD, to the currency TO. Each line of the file of rates says how\n"
        "many of the second currency one unit of the first is worth; of two lines for a pair the last one\n"
        "holds. Empty lines, and those that begin with ; or #, are left out. The result has as many\n"
        "decimals as the more precise of amount and rate. Without a rate for that very pair the exit\n"
        "status is 1.",
    .example = "nxcore convert 100.50USD EUR -rates examples/rates.txt",
    .options = options,
    .fewestArguments = 2,
    .mostArguments = 2,
    .completes = Completes::Currency,
    .completedArgument = 1,
    .run = Run,
};
} // namespace nxTool
