// What a program is started with: its command line and environment, and addresses with masks.

#include "fuzz/FuzzInput.h"

#include "core/network/nxSocket.h"
#include "core/process/nxCmdLineArgs.h"

namespace
{
using Words = std::vector<std::string>;
using Map = std::map<std::string, std::string>;

/// A view of its own for each input: the process's reads a command line once.
class Arguments : public nxCmdLineArgs
{
};

bool IsNumber(std::string const& word)
{
    std::string digits = word.substr(word[0] == '-' || word[0] == '+' ? 1 : 0);
    digits.erase(std::min(digits.find('.'), digits.size()), 1);
    return !digits.empty() && FuzzIsDigits(digits);
}

void CheckCommandLine(Arguments const& arguments, Words const& words)
{
    Map expected;
    Words expectedRest;
    for (std::size_t i = 1; i < words.size(); ++i)
    {
        bool const hasValue =
            i + 1 < words.size() && (!words[i + 1].starts_with('-') || IsNumber(words[i + 1]));
        if (!words[i].starts_with('-'))
            expectedRest.push_back(words[i]);
        else
            expected[words[i].substr(1)] = hasValue ? words[i + 1] : "", i += hasValue;
    }
    Map args{{"old", "value"}};
    Words rest{"old"};
    arguments.GetArgs(args);
    arguments.GetUnprocessedArgs(rest);
    FUZZ_CHECK(args == expected && rest == expectedRest);
    FUZZ_EQUAL(arguments.GetCommand(), words[0]);
    for (auto const& [name, value] : expected)
        FUZZ_CHECK(arguments.IsArgDefined(name) && arguments.GetArgValue(name) == value);
}

void CheckValue(Arguments const& arguments, std::string const& name, std::string const& value)
{
    FUZZ_EQUAL(arguments.GetEnvValue(name), value);
    unsigned long long const number = arguments.GetEnvValueAsUInteger64(name).GetValue();
    FUZZ_EQUAL(number, value.empty() || !FuzzIsDigits(value) ? ~0ULL : FuzzNumber(value));
    FUZZ_EQUAL(arguments.GetEnvValueAsVolume(name).GetValue(), static_cast<unsigned int>(number));
    nxDecimal decimal(nxNullInitalizer{});
    (void)decimal.SetFromString(value);
    FUZZ_CHECK(arguments.GetEnvValueAsDecimal(name) == decimal);
    FUZZ_CHECK(arguments.GetEnvValueAsBool(name, true) || !arguments.GetEnvValueAsBool(name));
    (void)arguments.GetEnvValueAsDoubleValue(name);
    nxTime time(nxNullInitalizer{});
    bool const isTime = time.SetFromString(value).IsOK();
    nxDateTime const moment = arguments.GetEnvValueAsHHMMSS(name);
    FUZZ_CHECK(isTime ? moment.GetTime() == time : moment.IsNull());
}

void CheckEnvironment(Arguments const& arguments, Words const& entries)
{
    Map expected;
    for (std::string const& entry : entries)
        if (std::size_t const sign = entry.find('='); sign != std::string::npos)
            expected[entry.substr(0, sign)] = entry.substr(sign + 1);
    Map variables{{"old", "value"}};
    arguments.GetEnvs(variables);
    FUZZ_CHECK(variables == expected);
    for (auto const& [name, value] : expected)
        CheckValue(arguments, name, value);
}

/// What is read is split at the mask, and the parts make the whole again; what is refused leaves nothing.
void CheckAddress(std::string const& text)
{
    std::string front;
    unsigned int address = 7;
    unsigned int plain = 7;
    nxVolume mask(1), network(2), host(3);
    bool const sound = nxSocket::ParseAddressAndMask(text, front, address, mask, network, host).IsOK();
    FUZZ_EQUAL(front, sound ? text.substr(0, text.find('/')) : "");
    FUZZ_CHECK(sound == nxSocket::ParseAddress(front, plain).IsOK() && address == (sound ? plain : 0));
    unsigned int const low = ~mask.GetValue();
    FUZZ_CHECK(mask.IsNull() || ((low & (low + 1)) == 0 && network.GetValue() == (address & ~low) &&
                                 host.GetValue() == (address & low)));
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    std::string const text = input.Text();
    CheckAddress(text);
    Words words{"program"};
    for (unsigned int count = input.Below(12); count != 0; --count)
        words.emplace_back(input.Text().c_str());
    Words entries;
    while (input.HasStep())
        entries.emplace_back(input.Text().c_str());
    Arguments arguments;
    arguments.Initialise(FuzzPointers(words).data(), FuzzPointers(entries).data());
    CheckCommandLine(arguments, words);
    CheckEnvironment(arguments, entries);
}
