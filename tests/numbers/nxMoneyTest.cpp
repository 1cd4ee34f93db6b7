// Amounts with a currency: what mixes, how two currencies compare, and the texts; and ratios beside them.
#include "core/numbers/nxMoney.h"
#include "core/numbers/nxRatio.h"
#include "core/text/nxStringHelper.h"

#include <gtest/gtest.h>

namespace
{

nxMoney Money(std::string const& text)
{
    nxMoney money;
    EXPECT_TRUE(money.SetFromString(text, '.').IsOK()) << text;
    return money;
}

/// Which of == != < <= > >= hold, in that order.
template <class ValueT>
std::string Holding(ValueT const& left, ValueT const& right)
{
    std::string holding;
    holding += left == right ? "== " : "";
    holding += left != right ? "!= " : "";
    holding += left < right ? "< " : "";
    holding += left <= right ? "<= " : "";
    holding += left > right ? "> " : "";
    holding += left >= right ? ">= " : "";
    return holding;
}

} // namespace

TEST(nxMoney, Text)
{
    nxMoney money = Money("100.50USD");
    EXPECT_EQ(money.GetDecimalValue().GetValue(), 10050);
    EXPECT_EQ(money.GetDecimalValue().GetDecimalPlaces(), 2);
    EXPECT_TRUE(money.GetCurrency() == NX_USD);
    EXPECT_EQ(money.GetAsString('.'), "100.50USD");
    EXPECT_EQ(money.GetAsString(','), "100,50USD");
    EXPECT_EQ(Money("-1.5EUR").GetAsLogString(), "-1.5EUR");
    EXPECT_EQ(nxMoney().GetAsString('.'), "0???");
    EXPECT_EQ(nxMoney::GetNullMoney().GetAsString('.'), "???");
    EXPECT_EQ(nxMoney::GetNullMoney().GetAsLogString(), "NULL");

    money = Money("USD"); // a null amount of that currency
    EXPECT_TRUE(money.IsNull() && money.GetCurrency() == NX_USD);
    EXPECT_EQ(money.GetAsString('.'), "USD");
    money.SetNoChange();
    EXPECT_TRUE(money.IsNoChange() && money.GetCurrency().IsNoChange());
    EXPECT_EQ(money.GetAsString('.'), "NO_CHANGE"); // by its currency
    EXPECT_EQ(money.GetAsLogString(), "NO_CHANGE");
}

TEST(nxMoney, RefusedTextLeavesNull)
{
    for (char const* text :
         {"", "US", "100", "100.50", "1usd", "1BUY", "1 USD", "1.5.0USD", "1,5USD", "-USD", "USD1"})
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
    EXPECT_EQ((two + three).GetAsString(), "5.0USD");
    EXPECT_EQ((two - three).GetAsString(), "-1.0USD");
    EXPECT_EQ((two * three).GetAsString(), "6.0USD");
    EXPECT_EQ((two / three).GetAsString(), "0.7USD");
    EXPECT_EQ((two + half).GetAsString(), "2.5USD");
    EXPECT_EQ((two - half).GetAsString(), "1.5USD");
    EXPECT_EQ((two * half).GetAsString(), "1.0USD");
    EXPECT_EQ((two / half).GetAsString(), "4.0USD");
    for (nxMoney const& mixed : {two + euros, two - euros, two * euros, two / euros, two + nxMoney()})
        EXPECT_TRUE(mixed.IsNull() && mixed.GetCurrency().IsUndefined());
    nxMoney money(two);
    money += half;
    money *= three;
    EXPECT_EQ(money.GetAsString(), "7.5USD");
    EXPECT_EQ(&-money, &money); // changes the object
    EXPECT_EQ(money.GetAsString(), "-7.5USD");
    money -= euros;
    EXPECT_EQ(money.GetAsLogString(), "NULL");
    EXPECT_EQ((two + Money("USD")).GetAsString(), "2USD"); // a null on the right is ignored
}

