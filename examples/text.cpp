// Numbers and words out of a line of text, and back into one.
#include "core/text/nxAlgorithm.h"
#include "core/text/nxCSVFileReader.h"
#include "core/text/nxStringHelper.h"
#include "core/text/nxStringParser.h"
#include "core/vocabulary/nxBuySellEnum.h"

#include <cstdio>
#include <set>

namespace
{
struct Order
{
    nxBuySellEnum side;
    unsigned int quantity = 0;
    std::string account;
};

/// Reads BUY,25,"Smith, Jones".
nxErrorEnum ReadOrder(std::string const& line, Order& order)
{
    nxStringParser parser(line);
    nxErrorEnum result = nxStringHelper::SetFromString(parser.GetSubString(','), order.side);
    if (result.IsOK())
        result = nxStringHelper::SetFromString(parser.GetSubString(','), order.quantity);
    if (result.IsOK())
        order.account = parser.GetSubString(',', '"');
    return result;
}
} // namespace

int main()
{
    Order order;
    nxErrorEnum result = ReadOrder("BUY,25,\"Smith, Jones\"", order);
    std::printf("%s %u for %s\n", order.side.GetAsString().c_str(), order.quantity, order.account.c_str());

    result = ReadOrder("BUY,25 lots,Smith", order);
    std::printf("%s, and the quantity is still %u\n", result.GetLongDescription().c_str(), order.quantity);

    std::string line = nxStringHelper::GetAsString(1234.5);
    nxStringHelper::PadLeft(line, 12, ' ');
    nxStringHelper::AppendAsString(line, true);
    std::printf("%s\n", line.c_str());

    std::set<std::string> const rules = {"*.*.*", "CME.*.*", "CME.*.ES"};
    std::string best;
    (void)nxAlgorithm::GetBestMatch(rules, "CME.FUT.ES", best, true, '.', "*");
    std::printf("%s\n", best.c_str());

    nxCSVFileReader reader;
    if (!reader.ReadFile("examples/products.csv").IsOK())
        return 1;
    std::printf("%u rows, the last one of %s\n", reader.GetRowCount() - 1, // without the heading
                reader.GetRow(reader.GetRowCount() - 1)->GetColValue(2).c_str());
}
