// Rates by ordered pair, who owns them, and the process's one converter.
#include "core/numbers/nxExchangeRateConverter.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

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

std::string Listed(nxExchangeRateList const& list)
{
    std::string text;
    for (auto const& [key, rate] : list.GetExchangeRateMap())
        text += rate->GetAsString() + " ";
    return text;
}

class nxExchangeRateLog : public nxRecordingTest
{
};

class Keys : public nxExchangeRateList
{
public:
    using nxExchangeRateList::_GetMapKey;
};

} // namespace

TEST(nxExchangeRate, ConvertsOneWayOnly)
{
    nxExchangeRate const rate = Rate(NX_USD, NX_EUR, "0.92");
    EXPECT_EQ(rate.GetAsString(), "USD:EUR=0.92");
    EXPECT_EQ(rate.ConvertToTargetCurrency(Money("100USD")).GetAsString(), "92.00EUR");
    EXPECT_EQ(rate.ConvertToTargetCurrency(Money("0.1250USD")).GetAsString(), "0.1150EUR");
    EXPECT_TRUE(rate.ConvertToTargetCurrency(Money("100EUR")).IsNull());
    EXPECT_TRUE(rate.ConvertToTargetCurrency(Money("100EUR")).GetCurrency().IsUndefined());

    nxMoney const null = rate.ConvertToTargetCurrency(Money("USD"));
    EXPECT_TRUE(null.IsNull() && null.GetCurrency() == NX_EUR);
    // A null rate is ignored, as a null factor always is.
    EXPECT_EQ(Rate(NX_USD, NX_EUR, "").ConvertToTargetCurrency(Money("100USD")).GetAsString(), "100EUR");
    EXPECT_EQ(nxExchangeRate().GetAsString(), "UNDEFINED:UNDEFINED=0");
}

TEST(nxExchangeRateList, SetKeepsTheObjectOfAPair)
{
    nxExchangeRateList list;
    list.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.90"));
    list.SetExchangeRate(Rate(NX_EUR, NX_USD, "1.10"));
    list.SetExchangeRate(Rate(NX_USD, NX_GBP, "0.80"));
    std::vector<nxExchangeRate const*> rates(1, nullptr);
    list.GetExchangeRates(NX_USD, rates);
    ASSERT_EQ(rates.size(), 2u);
    nxExchangeRate const* const held = rates[0]->GetTargetCurrency() == NX_EUR ? rates[0] : rates[1];
    list.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.95"));
    EXPECT_EQ(held->GetAsString(), "USD:EUR=0.95");
    EXPECT_EQ(list.ConvertToTargetCurrency(Money("100.00USD"), NX_EUR).GetAsString(), "95.00EUR");
    EXPECT_EQ(list.ConvertToTargetCurrency(Money("100.00USD"), NX_USD).GetAsString(), "100.00USD");
    EXPECT_TRUE(list.ConvertToTargetCurrency(Money("100.00GBP"), NX_USD).IsNull()); // no inverse

    list.RemoveExchangeRates(NX_USD);
    EXPECT_EQ(Listed(list), "EUR:USD=1.10 ");
}

TEST(nxExchangeRateList, AssignmentAddsAndReplaces)
{
    nxExchangeRateList left;
    left.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.90"));
    left.SetExchangeRate(Rate(NX_EUR, NX_USD, "1.10"));
    nxExchangeRateList right;
    right.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.95"));
    nxExchangeRateList const copy(right);
    left = right;
    nxExchangeRateList& same = left;
    left = same;
    right.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.99"));
    EXPECT_EQ(left.ConvertToTargetCurrency(Money("100.00USD"), NX_EUR).GetAsString(), "95.00EUR");
    EXPECT_EQ(left.ConvertToTargetCurrency(Money("100.00EUR"), NX_USD).GetAsString(), "110.00USD");
    EXPECT_EQ(Listed(copy), "USD:EUR=0.95 ");
}

