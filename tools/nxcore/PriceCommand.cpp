// `nxcore price`: one price of a format, with what surrounds it.

#include "Arguments.h"
#include "Commands.h"
#include "PriceRule.h"
#include "PriceWords.h"
#include "Result.h"

#include <climits>

namespace nxTool
{
namespace
{
/// The rule of the format with the switches' tick or ladder.
std::optional<PriceRule> ReadRule(Arguments const& arguments, nxPriceFormatEnum const& format, Result& result)
{
    auto const tickText = arguments.GetOption("tick");
    auto const ladderName = arguments.GetOption("ladder");
    if (tickText && ladderName)
    {
        (void)result.Refuse("-tick", "a price has either a tick or a ladder");
        return std::nullopt;
    }
    if (ladderName)
    {
        nxVariableTickTable const* const ladder = FindLadder(*ladderName);
        if (ladder != nullptr)
            return PriceRule(format, *ladder);
        (void)result.Refuse("-ladder", UnknownLadder(*ladderName));
        return std::nullopt;
    }
    if (!tickText)
        return PriceRule(format);
    std::string reason;
    if (auto const tick = ReadTick(*tickText, reason))
        return PriceRule(format, *tick);
    (void)result.Refuse("-tick", reason);
    return std::nullopt;
}

Cell PriceCell(PriceRule const& rule, nxDecimal const& price)
{
    Json value = {{"text", rule.Show(price)}, {"value", price.GetAsDouble()}};
    return Cell(rule.Show(price) + "  (" + Trimmed(price) + ")", std::move(value));
}

Status Run(Arguments const& arguments, Result& result)
{
    std::string const text = arguments.Get(1);
    auto const format = FindPriceFormat(arguments.Get(0));
    if (!format)
        return result.Refuse("FORMAT", UnknownPriceFormat(arguments.Get(0)));
    auto const rule = ReadRule(arguments, *format, result);
    if (!rule)
        return Status::Unusable;
    auto const steps = arguments.GetNumber("steps", -1000000, 1000000);
    if (arguments.Has("steps") && !steps)
        return result.Refuse("-steps", "no whole number from -1000000 to 1000000");
    auto const methodName = arguments.GetOption("round");
    auto const method = methodName ? FindRoundingMethod(*methodName) : std::nullopt;
    if (methodName && !method)
        return result.Refuse("-round", UnknownRoundingMethod(*methodName));
    auto const price = rule->Read(text);
    if (!price)
        return result.Refuse("TEXT", rule->GetFault(text));
    if (steps && !rule->Holds(*price, static_cast<int>(*steps)))
        return result.Refuse("-steps", "so many ticks lead to more than the " + std::to_string(mostDigits) +
                                           " digits of a price");

    result.AddField("format", "Format", Cell(format->GetLongDescription(), format->GetAsString()));
    result.AddField("value", "Value", Cell(Trimmed(*price), price->GetAsDouble()));
    result.AddField("text", "Text", rule->Show(*price));
    result.AddField("onTick", "On the tick", rule->IsOnTick(*price));
    nxDecimal const tick = rule->TickAt(*price);
    result.AddField("tick", "Tick", Cell(tick.GetAsString(), tick.GetAsDouble()));
    result.AddField("tickDown", "One tick down", PriceCell(*rule, rule->Stepped(*price, -1)));
    result.AddField("tickUp", "One tick up", PriceCell(*rule, rule->Stepped(*price, 1)));
    if (steps)
        result.AddField("stepped", "Stepped by " + std::to_string(*steps),
                        PriceCell(*rule, rule->Stepped(*price, static_cast<int>(*steps))));
    if (method)
        result.AddField("rounded", "Rounded " + ShortNameOf(*method),
                        PriceCell(*rule, rule->Rounded(*price, method->GetEnumValue())));
    else if (!rule->IsOnTick(*price))
        result.AddProblem("TEXT", rule->GetFault(text));
    return result.GetProblems().empty() ? Status::Good : Status::Faulty;
}

constexpr Option options[] = {
    {"tick", "T", "the tick, in units of the price"},
    {"ladder", "NAME", "a ladder of ticks in place of one", Completes::Ladder},
    {"steps", "N", "show the price N ticks up, or down for a negative N"},
    {"round", "METHOD", "round a price that is off the tick", Completes::RoundingMethod},
};
} // namespace

Command const priceCommand = {
    .name = "price",
    .arguments = "FORMAT TEXT",
    .summary = "read a price of a format and show what surrounds it",
    .details =
        "Reads a price as its format writes it, and shows its value, its text, the tick there and the\n"
        "prices beside it. FORMAT is a price format with or without its NX_PRICE_FORMAT_. Without -tick or\n"
        "-ladder a fraction format steps by its own smallest fraction, decimals by 0.01 and the others by\n"
        "1. METHOD is DOWN, UP, NEAREST or MODIFIED_NEAREST, with or without NX_ROUNDING_METHOD_. A price\n"
        "that is off the tick is a fault unless -round says what to do with it.",
    .example = "nxcore price FRACTION_HALF_32NDS_TICK 101-165 -steps 3",
    .options = options,
    .fewestArguments = 2,
    .mostArguments = 2,
    .completes = Completes::PriceFormat,
    .run = Run,
};
} // namespace nxTool
