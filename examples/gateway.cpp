// A price gateway starts: arguments, identity, log file, products, and a board of them.
#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/prices/nxPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/text/nxCSVFileReader.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace
{
using Ticks = nxValueWrapper<int, 2147483647, 2147483646>;

/// The columns of the file of products.
enum Column : unsigned int
{
    Symbol,
    PriceFormat = 5,
    Tick,
    TickTable,
    Last
};

struct Product
{
    std::string symbol;
    std::unique_ptr<nxPriceConverter> converter; // holds the last price
};

nxErrorEnum SetUpLog(std::string const& name)
{
    nxApplicationData::SetApplicationName("pricegateway");
    nxApplicationData::SetApplicationInstanceName(name);
    nxFileLogDevice& file = nxFileLogDevice::GetInstance();
    if (!file.Create(nxValueWrapper<unsigned long long, -1, -2>(100000000))) // a new file every 100 MB
        return nxErrorEnum(NX_ERR_FAILED_TO_OPEN_FILE);
    nxLogManager::GetInstance().RegisterLogDevice(&file);
    return nxErrorEnum();
}

/// A product moves along the ladder of its exchange, or by a tick of its own, or by that of its format.
nxErrorEnum SetTick(nxCSVFileRow const& row, nxPriceConverter& converter)
{
    std::string const ladder = row.GetColValue(TickTable);
    if (!ladder.empty())
    {
        auto const* const table = nxVariableTickTableContainer::GetVariableTickTable("VTT_" + ladder);
        if (table == nullptr)
            return nxErrorEnum(NX_ERR_NOT_FOUND);
        (void)converter.SetPriceManipulator(nxPriceManipulator(table)); // its answer is always false
        (void)converter.SetMinimumTickIncrement(table->GetMinimumTickIncrement());
        return nxErrorEnum();
    }
    std::string const tick = row.GetColValue(Tick);
    bool const isGood = tick.empty() || converter.SetMinimumTickIncrement(nxDecimal(tick, '.'));
    return isGood ? nxErrorEnum() : nxErrorEnum(NX_ERR_INVALID_PARAMETER);
}

nxErrorEnum ReadProduct(nxCSVFileRow const& row, Product& product)
{
    product.symbol = row.GetColValue(Symbol);
    nxPriceFormatEnum format;
    if (!format.SetFromString(row.GetColValue(PriceFormat)))
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    product.converter.reset(nxPriceConverterHelper::CreatePriceConverter(format));
    nxErrorEnum result = SetTick(row, *product.converter);
    if (result.IsOK() && !product.converter->SetPriceFromString(row.GetColValue(Last)))
        result = NX_ERR_ORDER_INVALID_PRICE;
    return result;
}

nxErrorEnum ReadProducts(std::string const& path, std::vector<Product>& products)
{
    nxCSVFileReader reader;
    nxErrorEnum const result = reader.ReadFile(path);
    for (unsigned int index = 1; index < reader.GetRowCount(); ++index) // row 0 is the heading
    {
        Product product;
        nxErrorEnum const fault = ReadProduct(*reader.GetRow(index), product);
        if (fault.IsOK())
            products.push_back(std::move(product));
        else
            NX_LOG(NX_WRN, "Product left out: " << product.symbol << ", result: " << fault);
    }
    return result;
}

/// The last price between the prices one tick away.
void ShowOnBoard(Product const& product)
{
    nxPriceConverter& converter = *product.converter;
    std::string const last = converter.GetPriceAsString();
    (void)converter.ChangePrice(Ticks(-1));
    std::string const down = converter.GetPriceAsString();
    (void)converter.ChangePrice(Ticks(2));
    std::printf("%-8s %9s %9s %9s\n", product.symbol.c_str(), down.c_str(), last.c_str(),
                converter.GetPriceAsString().c_str());
}
} // namespace

int main(int, char** argv, char** envp)
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    arguments.Initialise(argv, envp);
    if (!SetUpLog(arguments.GetArgValue("name")).IsOK())
        return 1;

    std::vector<Product> products;
    nxErrorEnum const result = ReadProducts(arguments.GetArgValue("products"), products);
    NX_LOG(NX_INF, "Products: " << products.size() << ", result: " << result);
    (void)nxLogManager::GetInstance().Destroy(); // the log's lines, then the board

    for (Product const& product : products)
        ShowOnBoard(product);
    return result.IsOK() && !products.empty() ? 0 : 1;
}
