// `nxcore ladder`: the catalogue of tick ladders, one of them, or a price on it.

#include "Arguments.h"
#include "Commands.h"
#include "LadderPicture.h"
#include "OutputFile.h"
#include "PriceRule.h"
#include "PriceWords.h"
#include "Result.h"

#include "core/prices/nxVariableTickTableContainer.h"

#include <limits>

namespace nxTool
{
namespace
{
constexpr int stepsShown = 5; // to either side

constexpr Option options[] = {
    {"svg", "FILE", "draw the ladder into an SVG file in place of showing it", Completes::File},
};

Status ListLadders(Result& result)
{
    Table& list = result.AddTable("ladders", {{"name", "Name"},
                                              {"identifier", "Identifier"},
                                              {"ranges", "Ranges", Align::Right},
                                              {"firstTick", "First tick", Align::Right},
                                              {"lastTick", "Last tick", Align::Right}});
    for (std::string_view const name : LadderNames())
    {
        auto const& ranges = FindLadder(std::string(name))->GetRangeData();
        list.Add({name, nxVariableTickTableContainer::GetVariableTickTableID(std::string(name)),
                  ranges.size(), ranges.front().second.GetAsString(), ranges.back().second.GetAsString()});
    }
    return Status::Good;
}

bool IsUnbounded(nxDecimal const& top)
{
    return top.GetValue() == std::numeric_limits<long long>::max();
}

void ShowRanges(nxVariableTickTable const& ladder, Result& result)
{
    Table& table = result.AddTable(
        "ranges",
        {{"from", "From", Align::Right}, {"to", "Up to", Align::Right}, {"tick", "Tick", Align::Right}});
    nxDecimal from = nxDecimal(0, ladder.GetMinimumTickIncrement().GetDecimalPlaces());
    for (auto const& [top, tick] : ladder.GetRangeData())
    {
        Cell to = IsUnbounded(top) ? Cell("and above", nullptr) : Cell(top.GetAsString());
        table.Add({from.GetAsString(), std::move(to), tick.GetAsString()});
        from = top + tick; // the lowest price of the next range
    }
}

void AddPrice(Table& table, Cell title, nxDecimal const& price)
{
    table.Add({std::move(title), price.GetAsString()});
}

void ShowRoundings(nxVariableTickTable const& ladder, nxDecimal const& price, Result& result)
{
    Table& table = result.AddTable("rounded", {{"method", "Rounded"}, {"price", "Price", Align::Right}});
    for (nxEnumValue const value : RoundingMethods())
    {
        nxRoundingMethodEnum const method(value);
        nxDecimal rounded = price;
        ladder.RoundToValidTick(method, rounded);
        AddPrice(table, ShortNameOf(method), rounded);
    }
}

void ShowSteps(nxVariableTickTable const& ladder, nxDecimal const& price, Result& result)
{
    Table& table =
        result.AddTable("steps", {{"ticks", "Ticks", Align::Right}, {"price", "Price", Align::Right}});
    for (int ticks = stepsShown; ticks >= -stepsShown; --ticks)
    {
        nxDecimal stepped = price;
        ladder.Increment(stepped, ticks);
        AddPrice(table, Cell((ticks > 0 ? "+" : "") + std::to_string(ticks), ticks), stepped);
    }
}

Status ShowPrice(nxVariableTickTable const& ladder, std::string const& name, std::string const& text,
                 Result& result)
{
    std::string reason;
    std::optional<nxDecimal> const read = ReadPrice(text, ladder, reason);
    if (!read)
        return result.Refuse("PRICE", reason);
    nxDecimal const& price = *read;
    nxDecimal const& tick = ladder.GetTickIncrement(price);
    result.AddField("ladder", "Ladder", name);
    result.AddField("price", "Price", price.GetAsString());
    result.AddField("increment", "Increment", tick.GetAsString());
    result.AddField("decimalPlaces", "Decimal places", static_cast<int>(ladder.NumberOfDecimalPlaces(price)));
    result.AddLine("");
    ShowRoundings(ladder, price, result);
    result.AddLine("");
    ShowSteps(ladder, price, result);
    return Status::Good;
}

Status DrawLadder(nxVariableTickTable const& ladder, std::string const& name, std::string const& path,
                  Result& result)
{
    std::string const reason = WriteFile(path, LadderPicture(name, ladder, PictureUse::File) + "\n");
    if (!reason.empty())
        return result.Refuse("-svg", reason);
    result.AddField("ladder", "Ladder", name);
    result.AddField("file", "Picture", path);
    return Status::Good;
}

Status Run(Arguments const& arguments, Result& result)
{
    auto const svg = arguments.GetOption("svg");
    if (svg && arguments.GetAll().size() != 1)
        return result.Refuse("-svg", "a picture is of one ladder: give its NAME and no PRICE");
    if (arguments.GetAll().empty())
        return ListLadders(result);
    nxVariableTickTable const* const ladder = FindLadder(arguments.Get(0));
    if (ladder == nullptr)
        return result.Refuse("NAME", UnknownLadder(arguments.Get(0)));
    if (svg)
        return DrawLadder(*ladder, arguments.Get(0), *svg, result);
    if (arguments.GetAll().size() > 1)
        return ShowPrice(*ladder, arguments.Get(0), arguments.Get(1), result);
    result.AddField("ladder", "Ladder", arguments.Get(0));
    result.AddLine("");
    ShowRanges(*ladder, result);
    return Status::Good;
}
} // namespace

Command const ladderCommand = {
    .name = "ladder",
    .arguments = "[NAME [PRICE]]",
    .summary = "list the tick ladders, or show one or a price on it",
    .details =
        "Without NAME, lists the ladders of the catalogue. With NAME, which may also be an identifier such\n"
        "as VTT_CHIX_EUZ1, shows the ladder's ranges: the tick of a range is in force up to and including\n"
        "its last price. With PRICE, a decimal, shows the increment there, the price rounded by each of\n"
        "the four methods, and five steps to either side. With -svg, draws the ladder:\n"
        "tick over price, both axes logarithmic, each range's last price at its dot.",
    .example = "nxcore ladder CHIX_EUZ1 9.999",
    .options = options,
    .mostArguments = 2,
    .completes = Completes::Ladder,
    .run = Run,
};
} // namespace nxTool
