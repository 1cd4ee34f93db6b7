// Amounts with a currency, ratios and exchange rates: what mixes, how they compare, their texts, who owns a
// rate, and the process's one converter.
#include "core/numbers/nxMoney.h"
#include "core/logging/nxLogSite.h"
#include "core/numbers/nxExchangeRateConverter.h"
#include "core/numbers/nxRatio.h"
#include "core/text/nxStringHelper.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>
#include <tuple>

namespace
{

nxMoney Money(std::string const& text)
{
    nxMoney money;
    EXPECT_TRUE(money.SetFromString(text, '.').IsOK()) << text;
    return money;
}

nxExchangeRate Rate(nxEnumValue source, nxEnumValue target, char const* rate)
{
    return nxExchangeRate(source, target, nxDecimal(rate, '.'));
}

nxExchangeRateList List(std::initializer_list<nxExchangeRate> rates)
{
    nxExchangeRateList list;
    for (nxExchangeRate const& rate : rates)
        list.SetExchangeRate(rate);
    return list;
}

std::string Listed(nxExchangeRateList const& list)
{
    std::string text;
    for (auto const& [key, rate] : list.GetExchangeRateMap())
        text += rate->GetAsString() + " ";
    return text;
}

/// Which of == != < <= > >= hold, in that order.
template <class ValueT>
std::string Holding(ValueT const& left, ValueT const& right)
{
    return std::string(left == right ? "== " : "") + (left != right ? "!= " : "") +
           (left < right ? "< " : "") + (left <= right ? "<= " : "") + (left > right ? "> " : "") +
           (left >= right ? ">= " : "");
}

using nxExchangeRateLog = nxRecordingTest;

struct Keys : nxExchangeRateList
{
    using nxExchangeRateList::_GetMapKey;
};

} // namespace

TEST(nxMoney, Text)
{
    nxMoney noChange;
    noChange.SetNoChange();
    EXPECT_TRUE(noChange.IsNoChange() && noChange.GetCurrency().IsNoChange());
    using Row = std::tuple<nxMoney, char const*, char const*>;
    for (auto const& [money, text, logText] :
         {Row{nxMoney(nxDecimal("100.50"), NX_USD), "100,50USD", "100.50USD"},
          Row{Money("-1.5EUR"), "-1,5EUR", "-1.5EUR"}, Row{nxMoney(), "0???", "0???"},
          Row{nxMoney::GetNullMoney(), "???", "NULL"}, Row{Money("USD"), "USD", "NULL"},
          Row{noChange, "NO_CHANGE", "NO_CHANGE"}}) // by its currency
    {
        EXPECT_EQ(money.GetAsString(','), text);
        EXPECT_EQ(money.GetAsLogString(), logText);
    }
    for (char const* text : {"", "US", "100.50", "1usd", "1BUY", "1 USD", "1,5USD", "-USD", "USD1"})
    {
        nxMoney money = Money("7EUR");
        EXPECT_TRUE(nxStringHelper::SetFromString(text, money, '.') == NX_ERR_INVALID_PARAMETER) << text;
        EXPECT_TRUE(money.IsNull() && money.GetCurrency().IsUndefined()) << text;
    }
}

TEST(nxMoney, Arithmetic)
{
    nxMoney const two = Money("2USD");
    nxMoney const three = Money("3.0USD");
    nxMoney const euros = Money("3EUR");
    nxDecimal const half("0.5");
    nxMoney money(two);
    money += half;
    money *= three;
    EXPECT_EQ(&-money, &money); // changes the object
    std::string results;
    for (nxMoney const& result : {two + three, two - three, two * three, two / three, two + half, two - half,
                                  two * half, two / half, money, two + Money("USD")})
        results += result.GetAsString() + ' ';
    EXPECT_EQ(results, "5.0USD -1.0USD 6.0USD 0.7USD 2.5USD 1.5USD 1.0USD 4.0USD -7.5USD "
                       "2USD "); // a null on the right is ignored
    for (nxMoney const& mixed : {two + euros, two - euros, two * euros, two / euros, two + nxMoney()})
        EXPECT_TRUE(mixed.IsNull() && mixed.GetCurrency().IsUndefined());
}

TEST(nxMoney, Comparison)
{
    using Row = std::tuple<char const*, char const*, char const*>;
    for (
        auto const& [left, right, holding] :
        {// Null amounts sort below; across currencies the amount and the currency, by its number, must agree.
         Row{"1.0EUR", "1.00EUR", "== <= >= "}, Row{"1EUR", "2EUR", "!= < <= "},
         Row{"2EUR", "1EUR", "!= > >= "}, Row{"EUR", "EUR", "== <= >= "}, Row{"EUR", "1EUR", "!= < <= "},
         Row{"1EUR", "1USD", "!= < <= "}, Row{"1EUR", "2USD", "!= < <= "}, Row{"2EUR", "1USD", "!= "},
         Row{"1USD", "1EUR", "!= > >= "}, Row{"1USD", "2EUR", "!= "}, Row{"2USD", "1EUR", "!= > >= "}})
        EXPECT_EQ(Holding(Money(left), Money(right)), holding) << left << ' ' << right;
}

