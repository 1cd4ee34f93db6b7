// Decimals and the texts of numbers, beside what a host would take instead: the standard library's conversions, its
// decimal type and, where it is present, fmt.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <decimal/decimal>
#include <random>
#include <string>

#if __has_include(<fmt/compile.h>)
#define FMT_HEADER_ONLY
#include <fmt/compile.h>
#include <fmt/format.h>
#define NX_BENCH_FMT
#endif

namespace
{

constexpr std::size_t count =
    32768; // a processor learns a thousand prices by heart, and guesses every branch
using StandardDecimal = std::decimal::decimal64;

/// Prices of 0 to 99,999.99, in every form that a contestant takes.
struct Prices
{
    Prices()
    {
        std::mt19937_64 random(1);
        for (std::size_t i = 0; i < count; ++i)
        {
            auto const hundredths = static_cast<long long>(random() % 10000000);
            auto const factor = static_cast<long long>(random() % 1000000) + 1;
            decimals[i] = nxDecimal::ConstructFromValueAndDecimalPlaces(hundredths, 2);
            others[i] = nxDecimal::ConstructFromValueAndDecimalPlaces(factor, 2);
            finer[i] = nxDecimal::ConstructFromValueAndDecimalPlaces(factor, 4);
            standard[i] = std::decimal::make_decimal64(hundredths, -2);
            standardOthers[i] = std::decimal::make_decimal64(factor, -2);
            standardFiner[i] = std::decimal::make_decimal64(factor, -4);
            doubles[i] = static_cast<double>(hundredths) / 100.0;
            wholes[i] = static_cast<int>(hundredths);
            texts[i] = decimals[i].GetAsString('.');
            wholeTexts[i] = std::to_string(wholes[i]);
        }
    }