TEST_F(nxExchangeRateLog, DumpListsTheRatesBetweenDashes)
{
    nxExchangeRateList list;
    list.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.90"));
    list.SetExchangeRate(Rate(NX_EUR, NX_USD, ""));
    list.Dump(NX_WRN);
    std::string const dashes(40, '-');
    std::vector<std::string> rates = {"USD:EUR=0.90", "EUR:USD=NULL"};
    if (nxCurrencyEnum(NX_USD) < nxCurrencyEnum(NX_EUR))
    {
        std::swap(rates[0], rates[1]); // the target's number comes first in the order
    }
    EXPECT_EQ(Messages(), (std::vector<std::string>{dashes, rates[0], rates[1], dashes}));
    EXPECT_EQ(Levels(), std::vector<unsigned int>(4, NX_WRN));
}

TEST(nxExchangeRateList, KeysAreOfOrderedPairs)
{
    nxCurrencyEnum const eur(NX_EUR);
    nxCurrencyEnum const usd(NX_USD);
    EXPECT_EQ(Keys::_GetMapKey(usd, eur), eur.GetValue() * 1450 + usd.GetValue());
    EXPECT_EQ(Keys::_GetMapKey(Rate(NX_EUR, NX_USD, "1")), usd.GetValue() * 1450 + eur.GetValue());
}

TEST(nxExchangeRateConverter, ListAndDefaultTarget)
{
    nxExchangeRateConverter& converter = nxExchangeRateConverter::GetInstance();
    EXPECT_EQ(&converter, &nxExchangeRateConverter::GetInstance());
    converter.SetAndOwnExchangeRateList(nullptr);
    nxMoney const dollars = Money("100.00USD");
    EXPECT_EQ(converter.ConvertToTargetCurrency(dollars, NX_USD).GetAsString(), "100.00USD");
    EXPECT_TRUE(converter.ConvertToTargetCurrency(dollars, NX_EUR).IsNull());
    EXPECT_EQ(converter.ConvertToTargetCurrency(dollars).GetAsString(), "100.00USD"); // no default target
    converter.SetDefaultTargetCurrency(NX_EUR);
    EXPECT_TRUE(converter.GetDefaultTargetCurrency() == NX_EUR);
    EXPECT_TRUE(converter.ConvertToTargetCurrency(dollars).IsNull()); // no list

    nxExchangeRateList list;
    list.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.90"));
    converter.SetExchangeRateList(list);
    list.RemoveExchangeRates(NX_USD); // the converter has a copy
    EXPECT_EQ(converter.ConvertToTargetCurrency(dollars).GetAsString(), "90.00EUR");

    auto* const owned = new nxExchangeRateList;
    owned->SetExchangeRate(Rate(NX_USD, NX_EUR, "0.80"));
    converter.SetAndOwnExchangeRateList(owned);
    converter.SetAndOwnExchangeRateList(owned); // leaves it as it is
    converter.Lock();
    EXPECT_EQ(converter.ConvertToTargetCurrencyNoLock(dollars).GetAsString(), "80.00EUR");
    EXPECT_EQ(converter.ConvertToTargetCurrencyNoLock(dollars, NX_EUR).GetAsString(), "80.00EUR");
    EXPECT_TRUE(converter.GetDefaultTargetCurrencyNoLock() == NX_EUR);
    converter.Unlock();
    converter.SetDefaultTargetCurrency(nxCurrencyEnum());
}

// For the thread and address sanitizers: rates are replaced while others convert by them.
TEST(nxExchangeRateConverter, ManyThreads)
{
    nxExchangeRateConverter& converter = nxExchangeRateConverter::GetInstance();
    nxExchangeRateList list;
    list.SetExchangeRate(Rate(NX_USD, NX_EUR, "0.50"));
    converter.SetExchangeRateList(list);
    nxMoney const dollars = Money("100.00USD");
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
    {
        threads.emplace_back(
            [&]
            {
                for (int n = 0; n < 2000; ++n)
                    if (converter.ConvertToTargetCurrency(dollars, NX_EUR).GetAsString() != "50.00EUR")
                        ++wrong;
            });
    }
    for (int n = 0; n < 500; ++n)
        converter.SetExchangeRateList(list);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