TEST(nxRatio, ValuesAndTexts)
{
    nxRatio ratio;
    EXPECT_TRUE(ratio.IsNull() && ratio.GetAsString().empty() && ratio.GetAsLogString() == "NULL");
    ratio.SetValue(0, 5);
    EXPECT_TRUE(ratio.IsNull() && ratio.GetRHS() == 5 && nxRatio(0, 5).IsValid());
    ratio.SetNoChange();
    EXPECT_TRUE(ratio.IsNoChange() && ratio.GetLHS() == 0 && ratio.GetRHS() == 0);
    EXPECT_EQ(ratio.GetAsLogString(), "NO_CHANGE");

    EXPECT_TRUE(ratio.SetFromString("01:4294967298").IsOK()); // wraps
    EXPECT_EQ(ratio.GetAsString(), "1:2");
    for (auto const& text : std::vector<std::string>{
             "", ":", "1:", "1:2:3", "1/2", "-1:2", " 1:2", "0:5", "5:0", "4294967296:1", {"1:2\0", 4}})
    {
        ratio = nxRatio(7, 7);
        EXPECT_TRUE(ratio.SetFromString(text) == NX_ERR_INVALID_PARAMETER) << text;
        EXPECT_TRUE(ratio.IsNull() && ratio.GetLHS() == 0 && ratio.GetRHS() == 0) << text;
    }
}

TEST(nxRatio, Comparison)
{
    nxRatio nullWithNumbers;
    nullWithNumbers.SetValue(0, 5);
    nxRatio noChange;
    noChange.SetNoChange();
    using Row = std::tuple<nxRatio, nxRatio, char const*>;
    for (auto const& [left, right, holding] :
         {Row{{}, nullWithNumbers, "== <= >= "}, Row{{}, noChange, "!= < <= "},
          Row{{1, 2}, noChange, "!= > >= "}, Row{noChange, {0, 0}, "!= < <= "},
          Row{{1, 3}, {1, 2}, "!= < <= "}, Row{{1, 2}, {1, 2}, "== <= >= "},
          Row{{1, 2}, {2, 4}, "!= > >= "},          // neither equal nor less
          Row{{65536, 1}, {1, 65536}, "!= < <= "}}) // 2^32 wraps to 0
        EXPECT_EQ(Holding(left, right), holding) << left.GetAsString() << ' ' << right.GetAsString();
}

TEST(nxExchangeRate, ConvertsOneWayOnly)
{
    nxExchangeRate const rate = Rate(NX_USD, NX_EUR, "0.92");
    EXPECT_EQ(rate.GetAsString(), "USD:EUR=0.92");
    EXPECT_EQ(rate.ConvertToTargetCurrency(Money("0.1250USD")).GetAsString(), "0.1150EUR");
    EXPECT_EQ(rate.ConvertToTargetCurrency(Money("100EUR")).GetAsString(), "???"); // null money
    EXPECT_EQ(rate.ConvertToTargetCurrency(Money("USD")).GetAsString(), "EUR");
    // A null rate is ignored, as a null factor always is.
    EXPECT_EQ(Rate(NX_USD, NX_EUR, "").ConvertToTargetCurrency(Money("100USD")).GetAsString(), "100EUR");
    EXPECT_EQ(nxExchangeRate().GetAsString(), "UNDEFINED:UNDEFINED=0");
}

TEST(nxExchangeRateList, SetKeepsTheObjectOfAPairAndAssignmentAddsAndReplaces)
{
    nxExchangeRateList list =
        List({Rate(NX_USD, NX_EUR, "0.90"), Rate(NX_EUR, NX_USD, "1.10"), Rate(NX_USD, NX_GBP, "0.80")});
    std::vector<nxExchangeRate const*> rates(1, nullptr);
    list.GetExchangeRates(NX_USD, rates);
    ASSERT_EQ(rates.size(), 2u);
    nxExchangeRate const* const held = rates[0]->GetTargetCurrency() == NX_EUR ? rates[0] : rates[1];
    list.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.95"));
    EXPECT_EQ(held->GetAsString(), "USD:EUR=0.95");
    EXPECT_EQ(list.ConvertToTargetCurrency(Money("100.00USD"), NX_EUR).GetAsString(), "95.00EUR");
    EXPECT_TRUE(list.ConvertToTargetCurrency(Money("100.00GBP"), NX_USD).IsNull()); // no inverse

    nxExchangeRateList right = List({Rate(NX_USD, NX_EUR, "0.97")});
    nxExchangeRateList const copy(right);
    list = right;
    nxExchangeRateList& same = list;
    list = same;
    right.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.99"));
    EXPECT_EQ(list.ConvertToTargetCurrency(Money("100.00USD"), NX_EUR).GetAsString(), "97.00EUR");
    EXPECT_EQ(Listed(copy), "USD:EUR=0.97 ");
    list.GetExchangeRates(NX_USD, rates);
    list.RemoveExchangeRates(rates[0]->GetSourceCurrency()); // which goes with the first of them
    EXPECT_EQ(Listed(list), "EUR:USD=1.10 ");

    nxCurrencyEnum const eur(NX_EUR);
    nxCurrencyEnum const usd(NX_USD);
    EXPECT_EQ(Keys::_GetMapKey(usd, eur), eur.GetValue() * 1450 + usd.GetValue());
    EXPECT_EQ(Keys::_GetMapKey(Rate(NX_EUR, NX_USD, "1")), usd.GetValue() * 1450 + eur.GetValue());
}

