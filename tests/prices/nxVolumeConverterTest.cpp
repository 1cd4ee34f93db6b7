// Short volumes: what is cut, what is read back, and what is refused.
#include "core/prices/nxVolumeConverterHelper.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace
{
std::unique_ptr<nxVolumeConverter> Converter(nxEnumValue format)
{
    return std::unique_ptr<nxVolumeConverter>(
        nxVolumeConverterHelper::CreateVolumeConverter(nxVolumeFormatEnum(format)));
}

constexpr auto raw = static_cast<nxEnumValue>(0);
constexpr nxEnumValue brief = NX_VOLUME_FORMAT_ABBREVIATED;
constexpr nxEnumValue oneDigit = NX_VOLUME_FORMAT_ABBREVIATED_1DP;
} // namespace

TEST(nxVolumeConverter, HoldsToTheTable)
{
    using namespace std::string_literals;
    constexpr int Taken = 0, Refused = 1, TooPrecise = 2;
    constexpr unsigned int null = 4294967295; // and one less is no change
    auto const checkShown = [](auto const& volume, nxEnumValue format, std::string const& text)
    {
        std::string shown = "old";
        EXPECT_TRUE(
            nxVolumeConverterHelper::GetFormattedDisplayVolume(volume, nxVolumeFormatEnum(format), shown));
        EXPECT_EQ(shown, text);
    };
    auto const check = [&](long long number, nxEnumValue format, std::string const& text)
    {
        checkShown(nxVolumeConverter::LongVolume(number), format, text);
        if (text.empty() || (number >= 0 && number < null))
            checkShown(nxVolume(static_cast<unsigned int>(number)), format, text); // cut, marks are marks
    };
    auto const read = [](nxEnumValue format, std::string const& text, int outcome, unsigned int stored)
    {
        nxVolume volume(7);
        bool tooPrecise = outcome != TooPrecise;
        EXPECT_EQ(Converter(format)->SetVolumeFromString(text, volume, tooPrecise), outcome == Taken) << text;
        EXPECT_EQ(tooPrecise, outcome == TooPrecise) << text;
        EXPECT_EQ(volume.GetValue(), stored) << text;
    };
    auto const step = [](unsigned int volume, unsigned int increment)
    {
        for (nxEnumValue const format : {raw, brief, oneDigit})
            EXPECT_EQ(Converter(format)->GetVolumeIncrement(nxVolume(volume)), format == raw ? 1 : increment)
                << volume;
    };
#define NX_VOLUME_SHOWN(number, abbreviated, onePlace)                                                       \
    check(number, raw, *(abbreviated) == '\0' ? "" : std::to_string(number));                                \
    check(number, brief, abbreviated);                                                                       \
    check(number, oneDigit, onePlace);
#define NX_VOLUME_TEXT(...) read(__VA_ARGS__);
#define NX_VOLUME_STEP(...) step(__VA_ARGS__);
#include "tests/prices/nxVolumeTexts.def"
}

TEST(nxVolumeConverter, FiltersCharacters)
{
    for (int character = -1; character <= 256; ++character)
    {
        bool const isPassed = character < 32 || character > 127 || (character >= '0' && character <= '9');
        bool const isSuffix = !isPassed && std::strchr(".KkMm", character) != nullptr;
        for (nxEnumValue const format : {raw, brief, oneDigit})
            EXPECT_EQ(Converter(format)->IsValidVolumeCharacter(character),
                      isPassed || (isSuffix && format != raw))
                << character;
    }
}