TEST(nxMoney, Comparison)
{
    struct Row
    {
        char const* left;
        char const* right;
        char const* holding;
    };
    ASSERT_TRUE(nxCurrencyEnum(NX_EUR).GetValue() != nxCurrencyEnum(NX_USD).GetValue());
    bool const eurFirst = nxCurrencyEnum(NX_EUR) < nxCurrencyEnum(NX_USD);
    std::string const low = eurFirst ? "EUR" : "USD";
    std::string const high = eurFirst ? "USD" : "EUR";
    Row const rows[] = {
        {"1.0", "1.00", "== <= >= "}, {"1", "2", "!= < <= "},
        {"2", "1", "!= > >= "},       {"", "1", "!= < <= "}, // null amounts sort below
        {"", "", "== <= >= "},
    };
    for (Row const& row : rows)
        EXPECT_EQ(Holding(Money(row.left + low), Money(row.right + low)), row.holding)
            << row.left << row.right;
    // Across currencies the amount and the currency must agree.
    Row const across[] = {
        {"1", "1", "!= < <= "},
        {"1", "2", "!= < <= "},
        {"2", "1", "!= "},
    };
    for (Row const& row : across)
        EXPECT_EQ(Holding(Money(row.left + low), Money(row.right + high)), row.holding)
            << row.left << row.right;
    EXPECT_EQ(Holding(Money("1" + high), Money("1" + low)), "!= > >= ");
    EXPECT_EQ(Holding(Money("1" + high), Money("2" + low)), "!= ");
    EXPECT_EQ(Holding(Money("2" + high), Money("1" + low)), "!= > >= ");
}

TEST(nxRatio, ValuesAndStates)
{
    nxRatio ratio;
    EXPECT_TRUE(ratio.IsNull());
    EXPECT_EQ(ratio.GetAsString(), "");
    EXPECT_EQ(ratio.GetAsLogString(), "NULL");
    EXPECT_TRUE(nxRatio(0, 5).IsValid());
    ratio.SetValue(0, 5);
    EXPECT_TRUE(ratio.IsNull());
    EXPECT_EQ(ratio.GetRHS(), 5u);
    ratio.SetValue(3, 4294967295u);
    EXPECT_EQ(ratio.GetAsString(), "3:4294967295");
    ratio.SetNoChange();
    EXPECT_TRUE(ratio.IsNoChange() && ratio.GetLHS() == 0 && ratio.GetRHS() == 0);
    EXPECT_EQ(ratio.GetAsLogString(), "NO_CHANGE");
}

TEST(nxRatio, Parsing)
{
    nxRatio ratio;
    EXPECT_TRUE(ratio.SetFromString("01:4294967298").IsOK()); // wraps
    EXPECT_EQ(ratio.GetAsString(), "1:2");
    for (char const* text :
         {"", ":", "1", ":2", "1:", "1:2:3", "1/2", "-1:2", "+1:2", " 1:2", "0:5", "5:0", "4294967296:1"})
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
    EXPECT_EQ(Holding(nxRatio(), nullWithNumbers), "== <= >= ");
    EXPECT_EQ(Holding(nxRatio(), noChange), "!= < <= ");
    EXPECT_EQ(Holding(noChange, nxRatio(0, 0)), "!= < <= ");
    EXPECT_EQ(Holding(nxRatio(0, 0), nxRatio()), "!= > >= ");
    EXPECT_EQ(Holding(nxRatio(1, 3), nxRatio(1, 3)), "== <= >= ");
    EXPECT_EQ(Holding(nxRatio(1, 3), nxRatio(2, 3)), "!= < <= ");
    EXPECT_EQ(Holding(nxRatio(1, 3), nxRatio(1, 2)), "!= < <= ");
    EXPECT_EQ(Holding(nxRatio(1, 2), nxRatio(2, 4)), "!= > >= ");         // neither equal nor less
    EXPECT_EQ(Holding(nxRatio(65536, 1), nxRatio(1, 65536)), "!= < <= "); // 2^32 wraps to 0
}
