#include "core/vocabulary/nxEnumWords.h"

#include "core/vocabulary/nxEnumRow.h"
#include "core/vocabulary/nxEnumValue.h"
#include "core/vocabulary/nxTokenHash.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace
{
// The tokens of the three rows that are common to all classes.
constexpr char undefinedToken[] = "UNDEFINED";
constexpr char notRegisteredToken[] = "NOT_REGISTERED";
constexpr char noChangeToken[] = "NO_CHANGE";

// clang-format off

// The rows as they are written. Only the compiler sees them: what stays of them is packed below.
constexpr nxEnumRow rows[] = {
    {NX_UNDEFINED, "NX_UNDEFINED", undefinedToken, "undefined"},
    {NX_NOT_REGISTERED, "NX_NOT_REGISTERED", notRegisteredToken, "not registered"},
    {NX_NO_CHANGE, "NX_NO_CHANGE", noChangeToken, "no change"},
#define NX_ENUM_BEGIN(Class)
#define NX_ROW(number, token, text) {number, #token, #token, text},
#define NX_WORD(number, token, text) {number, "NX_" #token, #token, text},
#define NX_TEXT(number, enumerator, token, text) {number, #enumerator, token, text},
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"
};

// How many rows each class has.
constexpr std::uint16_t rowsOfClasses[] = {
#define NX_ENUM_BEGIN(Class) 0
#define NX_ROW(number, token, text) + 1
#define NX_WORD(number, token, text) + 1
#define NX_TEXT(number, enumerator, token, text) + 1
#define NX_ENUM_END(Class) ,
#include "core/vocabulary/tables/enumerations.def"
};

// clang-format on

constexpr std::size_t numberOfRows = std::size(rows);
static_assert(numberOfRows == nxEnumWords::count);
constexpr std::size_t numberOfClasses = std::size(rowsOfClasses);

/// Where the token begins in the enumerator that ends with it, or else behind the enumerator and its zero byte.
constexpr std::size_t TokenOffset(nxEnumRow const& row)
{
    std::string_view const enumerator = row.enumerator;
    std::string_view const token = row.token;
    return enumerator.ends_with(token) ? enumerator.size() - token.size() : enumerator.size() + 1;
}

constexpr std::size_t SizeOfWords(nxEnumRow const& row)
{
    return TokenOffset(row) + std::string_view(row.token).size() + 1 + std::string_view(row.text).size() + 1;
}

consteval std::size_t SizeOfAllWords()
{
    std::size_t size = 0;
    for (nxEnumRow const& row : rows)
        size += SizeOfWords(row);
    return size;
}

struct PackedRows
{
    std::array<char, SizeOfAllWords()> words;
    std::array<nxEnumWords, numberOfRows> rows;
};

consteval PackedRows Pack()
{
    PackedRows packed{};
    std::size_t begin = 0;
    for (std::size_t index = 0; index < numberOfRows; ++index)
    {
        nxEnumRow const& row = rows[index];
        std::string_view const enumerator = row.enumerator;
        std::string_view const token = row.token;
        std::string_view const text = row.text;
        if (token.size() > nxEnumWords::maxTokenLength)
            throw "a token is too long for registration";
        std::size_t const offset = TokenOffset(row);
        char* const words = packed.words.data() + begin;
        std::copy(enumerator.begin(), enumerator.end(), words);
        std::copy(token.begin(), token.end(), words + offset);
        std::copy(text.begin(), text.end(), words + offset + token.size() + 1);
        packed.rows[index] = {row.number, static_cast<std::uint32_t>(begin),
                              static_cast<std::uint8_t>(offset), static_cast<std::uint8_t>(token.size()),
                              static_cast<std::uint16_t>(text.size())};
        begin += SizeOfWords(row);
    }
    return packed;
}

consteval auto SortByToken()
{
    struct Entry
    {
        std::string_view token;
        std::uint32_t number;
    };
    std::array<Entry, numberOfRows> entries;
    std::transform(std::begin(rows), std::end(rows), entries.begin(),
                   [](nxEnumRow const& row) {
                       return Entry{row.token, row.number};
                   });
    std::sort(entries.begin(), entries.end(),
              [](Entry const& left, Entry const& right) { return left.token < right.token; });
    if (std::ranges::adjacent_find(entries, {}, &Entry::token) != entries.end())
        throw "a token occurs twice";

    std::array<std::uint32_t, numberOfRows> numbers;
    std::ranges::transform(entries, numbers.begin(), &Entry::number);
    return numbers;
}

consteval bool NumbersDiffer()
{
    std::array<std::uint32_t, numberOfRows> numbers;
    std::transform(std::begin(rows), std::end(rows), numbers.begin(),
                   [](nxEnumRow const& row) { return row.number; });
    std::sort(numbers.begin(), numbers.end());
    return std::adjacent_find(numbers.begin(), numbers.end()) == numbers.end();
}
static_assert(NumbersDiffer());

/// For each class, and once more behind the last, the index of its first row.
consteval auto FirstRows()
{
    std::array<std::uint16_t, numberOfClasses + 1> first{};
    first[0] = nxEnumWords::countOfCommon;
    for (std::size_t place = 0; place < numberOfClasses; ++place)
        first[place + 1] = static_cast<std::uint16_t>(first[place] + rowsOfClasses[place]);
    return first;
}

consteval nxEnumWords::NumberTable MakeNumberTable()
{
    nxEnumWords::NumberTable table{};
    std::uint16_t usedPages = 1; // the first one stays empty
    for (std::size_t index = 0; index < numberOfRows; ++index)
    {
        std::uint32_t const number = rows[index].number;
        std::uint16_t& page = table.pageOfBlock[number / nxEnumWords::blockSize];
        if (page == 0)
            page = usedPages++;
        table.pages[page][number % nxEnumWords::blockSize] = static_cast<std::uint16_t>(index + 1);
    }
    return table;
}

constexpr PackedRows packed = Pack();

// Finds a number by its token: open addressing, a quarter full. Part of the token's hash spares nearly all comparisons
// of words that differ.
struct TokenSlot
{
    std::uint32_t lengthAndPlace; ///< of the token, and one more than where it begins in the words; 0 if free
    std::uint32_t hashAndNumber;
};
constexpr unsigned int placeBits = 24;
constexpr std::size_t numberOfSlots = 8192;
constexpr std::uint32_t numberMask = nxEnumWords::numberLimit - 1;

constexpr std::uint32_t HashPart(std::uint64_t hash)
{
    return static_cast<std::uint32_t>(hash >> 32) & ~numberMask;
}

struct TokenTable
{
    TokenSlot slots[numberOfSlots];
};

consteval TokenTable MakeTokenTable()
{
    TokenTable table{};
    for (std::size_t index = 0; index < numberOfRows; ++index)
    {
        std::uint64_t const hash = nxTokenHash(rows[index].token);
        std::size_t at = hash % numberOfSlots;
        while (table.slots[at].lengthAndPlace != 0)
            at = (at + 1) % numberOfSlots;
        nxEnumWords const& row = packed.rows[index];
        table.slots[at] = {std::uint32_t{row.tokenLength} << placeBits |
                               (row.enumerator + row.tokenOffset + 1),
                           HashPart(hash) | row.number};
    }
    return table;
}

/// Whether less than eight bytes are the same.
bool IsSameShort(char const* token, char const* text, std::size_t size)
{
    using nxTokenHashDetail::Load;
    constexpr std::size_t halfSize = sizeof(std::uint32_t);
    if (size < halfSize) // up to three: the first, the middle and the last, and no token is empty
        return token[0] == text[0] && token[size / 2] == text[size / 2] && token[size - 1] == text[size - 1];
    std::size_t const last = size - halfSize;
    return Load<std::uint32_t>(token) == Load<std::uint32_t>(text) &&
           Load<std::uint32_t>(token + last) == Load<std::uint32_t>(text + last);
}

/// Whether a token of the table has these bytes. Tokens of all sizes are asked for by turns, so that no branch may
/// depend on the size: all words of the longest token are compared, the last one in place of those that there are not.
bool IsSame(char const* token, char const* text, std::size_t size)
{
    using nxTokenHashDetail::Load;
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    if (size < wordSize)
        return IsSameShort(token, text, size);
    std::uint64_t differences = 0;
#pragma GCC unroll 8
    for (std::size_t word = 0; word < nxEnumWords::maxTokenLength / wordSize; ++word)
    {
        std::size_t const at = std::min(word * wordSize, size - wordSize);
        differences |= Load<std::uint64_t>(token + at) ^ Load<std::uint64_t>(text + at);
    }
    return differences == 0;
}

constexpr std::array numbersByToken = SortByToken();
constexpr std::array firstRows = FirstRows();
constexpr TokenTable tokenTable = MakeTokenTable();
} // namespace

