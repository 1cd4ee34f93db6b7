// `nxcore board`: a price board of a file of products.

#include "Arguments.h"
#include "Commands.h"
#include "ProductFile.h"
#include "Result.h"

#include "core/prices/nxVolumeConverterHelper.h"

namespace nxTool
{
namespace
{
std::string ShortVolume(nxVolume const& volume)
{
    std::string text;
    (void)nxVolumeConverterHelper::GetFormattedDisplayVolume(
        volume, nxVolumeFormatEnum(NX_VOLUME_FORMAT_ABBREVIATED_1DP), text);
    return text;
}

Cell VolumeCell(nxVolume const& volume)
{
    return volume.IsValid() ? Cell(ShortVolume(volume), volume.GetValue()) : Cell("", nullptr);
}

/// Last price, one tick down, one tick up, the tick, the price's value: empty where there is no price.
std::vector<Cell> PriceCells(Product const& product)
{
    if (!product.last)
        return std::vector<Cell>(5, Cell("", nullptr));
    PriceRule const& rule = product.rule;
    nxDecimal const& price = *product.last;
    nxDecimal const tick = rule.TickAt(price);
    return {rule.Show(price), rule.Show(rule.Stepped(price, -1)), rule.Show(rule.Stepped(price, 1)),
            Cell(tick.GetAsString(), tick.GetAsDouble()), Cell(Trimmed(price), price.GetAsDouble())};
}

void AddProduct(Table& board, Product const& product)
{
    std::vector<Cell> cells = {product.symbol, product.exchange, product.type.GetLongDescription(),
                               product.currency.GetLongDescription(), product.format.GetLongDescription()};
    for (Cell& cell : PriceCells(product))
        cells.push_back(std::move(cell));
    cells.push_back(VolumeCell(product.volume));
    board.Add(std::move(cells));
}

Status Run(Arguments const& arguments, Result& result)
{
    auto const products = ReadProducts(arguments.Get(0), result);
    if (!products)
        return Status::Unusable;
    Table& board = result.AddTable("products", {{"symbol", "Symbol"},
                                                {"exchange", "Exchange"},
                                                {"type", "Type"},
                                                {"currency", "Currency"},
                                                {"priceFormat", "Price format"},
                                                {"last", "Last", Align::Right},
                                                {"tickDown", "Tick down", Align::Right},
                                                {"tickUp", "Tick up", Align::Right},
                                                {"tick", "Tick", Align::Right},
                                                {"value", "Value", Align::Right},
                                                {"volume", "Volume", Align::Right}});
    for (Product const& product : *products)
        AddProduct(board, product);
    return result.GetProblems().empty() ? Status::Good : Status::Faulty;
}
} // namespace

Command const boardCommand = {
    .name = "board",
    .arguments = "FILE",
    .summary = "show the products of a file with their prices",
    .details =
        "Reads a file of products, columns between commas, and shows a row for each: its last price as its\n"
        "format prints it, the prices one tick down and up, the tick in force there, the price as a decimal\n"
        "and its volume. The first row names the columns: symbol, exchange, description, type (a code such\n"
        "as F), currency, price_format, tick, tick_table (the name of a ladder), last, volume. Lines that\n"
        "begin with # are comments.\n\n"
        "A row at fault is named on standard error with its line and column; the others are shown.",
    .example = "nxcore board examples/products.csv",
    .fewestArguments = 1,
    .mostArguments = 1,
    .completes = Completes::File,
    .run = Run,
};
} // namespace nxTool
