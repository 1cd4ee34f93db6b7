// Short volumes: what is cut, what is read back, and what is refused.
#include "core/prices/nxVolumeConverterHelper.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

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
    auto const check = [](long long number, nxEnumValue format, std::string const& text)
    {
        std::string shown = "old";
        EXPECT_TRUE(nxVolumeConverterHelper::GetFormattedDisplayVolume(nxVolumeConverter::LongVolume(number),
                                                                       nxVolumeFormatEnum(format), shown));
        EXPECT_EQ(shown, text);
        if (!text.empty() && (number < 0 || number > UINT_MAX))
            return;
        nxVolume const volume(static_cast<unsigned int>(number)); // cut to 32 bits, marks are marks
        shown = "old";
        std::unique_ptr<nxVolumeConverter>(Converter(format)->Clone())
            ->GetFormattedDisplayVolume(volume, shown);
        EXPECT_EQ(shown, text);
    };
#define NX_VOLUME_SHOWN(number, abbreviated, onePlace)                                                       \
    check(number, raw, *(abbreviated) == '\0' ? "" : std::to_string(number));                                \
    check(number, NX_VOLUME_FORMAT_ABBREVIATED, abbreviated);                                                \
    check(number, NX_VOLUME_FORMAT_ABBREVIATED_1DP, onePlace);
#include "tests/prices/nxVolumeTexts.def"
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
    auto const check = [](nxEnumValue format, std::string const& text, Outcome outcome, unsigned int stored)
    {
        nxVolume volume(7);
        bool tooPrecise = outcome != TooPrecise;
        EXPECT_EQ(Converter(format)->SetVolumeFromString(text, volume, tooPrecise), outcome == Taken) << text;
        EXPECT_EQ(tooPrecise, outcome == TooPrecise) << text;
        EXPECT_EQ(volume.GetValue(), stored) << text;
    };
#define NX_VOLUME_TEXT(...) check(__VA_ARGS__);
#include "tests/prices/nxVolumeTexts.def"
}

TEST(nxVolumeConverterScreen, StepsBySizeAndFiltersCharacters)
{
    constexpr std::pair<unsigned int, unsigned int> increments[] = {
        {0, 10},          {999, 10},         {1000, 100},       {9999, 100},         {10000, 1000},
        {100000, 10000},  {1000000, 100000}, {9999999, 100000}, {10000000, 1000000}, {4000000000, 1000000},
        {4294967295, 10}, {4294967294, 10},
    };
    for (auto const& [volume, increment] : increments)
        for (nxEnumValue const format : {raw, NX_VOLUME_FORMAT_ABBREVIATED, NX_VOLUME_FORMAT_ABBREVIATED_1DP})
            EXPECT_EQ(Converter(format)->GetVolumeIncrement(nxVolume(volume)), format == raw ? 1 : increment)
                << volume;
    for (int character = -1; character <= 256; ++character)
    {
        bool const digit = character >= '0' && character <= '9';
        bool const passed = character < 32 || character > 127;
        bool const suffix =
            character > 0 && std::string(".KkMm").find(static_cast<char>(character % 128)) < 5;
        EXPECT_EQ(Converter(raw)->IsValidVolumeCharacter(character), digit || passed) << character;
        EXPECT_EQ(Converter(NX_VOLUME_FORMAT_ABBREVIATED)->IsValidVolumeCharacter(character),
                  digit || passed || suffix)
            << character;
    }
}
