#include "core/text/nxAlgorithm.h"

#include "core/text/nxByteArray.h"
#include "core/text/nxStringParser.h"

#include <cstddef>
#include <deque>
#include <optional>

namespace
{

constexpr char hexDigits[] = "0123456789ABCDEF";

// One bit of a score for each field.
constexpr std::size_t maximumFieldCount = 32;

using Fields = std::deque<std::string>;

int GetDigitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

void AppendBytesAsHex(unsigned char const* bytes, std::size_t length, std::string& out)
{
    out.reserve(out.size() + length * 2);
    for (std::size_t i = 0; i < length; ++i)
        nxAlgorithm::AppendAsHex(bytes[i], out);
}

// The bits of the fields that are equal, the field looked at first in the highest; nothing if the pattern doesn't
// match.
std::optional<unsigned int> GetScore(Fields const& patternFields, Fields const& keyFields,
                                     std::string const& wildcard)
{
    std::size_t const count = keyFields.size();
    if (patternFields.size() != count)
        return std::nullopt;
    unsigned int score = 0;
    for (std::size_t i = 0; i < count; ++i)
        if (patternFields[i] == keyFields[i])
            score |= 1u << (count - 1 - i);
        else if (patternFields[i] != wildcard)
            return std::nullopt;
    return score;
}

} // namespace

nxErrorEnum nxAlgorithm::SetFromHex(std::string_view const& text, unsigned char& value)
{
    constexpr std::string_view prefix = "0x";
    bool const hasPrefix = text.size() > prefix.size();
    if (text.empty() || text.size() > prefix.size() + 2 ||
        (hasPrefix && text.substr(0, prefix.size()) != prefix))
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    std::string_view const digits = hasPrefix ? text.substr(prefix.size()) : text;
    int const high = digits.size() == 2 ? GetDigitValue(digits.front()) : 0;
    int const low = GetDigitValue(digits.back());
    if (high < 0 || low < 0)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    value = static_cast<unsigned char>(high * 16 + low);
    return nxErrorEnum();
}

std::string nxAlgorithm::GetAsHex(unsigned short const& value)
{
    std::string text;
    AppendAsHex(static_cast<unsigned char>(value >> 8), text);
    AppendAsHex(static_cast<unsigned char>(value & 0xFF), text);
    return text;
}

void nxAlgorithm::AppendAsHex(unsigned char const& value, std::string& out)
{
    out.push_back(hexDigits[value >> 4]);
    out.push_back(hexDigits[value & 0xF]);
}

void nxAlgorithm::AppendAsHex(std::vector<unsigned char> const& bytes, std::string& out)
{
    AppendBytesAsHex(bytes.data(), bytes.size(), out);
}

void nxAlgorithm::AppendAsHex(nxByteArray const& bytes, std::string& out)
{
    if (bytes.bytes != nullptr)
        AppendBytesAsHex(bytes.bytes, bytes.length, out);
}

void nxAlgorithm::GetAsHex(std::vector<unsigned char> const& bytes, std::string& out)
{
    out.clear();
    AppendAsHex(bytes, out);
}

void nxAlgorithm::GetAsHex(nxByteArray const& bytes, std::string& out)
{
    out.clear();
    AppendAsHex(bytes, out);
}

bool nxAlgorithm::GetBestMatch(std::set<std::string> const& patterns, std::string const& key,
                               std::string& best, bool firstFieldFirst, char separator,
                               std::string const& wildcard)
{
    if (key.empty() || patterns.empty())
        return false;
    Fields keyFields;
    nxStringParser::ExtractAllSubstrings(key, keyFields, !firstFieldFirst, separator);
    if (keyFields.size() > maximumFieldCount)
        return false;
    std::string const* found = nullptr;
    unsigned int highestScore = 0;
    for (std::string const& pattern : patterns)
    {
        Fields patternFields;
        nxStringParser::ExtractAllSubstrings(pattern, patternFields, !firstFieldFirst, separator);
        std::optional<unsigned int> const score = GetScore(patternFields, keyFields, wildcard);
        if (score && (found == nullptr || *score > highestScore))
        {
            found = &pattern;
            highestScore = *score;
        }
    }
    if (found == nullptr)
        return false;
    best = *found;
    return true;
}
