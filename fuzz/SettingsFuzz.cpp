// What a program is started with: its command line and environment, versions, and addresses with masks.

#include "fuzz/FuzzInput.h"

#include "core/network/nxSocket.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxVersionNumber.h"

#include <deque>
#include <limits>

namespace
{
/// A view of its own for each input: the process's reads a command line once.
class Arguments : public nxCmdLineArgs
{
};

std::vector<char*> MakePointers(std::vector<std::string>& words)
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
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
}

void CheckCommandLine(Arguments const& arguments, std::vector<std::string> const& words)
{
    std::map<std::string, std::string> expected;
    std::vector<std::string> expectedRest;
    for (std::size_t i = 1; i < words.size(); ++i)
    {
        if (!words[i].starts_with('-'))
        {
            expectedRest.push_back(words[i]);
            continue;
        }
        bool const hasValue =
            i + 1 < words.size() && (!words[i + 1].starts_with('-') || IsNumber(words[i + 1]));
        expected[words[i].substr(1)] = hasValue ? words[i + 1] : "";
        i += hasValue ? 1 : 0;
    }
    std::map<std::string, std::string> args;
    std::vector<std::string> rest;
    arguments.GetArgs(args);
    arguments.GetUnprocessedArgs(rest);
    FUZZ_CHECK(args == expected);
    FUZZ_CHECK(rest == expectedRest);
    FUZZ_EQUAL(arguments.GetCommand(), words[0]);
    for (auto const& [name, value] : expected)
        FUZZ_CHECK(arguments.IsArgDefined(name) && arguments.GetArgValue(name) == value);
}

void CheckHHMMSS(Arguments const& arguments, std::string const& name, std::string const& value)
{
    nxTime time(nxNullInitalizer{});
    bool const sound = time.SetFromString(value).IsOK();
    nxDateTime const moment = arguments.GetEnvValueAsHHMMSS(name);
    FUZZ_EQUAL(moment.IsNull(), !sound);
    if (sound)
        FUZZ_EQUAL(moment.GetTime().GetAsHHMMSS(), time.GetAsHHMMSS());
}

void CheckEnvironment(Arguments const& arguments, std::vector<std::string> const& entries)
{
    std::map<std::string, std::string> expected;
    for (std::string const& entry : entries)
        if (std::size_t const sign = entry.find('='); sign != std::string::npos)
            expected[entry.substr(0, sign)] = entry.substr(sign + 1);
    std::map<std::string, std::string> variables;
    arguments.GetEnvs(variables);
    FUZZ_CHECK(variables == expected);
    for (auto const& [name, value] : expected)
    {
        FUZZ_EQUAL(arguments.GetEnvValue(name), value);
        bool const digits = !value.empty() && value.find_first_not_of("0123456789") == std::string::npos;
        unsigned long long number = 0;
        for (char const digit : value)
            number = number * 10 + static_cast<unsigned long long>(digit - '0');
        FUZZ_EQUAL(arguments.GetEnvValueAsUInteger64(name).GetValue(), digits ? number : 0 - 1ULL);
        FUZZ_EQUAL(arguments.GetEnvValueAsVolume(name).GetValue(),
                   digits ? static_cast<unsigned int>(number) : 0 - 1u);
        nxDecimal decimal(nxNullInitalizer{});
        (void)decimal.SetFromString(value);
        FUZZ_CHECK(arguments.GetEnvValueAsDecimal(name) == decimal);
        FUZZ_CHECK(arguments.GetEnvValueAsBool(name, true) || !arguments.GetEnvValueAsBool(name));
        (void)arguments.GetEnvValueAsDoubleValue(name);
        CheckHHMMSS(arguments, name, value);
    }
}

/// A number in front, if there is one, cut to what an int holds.
unsigned int LeadingNumber(std::string const& text)
{
    long const number = std::strtol(text.c_str(), nullptr, 10);
    constexpr long least = std::numeric_limits<int>::min();
    return static_cast<unsigned int>(std::clamp<long>(number, least, std::numeric_limits<int>::max()));
}

std::vector<std::string> SplitAtPoints(std::string const& text)
{
    std::vector<std::string> parts(1);
    for (char const character : text)
        character == '.' ? (void)parts.emplace_back() : parts.back().push_back(character);
    return parts;
}

void CheckVersion(std::string const& text)
{
    unsigned int parts[3]{9, 9, 9};
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    version.GetMajorMinorSubVersionParts(text, parts[0], parts[1], parts[2]);
    std::vector<std::string> expected = SplitAtPoints(text);
    expected.resize(3);
    for (std::size_t i = 0; i < 3; ++i)
        FUZZ_EQUAL(parts[i], LeadingNumber(expected[i]));
    FUZZ_EQUAL(version.IsCompatibleVersionNumber(text), parts[0] == 1 && parts[1] == 37);
}

bool ReadWrapping(std::string const& digits, unsigned int& number)
{
    number = 0;
    for (char const digit : digits)
        number = number * 10 + static_cast<unsigned int>(digit - '0');
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
}

bool ReadAddress(std::string const& text, unsigned int& address)
{
    std::vector<std::string> parts = SplitAtPoints(text);
    if (parts.size() == 5 && parts.back().empty())
        parts.pop_back();
    unsigned int read = 0;
    for (std::string const& part : parts)
    {
        unsigned int number = 0;
        if (!ReadWrapping(part, number) || number > 255)
            return false;
        read = (read << 8) + number;
    }
    if (parts.size() == 4)
        address = read;
    return parts.size() == 4;
}

void CheckAddress(std::string const& text)
{
    unsigned int plain = 7;
    unsigned int plainExpected = 7;
    FUZZ_EQUAL(nxSocket::ParseAddress(text, plain).IsOK(), ReadAddress(text, plainExpected));
    FUZZ_EQUAL(plain, plainExpected);

    std::size_t const slash = text.find('/');
    std::string const front = text.substr(0, slash);
    std::string const behind = slash == std::string::npos ? "" : text.substr(slash + 1);
    unsigned int bits = 0;
    unsigned int address = 0;
    bool const sound =
        (behind.empty() || (ReadWrapping(behind, bits) && bits < 32)) && ReadAddress(front, address);

    using Number = nxValueWrapper<unsigned int, -1, -2>;
    std::string addressText = "as it was";
    unsigned int got = 7;
    Number mask(1), network(2), host(3);
    FUZZ_EQUAL(nxSocket::ParseAddressAndMask(text, addressText, got, mask, network, host).IsOK(), sound);
    FUZZ_EQUAL(addressText, sound ? front : "");
    FUZZ_EQUAL(got, sound ? address : 0);
    bool const hasMask = sound && !behind.empty();
    unsigned int const high = !hasMask || bits == 0 ? 0 : ~0u << (32 - bits);
    FUZZ_EQUAL(mask.GetValue(), hasMask ? high : Number::nullValue);
    FUZZ_EQUAL(network.GetValue(), hasMask ? address & high : Number::nullValue);
    FUZZ_EQUAL(host.GetValue(), hasMask ? address & ~high : Number::nullValue);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::string const text = input.Text();
    CheckVersion(text);
    CheckAddress(text);
    std::vector<std::string> words{"program"};
    for (unsigned int count = input.Below(12); count != 0; --count)
        words.emplace_back(input.Text().c_str());
    std::vector<std::string> entries;
    while (!input.IsEmpty())
        entries.emplace_back(input.Text().c_str());
    Arguments arguments;
    arguments.Initialise(MakePointers(words).data(), MakePointers(entries).data());
    CheckCommandLine(arguments, words);
    CheckEnvironment(arguments, entries);
    return 0;
}