TEST_F(nxExchangeRateLog, DumpListsTheRatesBetweenDashes)
{
    List({Rate(NX_USD, NX_EUR, "0.90"), Rate(NX_EUR, NX_USD, "")}).Dump(NX_WRN);
    std::string const dashes(40, '-');
    EXPECT_EQ(Messages(), (std::vector<std::string>{dashes, "USD:EUR=0.90", "EUR:USD=NULL", dashes}));
    EXPECT_EQ(Levels(), std::vector<unsigned int>(4, NX_WRN));
}

TEST(nxExchangeRateConverter, ListAndDefaultTarget)
{
    nxExchangeRateConverter& converter = nxExchangeRateConverter::GetInstance();
    converter.SetAndOwnExchangeRateList(nullptr);
    nxMoney const dollars = Money("100.00USD");
    EXPECT_TRUE(converter.ConvertToTargetCurrency(dollars, NX_EUR).IsNull());
    EXPECT_EQ(converter.ConvertToTargetCurrency(dollars, NX_USD).GetAsString(), "100.00USD");
    EXPECT_EQ(converter.ConvertToTargetCurrency(dollars).GetAsString(), "100.00USD"); // no default target
    converter.SetDefaultTargetCurrency(NX_EUR);
    EXPECT_TRUE(converter.ConvertToTargetCurrency(dollars).IsNull()); // no list

    nxExchangeRateList list = List({Rate(NX_USD, NX_EUR, "0.90")});
    converter.SetExchangeRateList(list);
    list.RemoveExchangeRates(NX_USD); // the converter has a copy
    EXPECT_EQ(converter.ConvertToTargetCurrency(dollars).GetAsString(), "90.00EUR");

    nxExchangeRateList const rates = List({Rate(NX_USD, NX_EUR, "0.80")});
    auto* const owned = new nxExchangeRateList(rates);
    converter.SetAndOwnExchangeRateList(owned);
    converter.SetAndOwnExchangeRateList(owned); // leaves it as it is
    converter.Lock();
    EXPECT_EQ(converter.ConvertToTargetCurrencyNoLock(dollars).GetAsString(), "80.00EUR");
    EXPECT_EQ(converter.ConvertToTargetCurrencyNoLock(dollars, NX_EUR).GetAsString(), "80.00EUR");
    EXPECT_TRUE(converter.GetDefaultTargetCurrencyNoLock() == NX_EUR);
    converter.Unlock();
    converter.SetDefaultTargetCurrency(nxCurrencyEnum());

    // For the thread and address sanitizers: rates are replaced while others convert by them.
    std::atomic<int> wrong{0};
    auto const work = [&](int thread)
    {
        for (int n = 0; n < 1000; ++n)
            if (thread == 0)
                converter.SetExchangeRateList(rates);
            else
                wrong += converter.ConvertToTargetCurrency(dollars, NX_EUR).GetAsString() != "80.00EUR";
    };
    RunTogether(4, work);
    EXPECT_EQ(wrong, 0);
}

// Whoever holds the rates may fork, and his child holds them, too; the child of another finds them free.
TEST(nxExchangeRateConverter, IsHeldAcrossAForkByItsHolderAlone)
{
    nxExchangeRateConverter& converter = nxExchangeRateConverter::GetInstance();
    std::atomic<bool> isHeld = false;
    std::thread other(
        [&]
        {
            converter.Lock();
            isHeld = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            NX_LOG(NX_INF, "a host may log while it holds the rates"); // and a fork has locked the log
            converter.Unlock();
        });
    while (!isHeld)
        std::this_thread::yield();
    auto const askInChild = [&converter](bool isHolder)
    {
        alarm(10); // a child that hangs ends by this
        if (isHolder)
            converter.Unlock();
        (void)converter.GetDefaultTargetCurrency();
        return 0;
    };
    EXPECT_EQ(RunInChild([&] { return askInChild(false); }), 0);
    converter.Lock();
    EXPECT_EQ(RunInChild([&] { return askInChild(true); }), 0);
    auto const askWhileHeld = [&converter]
    {
        ualarm(100000, 0); // ends the wait for what the child itself holds
        return converter.GetDefaultTargetCurrency().GetValue();
    };
    EXPECT_EQ(RunInChild(askWhileHeld), 128 + SIGALRM);
    converter.Unlock();
    (void)converter.GetDefaultTargetCurrency();
    other.join();
}