    std::array<nxDecimal, count> decimals;
    std::array<nxDecimal, count> others;
    std::array<nxDecimal, count> finer;
    std::array<StandardDecimal, count> standard;
    std::array<StandardDecimal, count> standardOthers;
    std::array<StandardDecimal, count> standardFiner;
    std::array<double, count> doubles;
    std::array<int, count> wholes;
    std::array<std::string, count> texts;
    std::array<std::string, count> wholeTexts;
};

Prices const& GetPrices()
{
    static Prices const prices;
    return prices;
}

/// Times `work(i)` over all prices; an iteration is one of them.
template <class WorkT>
void Each(benchmark::State& state, WorkT work)
{
    std::size_t i = 0;
    for (auto _ : state)
    {
        work(i);
        i = (i + 1) % count;
    }
}

template <class ResultT, class WorkT>
void EachResult(benchmark::State& state, WorkT work)
{
    Each(state,
         [&](std::size_t i)
         {
             ResultT result = work(i);
             benchmark::DoNotOptimize(result);
         });
}

void DecimalFromText(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    nxDecimal decimal;
    Each(state,
         [&](std::size_t i)
         {
             (void)decimal.SetFromString(prices.texts[i], '.');
             benchmark::DoNotOptimize(decimal);
         });
}

void DoubleFromCharsOfPrice(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    double value = 0.0;
    Each(state,
         [&](std::size_t i)
         {
             std::string const& text = prices.texts[i];
             std::from_chars(text.data(), text.data() + text.size(), value);
             benchmark::DoNotOptimize(value);
         });
}

void DecimalToText(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    char buffer[nxDecimal::maximumTextSize];
    Each(state,
         [&](std::size_t i)
         {
             prices.decimals[i].GetAsString(buffer, '.');
             benchmark::DoNotOptimize(buffer);
             benchmark::ClobberMemory();
         });
}

void DoubleToCharsFixed(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    char buffer[64];
    Each(state,
         [&](std::size_t i)
         {
             std::to_chars(buffer, buffer + sizeof(buffer), prices.doubles[i], std::chars_format::fixed, 2);
             benchmark::DoNotOptimize(buffer);
             benchmark::ClobberMemory();
         });
}

void DecimalAddSameScale(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<nxDecimal>(state, [&](std::size_t i) { return prices.decimals[i] + prices.others[i]; });
}

void StandardAddSameScale(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<StandardDecimal>(state,
                                [&](std::size_t i) { return prices.standard[i] + prices.standardOthers[i]; });
}

void DecimalAddOtherScale(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<nxDecimal>(state, [&](std::size_t i) { return prices.decimals[i] + prices.finer[i]; });
}

void StandardAddOtherScale(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<StandardDecimal>(state,
                                [&](std::size_t i) { return prices.standard[i] + prices.standardFiner[i]; });
}

void DecimalMultiply(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<nxDecimal>(state, [&](std::size_t i) { return prices.decimals[i] * prices.others[i]; });
}

void StandardMultiply(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<StandardDecimal>(state,
                                [&](std::size_t i) { return prices.standard[i] * prices.standardOthers[i]; });
}

void DecimalDivide(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<nxDecimal>(state, [&](std::size_t i) { return prices.decimals[i] / prices.others[i]; });
}

void StandardDivide(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachResult<StandardDecimal>(state,
                                [&](std::size_t i) { return prices.standard[i] / prices.standardOthers[i]; });
}

void DecimalRoundNearest(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    nxDecimal const step(0.25, 2);
    nxRoundingMethodEnum const nearest(NX_ROUNDING_METHOD_NEAREST);
    EachResult<nxDecimal>(state,
                          [&](std::size_t i)
                          {
                              nxDecimal price = prices.decimals[i];
                              price.Round(step, nearest);
                              return price;
                          });
}

/// To a multiple of a step, which this type does by a quotient, a conversion and a product.
void StandardRoundNearest(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    StandardDecimal const step = std::decimal::make_decimal64(25ll, -2);
    StandardDecimal const half = std::decimal::make_decimal64(5ll, -1);
    EachResult<StandardDecimal>(state,
                                [&](std::size_t i)
                                {
                                    StandardDecimal const steps = prices.standard[i] / step + half;
                                    return StandardDecimal(std::decimal::decimal64_to_long_long(steps)) *
                                           step;
                                });
}

/// What `append` makes of an empty string that has room.
template <class WorkT>
void EachAppended(benchmark::State& state, WorkT append)
{
    std::string out;
    out.reserve(64);
    Each(state,
         [&](std::size_t i)
         {
             out.clear();
             append(out, i);
             benchmark::DoNotOptimize(out.data());
             benchmark::ClobberMemory();
         });
}

void HelperAppendDouble(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachAppended(state, [&](std::string& out, std::size_t i)
                 { nxStringHelper::AppendAsString(out, prices.doubles[i]); });
}

void ToCharsFixedAndStrip(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachAppended(state,
                 [&](std::string& out, std::size_t i)
                 {
                     char buffer[64];
                     char* end = std::to_chars(buffer, buffer + sizeof(buffer), prices.doubles[i],
                                               std::chars_format::fixed, 9)
                                     .ptr;
                     while (end[-1] == '0')
                         --end;
                     out.append(buffer, end[-1] == '.' ? end - 1 : end);
                 });
}

void SnprintfDouble(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachAppended(state,
                 [&](std::string& out, std::size_t i)
                 {
                     char buffer[64];
                     int const length = std::snprintf(buffer, sizeof(buffer), "%.9f", prices.doubles[i]);
                     out.append(buffer, static_cast<std::size_t>(length));
                 });
}

void HelperAppendInt(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachAppended(state, [&](std::string& out, std::size_t i)
                 { nxStringHelper::AppendAsString(out, prices.wholes[i]); });
}

void HelperIntFromText(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    int value = 0;
    Each(state,
         [&](std::size_t i)
         {
             (void)nxStringHelper::SetFromString(prices.wholeTexts[i], value);
             benchmark::DoNotOptimize(value);
         });
}

void IntFromChars(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    int value = 0;
    Each(state,
         [&](std::size_t i)
         {
             std::string const& text = prices.wholeTexts[i];
             std::from_chars(text.data(), text.data() + text.size(), value);
             benchmark::DoNotOptimize(value);
         });
}

void HelperDoubleFromText(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    double value = 0.0;
    Each(state,
         [&](std::size_t i)
         {
             (void)nxStringHelper::SetFromString(prices.texts[i], value, '.');
             benchmark::DoNotOptimize(value);
         });
}

BENCHMARK(DecimalFromText);
BENCHMARK(DoubleFromCharsOfPrice);
BENCHMARK(DecimalToText);
BENCHMARK(DoubleToCharsFixed);
BENCHMARK(DecimalAddSameScale);
BENCHMARK(StandardAddSameScale);
BENCHMARK(DecimalAddOtherScale);
BENCHMARK(StandardAddOtherScale);
BENCHMARK(DecimalMultiply);
BENCHMARK(StandardMultiply);
BENCHMARK(DecimalDivide);
BENCHMARK(StandardDivide);
BENCHMARK(DecimalRoundNearest);
BENCHMARK(StandardRoundNearest);
BENCHMARK(HelperAppendDouble);
BENCHMARK(ToCharsFixedAndStrip);
BENCHMARK(SnprintfDouble);
BENCHMARK(HelperAppendInt);
BENCHMARK(HelperIntFromText);
BENCHMARK(IntFromChars);
BENCHMARK(HelperDoubleFromText);

#ifdef NX_BENCH_FMT
void FmtAppendDouble(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachAppended(state, [&](std::string& out, std::size_t i)
                 { fmt::format_to(std::back_inserter(out), FMT_COMPILE("{}"), prices.doubles[i]); });
}

void FmtAppendInt(benchmark::State& state)
{
    Prices const& prices = GetPrices();
    EachAppended(state, [&](std::string& out, std::size_t i)
                 { fmt::format_to(std::back_inserter(out), FMT_COMPILE("{}"), prices.wholes[i]); });
}

BENCHMARK(FmtAppendDouble);
BENCHMARK(FmtAppendInt);
#endif

} // namespace
