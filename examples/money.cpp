// A price on its tick, a fee in a currency, and that fee in euros.
#include "core/numbers/nxExchangeRateConverter.h"
#include "core/text/nxStringHelper.h"
#include "core/text/nxStringParser.h"

#include <cstdio>

namespace
{
/// Reads "USD:EUR=0.92".
nxErrorEnum AddRate(std::string const& line, nxExchangeRateList& rates)
{
    nxStringParser parser(line);
    nxCurrencyEnum source;
    nxCurrencyEnum target;
    nxDecimal rate;
    nxErrorEnum result = nxStringHelper::SetFromString(parser.GetSubString(':'), source);
    if (result.IsOK())
        result = nxStringHelper::SetFromString(parser.GetSubString('='), target);
    if (result.IsOK())
        result = nxStringHelper::SetFromString(parser.GetSubString('='), rate, '.');
    if (result.IsOK())
        rates.SetExchangeRate(nxExchangeRate(source, target, rate));
    return result;
}
} // namespace

int main()
{
    nxDecimal price("101.37");
    price.Round(nxDecimal(0.25, 2), NX_ROUNDING_METHOD_DOWN);
    price += nxDecimal(1, 2); // one whole unit, at two places
    std::printf("price %s\n", price.GetAsString().c_str());

    nxMoney fee;
    if (!fee.SetFromString("2.50USD").IsOK())
        return 1;
    fee = fee * nxDecimal(3, 0);

    nxExchangeRateList rates;
    if (!AddRate("USD:EUR=0.92", rates).IsOK())
        return 1;
    nxExchangeRateConverter& converter = nxExchangeRateConverter::GetInstance();
    converter.SetExchangeRateList(rates);
    nxMoney const inEuros = converter.ConvertToTargetCurrency(fee, NX_EUR);
    std::printf("fee %s, which is %s\n", fee.GetAsString().c_str(), inEuros.GetAsString().c_str());
    return price.GetAsString() == "102.25" && inEuros.GetAsString() == "6.90EUR" ? 0 : 1;
}
