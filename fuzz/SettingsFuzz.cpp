// What a program is started with: its command line and environment, versions, and addresses with masks.

#include "fuzz/FuzzInput.h"

#include "core/network/nxSocket.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxVersionNumber.h"

#include <limits>

namespace
{
using Words = std::vector<std::string>;
using Map = std::map<std::string, std::string>;

/// A view of its own for each input: the process's reads a command line once.
class Arguments : public nxCmdLineArgs
{
};

std::vector<char*> MakePointers(Words& words)
{
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

bool IsNumber(std::string const& word)
{
    std::string digits = word.substr(word[0] == '-' || word[0] == '+' ? 1 : 0);
    if (std::size_t const point = digits.find('.'); point != std::string::npos)
        digits.erase(point, 1);
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
        else if (std::string& value = expected[words[i].substr(1)]; hasValue)
            value = words[++i];
        else
            value.clear();
    }
    Map args;
    Words rest;
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
    bool const isNatural = !value.empty() && FuzzIsDigits(value);
    unsigned long long const number = isNatural ? FuzzNumber(value) : 0 - 1ULL;
    FUZZ_EQUAL(arguments.GetEnvValueAsUInteger64(name).GetValue(), number);
    FUZZ_EQUAL(arguments.GetEnvValueAsVolume(name).GetValue(), static_cast<unsigned int>(number));
    nxDecimal decimal(nxNullInitalizer{});
    (void)decimal.SetFromString(value);
    FUZZ_CHECK(arguments.GetEnvValueAsDecimal(name) == decimal);
    FUZZ_CHECK(arguments.GetEnvValueAsBool(name, true) || !arguments.GetEnvValueAsBool(name));
    (void)arguments.GetEnvValueAsDoubleValue(name);
    nxTime time(nxNullInitalizer{});
    bool const isTime = time.SetFromString(value).IsOK();
    nxDateTime const moment = arguments.GetEnvValueAsHHMMSS(name);
    FUZZ_CHECK(moment.IsNull() != isTime &&
               (!isTime || moment.GetTime().GetAsHHMMSS() == time.GetAsHHMMSS()));
}

void CheckEnvironment(Arguments const& arguments, Words const& entries)
{
    Map expected;
    for (std::string const& entry : entries)
        if (std::size_t const sign = entry.find('='); sign != std::string::npos)
            expected[entry.substr(0, sign)] = entry.substr(sign + 1);
    Map variables;
    arguments.GetEnvs(variables);
    FUZZ_CHECK(variables == expected);
    for (auto const& [name, value] : expected)
        CheckValue(arguments, name, value);
}

void CheckVersion(std::string const& text)
{
    unsigned int parts[3]{9, 9, 9};
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    version.GetMajorMinorSubVersionParts(text, parts[0], parts[1], parts[2]);
    Words expected = FuzzSplit(text, '.');
    expected.resize(3);
    for (std::size_t i = 0; i < 3; ++i)
    {
        // A number in front, if there is one, cut to what an int holds.
        using Limits = std::numeric_limits<int>;
        long const number = std::strtol(expected[i].c_str(), nullptr, 10);
        FUZZ_EQUAL(parts[i],
                   static_cast<unsigned int>(std::clamp<long>(number, Limits::min(), Limits::max())));
    }
    FUZZ_EQUAL(version.IsCompatibleVersionNumber(text), parts[0] == 1 && parts[1] == 37);
}

/// Whether there is a number, which wraps.
bool ReadNumber(std::string const& digits, unsigned int& number)
{
    number = static_cast<unsigned int>(FuzzNumber(digits));
    return !digits.empty() && FuzzIsDigits(digits);
}

bool ReadAddress(std::string const& text, unsigned int& address)
{
    Words parts = FuzzSplit(text, '.');
    if (parts.size() == 5 && parts.back().empty())
        parts.pop_back();
    unsigned int read = 0;
    unsigned int number = 0;
    bool sound = parts.size() == 4;
    for (std::size_t i = 0; sound && i < parts.size(); ++i)
    {
        sound = ReadNumber(parts[i], number) && number <= 255;
        read = (read << 8) + number;
    }
    return address = sound ? read : address, sound;
}

void CheckAddress(std::string const& text)
{
    unsigned int got = 7;
    unsigned int address = 7;
    FUZZ_EQUAL(nxSocket::ParseAddress(text, got).IsOK(), ReadAddress(text, address));
    FUZZ_EQUAL(got, address);

    std::size_t const slash = text.find('/');
    std::string const front = text.substr(0, slash);
    bool const hasBits = slash != std::string::npos && slash + 1 != text.size();
    unsigned int bits = 0;
    address = 0;
    bool const sound =
        (!hasBits || (ReadNumber(text.substr(slash + 1), bits) && bits < 32)) && ReadAddress(front, address);

    using Number = nxValueWrapper<unsigned int, -1, -2>;
    std::string addressText = "as it was";
    Number mask(1), network(2), host(3);
    FUZZ_EQUAL(nxSocket::ParseAddressAndMask(text, addressText, got, mask, network, host).IsOK(), sound);
    FUZZ_EQUAL(addressText, sound ? front : "");
    FUZZ_EQUAL(got, sound ? address : 0);
    bool const hasMask = sound && hasBits;
    unsigned int const high = bits == 0 || bits > 31 ? 0 : ~0u << (32 - bits);
    FUZZ_EQUAL(mask.GetValue(), hasMask ? high : Number::nullValue);
    FUZZ_EQUAL(network.GetValue(), hasMask ? address & high : Number::nullValue);
    FUZZ_EQUAL(host.GetValue(), hasMask ? address & ~high : Number::nullValue);
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    std::string const text = input.Text();
    CheckVersion(text);
    CheckAddress(text);
    Words words{"program"};
    for (unsigned int count = input.Below(12); count != 0; --count)
        words.emplace_back(input.Text().c_str());
    Words entries;
    while (input.HasStep())
        entries.emplace_back(input.Text().c_str());
    Arguments arguments;
    arguments.Initialise(MakePointers(words).data(), MakePointers(entries).data());
    CheckCommandLine(arguments, words);
    CheckEnvironment(arguments, entries);
}
