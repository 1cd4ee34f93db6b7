// Every number, token and text is what stored data and other programs know it by.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <string>
#include <vector>

namespace
{
struct TextRange
{
    unsigned int first;
    unsigned int last;
};

constexpr TextRange freeTexts[] = {
#define NX_RECORDED_ENUM(Class, lower, upper, rows, ordered, checksum)
#define NX_RECORDED_MASK(Class, bits, rows, checksum)
#define NX_FREE_TEXTS(first, last) {first, last},
#include "tests/vocabulary/nxVocabularyRecord.def"
};

// Rights for packaged strategies, whose names belong to whoever packages them.
constexpr TextRange freeTokens = {102901, 102904};
constexpr std::size_t freeTokenCount = 4;
constexpr std::size_t commonRowCount = 3;
constexpr std::size_t recordedRowCount = 1989;

bool Contains(TextRange const& range, unsigned int number)
{
    return number >= range.first && number <= range.last;
}

bool IsTextFree(unsigned int number)
{
    return std::any_of(std::begin(freeTexts), std::end(freeTexts),
                       [number](TextRange const& range) { return Contains(range, number); });
}

class Checksum
{
public:
    void Add(std::string const& number, std::string const& token, std::string const& text)
    {
        for (char const letter : number + '\t' + token + '\t' + text + '\n')
            _sum = (_sum ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    }

    std::uint64_t Get() const
    {
        return _sum;
    }

private:
    std::uint64_t _sum = 0xcbf29ce484222325;
};

template <typename Enumeration>
concept Ordered = requires(Enumeration const& value)
{
    value < value;
};

template <typename Enumeration>
std::vector<unsigned int> RowsOf(unsigned int lower, unsigned int upper, std::size_t count)
{
    std::vector<nxEnumValue> listed;
    Enumeration().GetRegisteredEnumValuesForInstance(listed);
    std::vector<unsigned int> rows(listed.begin(), listed.end());
    if (lower > upper)
    {
        // The class whose bounds are crossed lists nothing; its rows follow the lower one.
        EXPECT_TRUE(rows.empty());
        for (unsigned int row = lower + 1; row <= lower + count; ++row)
            rows.push_back(row);
    }
    std::erase_if(rows, [](unsigned int number) { return Contains(freeTokens, number); });
    return rows;
}

template <typename Enumeration>
void ExpectRecorded(char const* name, unsigned int lower, unsigned int upper, std::size_t count, bool ordered,
                    std::uint64_t checksum)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Enumeration().GetClassNameA(), name);
    EXPECT_EQ(nxOpenEnum<Enumeration>()._MinValue(), lower);
    EXPECT_EQ(nxOpenEnum<Enumeration>()._MaxValue(), upper);
    EXPECT_EQ(Ordered<Enumeration>, ordered);
    if constexpr (std::same_as<Enumeration, nxGenericEnum>)
        return; // no rows of its own: it lists those of others

    std::vector<unsigned int> const rows = RowsOf<Enumeration>(lower, upper, count);
    EXPECT_EQ(rows.size(), count);
    Checksum sum;
    for (unsigned int const number : rows)
    {
        nxAnyEnum const row(number);
        EXPECT_FALSE(row.GetLongDescription().empty()) << number;
        sum.Add(std::to_string(number), row.GetShortDescription(),
                IsTextFree(number) ? std::string() : row.GetLongDescription());

        Enumeration back;
        EXPECT_EQ(back.SetFromString(row.GetShortDescription()), lower < upper) << number;
        EXPECT_EQ(back.GetValue(), lower < upper ? number : 0);
        EXPECT_EQ(Enumeration(static_cast<nxEnumValue>(number)), back);
    }
    EXPECT_EQ(sum.Get(), checksum);
}

template <typename Mask>
class OpenMask : public Mask
{
public:
    static auto const& Rows(std::string const& name)
    {
        return Mask::_GetDescriptionMap()[name];
    }
    static std::size_t ClassCount()
    {
        return Mask::_GetDescriptionMap().size();
    }
};

template <typename Mask>
void ExpectRecordedMask(char const* name, std::size_t bits, std::size_t count, std::uint64_t checksum)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Mask().GetClassNameA(), name);
    EXPECT_EQ(sizeof(Mask().GetValue()) * 8, bits);
    EXPECT_EQ(OpenMask<Mask>::Rows(name).size(), count);
    Checksum sum;
    for (auto const& [value, words] : OpenMask<Mask>::Rows(name))
        sum.Add(std::to_string(value), words.first, words.second);
    EXPECT_EQ(sum.Get(), checksum);
}

// One function a class: a single one with all of them takes the compiler long.
struct Recorded
{
    void (*expect)();
};

constexpr Recorded recordedEnums[] = {
#define NX_RECORDED_ENUM(Class, lower, upper, rows, ordered, checksum)                                       \
    {[] { ExpectRecorded<Class>(#Class, lower, upper, rows, ordered, checksum); }},
#define NX_RECORDED_MASK(Class, bits, rows, checksum)
#define NX_FREE_TEXTS(first, last)
#include "tests/vocabulary/nxVocabularyRecord.def"
};

constexpr Recorded recordedMasks[] = {
#define NX_RECORDED_ENUM(Class, lower, upper, rows, ordered, checksum)
#define NX_RECORDED_MASK(Class, bits, rows, checksum)                                                        \
    {[] { ExpectRecordedMask<Class>(#Class, bits, rows, checksum); }},
#define NX_FREE_TEXTS(first, last)
#include "tests/vocabulary/nxVocabularyRecord.def"
};

// Static objects of a program may use the words already; what they read is looked at by a test.
std::string const tokenBeforeMain = nxBuySellEnum(NX_SELL).GetAsString();
std::string const maskBeforeMain = nxProductStateBitMask(0x3).GetShortDescription(",");
bool const isFoundBeforeMain = nxCurrencyEnum().SetFromString("EUR");
} // namespace

TEST(nxVocabularyRecord, HoldsForEveryEnumeration)
{
    EXPECT_EQ(std::size(recordedEnums), 149u);
    for (Recorded const& recorded : recordedEnums)
        recorded.expect();
}

TEST(nxVocabularyRecord, HoldsForEveryMask)
{
    EXPECT_EQ(std::size(recordedMasks), 32u);
    for (Recorded const& recorded : recordedMasks)
        recorded.expect();
    EXPECT_EQ(OpenMask<nxBitMask>::ClassCount() + OpenMask<nxBitMask64>::ClassCount(), 32u);
}

TEST(nxVocabularyRecord, HasNoRowOutsideOfTheClasses)
{
    std::vector<nxEnumValue> rows;
    nxAnyEnum().GetRegisteredEnumValuesForInstance(rows);
    EXPECT_EQ(rows.size(), commonRowCount + recordedRowCount + freeTokenCount);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));

    for (unsigned int number = freeTokens.first; number <= freeTokens.last; ++number)
        EXPECT_TRUE(nxAnyEnum(number).GetShortDescription().starts_with("NX_FUNCTION_TALVEX_PRODUCT_"));
}

TEST(nxVocabularyRecord, IsKnownBeforeMain)
{
    EXPECT_EQ(tokenBeforeMain, "SELL");
    EXPECT_EQ(maskBeforeMain, "PREOPEN,OPEN");
    EXPECT_TRUE(isFoundBeforeMain);
}