constinit nxEnumWords::NumberTable const nxEnumWords::numberTable = MakeNumberTable();

unsigned int nxEnumWords::Find(std::string_view token)
{
    std::uint64_t const hash = nxTokenHash(token);
    for (std::size_t at = hash % numberOfSlots; tokenTable.slots[at].lengthAndPlace != 0;
         at = (at + 1) % numberOfSlots)
    {
        TokenSlot const slot = tokenTable.slots[at];
        if ((slot.hashAndNumber & ~numberMask) != HashPart(hash))
            continue;
        std::size_t const place = (slot.lengthAndPlace & ((1u << placeBits) - 1)) - 1;
        if (slot.lengthAndPlace >> placeBits == token.size() &&
            IsSame(packed.words.data() + place, token.data(), token.size()))
            return slot.hashAndNumber & numberMask;
    }
    return numberLimit;
}

std::size_t nxEnumWords::GetIndex() const
{
    return static_cast<std::size_t>(this - packed.rows.data()) + 1;
}

char const* nxEnumWords::GetEnumerator() const
{
    return packed.words.data() + enumerator;
}

std::string_view nxEnumWords::GetToken() const
{
    return {packed.words.data() + enumerator + tokenOffset, tokenLength};
}

std::string_view nxEnumWords::GetText() const
{
    return {packed.words.data() + enumerator + tokenOffset + tokenLength + 1, textLength};
}

std::span<nxEnumWords const> nxEnumWords::OfAllClasses()
{
    return std::span(packed.rows).first<countOfCommon>();
}

std::span<nxEnumWords const> nxEnumWords::OfClass(std::size_t place)
{
    return {packed.rows.data() + firstRows[place], packed.rows.data() + firstRows[place + 1]};
}

std::span<std::uint32_t const> nxEnumWords::NumbersByToken()
{
    return numbersByToken;
}
