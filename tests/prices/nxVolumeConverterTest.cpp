// Short volumes: what is cut, what is read back, and what is refused.
#include "core/prices/nxVolumeConverterHelper.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <tuple>

namespace
{
std::unique_ptr<nxVolumeConverter> Converter(nxEnumValue format)
{
    return std::unique_ptr<nxVolumeConverter>(
        nxVolumeConverterHelper::CreateVolumeConverter(nxVolumeFormatEnum(format)));
}

constexpr nxEnumValue raw = static_cast<nxEnumValue>(0);
} // namespace

TEST(nxVolumeConverterText, CutsAndNeverRounds)
{
    using Row = std::tuple<long long, char const*, char const*>;
    constexpr Row rows[] = {
#define NX_VOLUME_SHOWN(number, abbreviated, onePlace) {number, abbreviated, onePlace},
#include "tests/prices/nxVolumeTexts.def"
    };
    for (auto const& [number, abbreviated, onePlace] : rows)
    {
        bool const isNumber = number < 9223372036854775806;
        std::pair<nxEnumValue, std::string> const texts[] = {{raw, isNumber ? std::to_string(number) : ""},
                                                             {NX_VOLUME_FORMAT_ABBREVIATED, abbreviated},
                                                             {NX_VOLUME_FORMAT_ABBREVIATED_1DP, onePlace}};
        for (auto const& [format, text] : texts)
        {
            std::string shown = "old";
            EXPECT_TRUE(nxVolumeConverterHelper::GetFormattedDisplayVolume(
                nxVolumeConverter::LongVolume(number), nxVolumeFormatEnum(format), shown));
            EXPECT_EQ(shown, text);
            if (isNumber && (number < 0 || number > UINT_MAX))
                continue;
            nxVolume const volume(static_cast<unsigned int>(number)); // cut to 32 bits, marks are marks
            shown = "old";
            std::unique_ptr<nxVolumeConverter>(Converter(format)->Clone())
                ->GetFormattedDisplayVolume(volume, shown);
            EXPECT_EQ(shown, text);
        }
    }
}

TEST(nxVolumeConverterReading, TakesOrRefuses)
{
    using namespace std::string_literals;
    enum Outcome
    {
        Taken,
        Refused,
        TooPrecise
    };
    constexpr unsigned int null = 4294967295; // and one less is no change
    constexpr nxEnumValue brief = NX_VOLUME_FORMAT_ABBREVIATED;
    using Row = std::tuple<nxEnumValue, std::string, Outcome, unsigned int>;
    Row const rows[] = {
#define NX_VOLUME_TEXT(format, text, outcome, stored) {format, text, outcome, stored},
#include "tests/prices/nxVolumeTexts.def"
    };
    for (auto const& [format, text, outcome, stored] : rows)
    {
        nxVolume volume(7);
        bool tooPrecise = outcome != TooPrecise;
        EXPECT_EQ(Converter(format)->SetVolumeFromString(text, volume, tooPrecise), outcome == Taken) << text;
        EXPECT_EQ(tooPrecise, outcome == TooPrecise) << text;
        EXPECT_EQ(volume.GetValue(), stored) << text;
    }
}

TEST(nxVolumeConverterScreen, StepsBySizeAndFiltersCharacters)
{
    constexpr std::pair<unsigned int, unsigned int> increments[] = {
        {0, 10},          {999, 10},         {1000, 100},       {9999, 100},         {10000, 1000},
        {100000, 10000},  {1000000, 100000}, {9999999, 100000}, {10000000, 1000000}, {4000000000, 1000000},
        {4294967295, 10}, {4294967294, 10},
    };
    for (auto const& [volume, increment] : increments)
    {
        EXPECT_EQ(Converter(NX_VOLUME_FORMAT_ABBREVIATED)->GetVolumeIncrement(nxVolume(volume)), increment)
            << volume;
        EXPECT_EQ(Converter(NX_VOLUME_FORMAT_ABBREVIATED_1DP)->GetVolumeIncrement(nxVolume(volume)),
                  increment);
        EXPECT_EQ(Converter(raw)->GetVolumeIncrement(nxVolume(volume)), 1u);
    }
    for (int character = -1; character <= 256; ++character)
    {
        bool const digit = character >= '0' && character <= '9';
        bool const passed = character < 32 || character > 127;
        bool const suffix = character > 0 && character < 128 &&
                            std::string(".KkMm").find(static_cast<char>(character)) != std::string::npos;
        EXPECT_EQ(Converter(raw)->IsValidVolumeCharacter(character), digit || passed) << character;
        EXPECT_EQ(Converter(NX_VOLUME_FORMAT_ABBREVIATED)->IsValidVolumeCharacter(character),
                  digit || passed || suffix)
            << character;
    }
}
