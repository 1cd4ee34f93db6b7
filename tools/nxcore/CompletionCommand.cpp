// `nxcore completion`: what the shells need to complete the command line.

#include "Arguments.h"
#include "Commands.h"
#include "CompletionScripts.h"
#include "NearMiss.h"
#include "PriceWords.h"
#include "Result.h"
#include "Words.h"

#include "core/vocabulary/nxCurrencyEnum.h"

namespace nxTool
{
namespace
{
constexpr Completes askedKinds[] = {
    Completes::Class,  Completes::Command,     Completes::Currency,       Completes::Key,
    Completes::Ladder, Completes::PriceFormat, Completes::RoundingMethod, Completes::Shell};

struct Shell
{
    std::string_view name;
    std::string (*write)();
};

constexpr Shell shells[] = {{"bash", BashCompletion}, {"fish", FishCompletion}, {"zsh", ZshCompletion}};

constexpr Option options[] = {
    {"words", "KIND", "the words that complete an argument of a kind, a line each", Completes::Nothing},
};

std::vector<std::string> CommandNames()
{
    std::vector<std::string> names;
    for (Command const* const command : AllCommands())
        names.emplace_back(command->name);
    return names;
}

std::vector<std::string> ShellNames()
{
    std::vector<std::string> names;
    for (Shell const& shell : shells)
        names.emplace_back(shell.name);
    return names;
}

std::vector<std::string> KindNames()
{
    std::vector<std::string> names;
    for (Completes const kind : askedKinds)
        names.emplace_back(NameOf(kind));
    return names;
}

std::vector<std::string> KeyNames()
{
    return {
#define NX_KEY_GROUP(title)
#define NX_KEY(key) #key,
#define NX_KEY_WORD(scope, word)
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value)
#include "core/process/tables/keys.def"
    };
}

std::vector<std::string> CurrencyCodes()
{
    std::vector<nxEnumValue> currencies;
    nxCurrencyEnum().GetRegisteredEnumValuesForInstance(currencies);
    std::vector<std::string> codes;
    for (nxEnumValue const currency : currencies)
        codes.push_back(nxCurrencyEnum(currency).GetAsString());
    return codes;
}

std::vector<std::string> RoundingMethodNames()
{
    std::vector<std::string> names;
    for (nxEnumValue const method : RoundingMethods())
        names.push_back(ShortNameOf(nxRoundingMethodEnum(method)));
    return names;
}

template <class Views>
std::vector<std::string> Copied(Views const& views)
{
    return std::vector<std::string>(views.begin(), views.end());
}

std::vector<std::string> WordsFor(Completes kind)
{
    switch (kind)
    {
    case Completes::Class: return Copied(ClassNames());
    case Completes::Command: return CommandNames();
    case Completes::Currency: return CurrencyCodes();
    case Completes::Key: return KeyNames();
    case Completes::Ladder: return Copied(LadderNames());
    case Completes::PriceFormat: return PriceFormatNames();
    case Completes::RoundingMethod: return RoundingMethodNames();
    case Completes::Shell: return ShellNames();
    default: return {};
    }
}

Status Refuse(std::string const& word, std::string_view what, std::vector<std::string> const& known,
              Result& result)
{
    std::string all;
    for (std::string const& name : known)
        all.append(all.empty() ? "" : ", ").append(name);
    std::string const nearest = DidYouMean(word, std::vector<std::string_view>(known.begin(), known.end()));
    return result.Refuse("", std::string(what) + (word.empty() ? " is missing" : " " + word + " is unknown") +
                                 (nearest.empty() ? ", it is one of " + all : nearest));
}

Status ShowWords(std::string const& name, Result& result)
{
    for (Completes const kind : askedKinds)
    {
        if (NameOf(kind) != name)
            continue;
        std::vector<std::string> const words = WordsFor(kind);
        for (std::string const& word : words)
            result.AddLine(word);
        result.AddValue("words", words);
        return Status::Good;
    }
    return Refuse(name, "the kind", KindNames(), result);
}

Status ShowScript(std::string const& name, Result& result)
{
    for (Shell const& shell : shells)
    {
        if (shell.name != name)
            continue;
        result.AddText("script", shell.write());
        return Status::Good;
    }
    return Refuse(name, "the shell", ShellNames(), result);
}

Status Run(Arguments const& arguments, Result& result)
{
    auto const kind = arguments.GetOption("words");
    return kind ? ShowWords(*kind, result) : ShowScript(arguments.Get(0), result);
}
} // namespace

Command const completionCommand = {
    .name = "completion",
    .arguments = "[SHELL]",
    .summary = "print the completion script of bash, fish or zsh",
    .details =
        "Prints a script that completes the command line of nxcore: commands and switches from the\n"
        "table that the help is made of; classes, currencies, keys, ladders, price formats and rounding\n"
        "methods from the library, which the script asks through -words.",
    .example = "source <(nxcore completion bash)",
    .options = options,
    .mostArguments = 1,
    .completes = Completes::Shell,
    .run = Run,
};
} // namespace nxTool
