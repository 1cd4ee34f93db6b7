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
    struct Row
    {
        long long volume;
        char const* raw;
        char const* abbreviated;
        char const* onePlace;
    };
    constexpr Row rows[] = {
        {0, "0", "0", "0"},
        {999, "999", "999", "999"},
        {1000, "1000", "1k", "1k"},
        {1234, "1234", "1.234k", "1.2k"},
        {1999, "1999", "1.999k", "1.9k"},
        {2000, "2000", "2k", "2k"},
        {999999, "999999", "999.999k", "999.9k"},
        {1000000, "1000000", "1M", "1M"},
        {1500000, "1500000", "1.5M", "1.5M"},
        {1234567, "1234567", "1.234567M", "1.2M"},
        {4294967293, "4294967293", "4294.967293M", "4294.9M"},
        {-999, "-999", "-999", "-999"},
        {-1000, "-1000", "-1k", "-1k"},
        {-1234567, "-1234567", "-1.234567M", "-1.2M"},
        {50000000000000, "50000000000000", "50000000M", "50000000M"},
    };
    for (Row const& row : rows)
    {
        std::pair<nxEnumValue, char const*> const texts[] = {
            {raw, row.raw},
            {NX_VOLUME_FORMAT_ABBREVIATED, row.abbreviated},
            {NX_VOLUME_FORMAT_ABBREVIATED_1DP, row.onePlace}};
        for (auto const& [format, text] : texts)
        {
            std::string shown = "old";
            nxVolumeFormatEnum const kind(format);
            EXPECT_TRUE(nxVolumeConverterHelper::GetFormattedDisplayVolume(
                nxVolumeConverter::LongVolume(row.volume), kind, shown));
            EXPECT_EQ(shown, text);
            if (row.volume >= 0 && row.volume <= UINT_MAX)
            {
                nxVolume const volume(static_cast<unsigned int>(row.volume));
                EXPECT_TRUE(nxVolumeConverterHelper::GetFormattedDisplayVolume(volume, kind, shown));
                EXPECT_EQ(shown, text);
            }
        }
    }
}

TEST(nxVolumeConverterText, IsEmptyForNullAndNoChange)
{
    nxVolume noChange;
    noChange.SetNoChange();
    for (nxEnumValue const format : {raw, NX_VOLUME_FORMAT_ABBREVIATED, NX_VOLUME_FORMAT_ABBREVIATED_1DP})
    {
        for (nxVolume const volume : {nxVolume(), noChange})
        {
            std::string text = "old";
            Converter(format)->GetFormattedDisplayVolume(volume, text);
            EXPECT_EQ(text, "");
            text = "old";
            Converter(format)->GetFormattedDisplayVolume(nxVolumeConverter::LongVolume(), text);
            EXPECT_EQ(text, "");
        }
    }
}

TEST(nxVolumeConverterReading, TakesOrRefuses)
{
    enum Outcome
    {
        Taken,
        Refused,
        TooPrecise
    };
    struct Row
    {
        nxEnumValue format;
        char const* text;
        Outcome outcome;
        unsigned int volume; // 4294967295 is null, 4294967294 no change
    };
    constexpr unsigned int null = 4294967295;
    constexpr Row rows[] = {
        {raw, "", Taken, null},
        {raw, "999", Taken, 999},
        {raw, "-1", Refused, null},
        {raw, "1.5", Refused, null},
        {raw, "4294967293", Taken, 4294967293},
        {raw, "4294967294", Refused, 4294967294}, // stored all the same
        {raw, "4294967295", Refused, 4294967295},
        {raw, "4294967297", Taken, 1}, // wraps
        {NX_VOLUME_FORMAT_ABBREVIATED, "", Taken, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "999", Taken, 999},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.5M", Taken, 1500000},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.5m", Taken, 1500000},
        {NX_VOLUME_FORMAT_ABBREVIATED, "250k", Taken, 250000},
        {NX_VOLUME_FORMAT_ABBREVIATED, "250K", Taken, 250000},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.234567M", Taken, 1234567},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.2345k", Refused, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.2340k", Refused, null}, // trailing zeros count
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.5", TooPrecise, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1.", TooPrecise, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "5000M", TooPrecise, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "-5", TooPrecise, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "4294967295", Taken, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "4294967296", TooPrecise, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "x", Refused, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "k", Refused, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1x0", Refused, null},
        {NX_VOLUME_FORMAT_ABBREVIATED, "1kk", Refused, null},
        {NX_VOLUME_FORMAT_ABBREVIATED_1DP, "1.2k", Taken, 1200},
        {NX_VOLUME_FORMAT_ABBREVIATED_1DP, "1.25k", Refused, null},
    };
    for (Row const& row : rows)
    {
        nxVolume volume(7);
        bool tooPrecise = row.outcome != TooPrecise;
        EXPECT_EQ(Converter(row.format)->SetVolumeFromString(row.text, volume, tooPrecise),
                  row.outcome == Taken)
            << row.text;
        EXPECT_EQ(tooPrecise, row.outcome == TooPrecise) << row.text;
        EXPECT_EQ(volume.GetValue(), row.volume) << row.text;
    }
}

TEST(nxVolumeConverterReading, AZeroByteIsNoDigitOfAPlainVolume)
{
    nxVolume volume(7);
    bool tooPrecise = true;
    EXPECT_FALSE(Converter(raw)->SetVolumeFromString(std::string("5\0", 2), volume, tooPrecise));
    EXPECT_TRUE(volume.IsNull());
    EXPECT_FALSE(tooPrecise);
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

TEST(nxVolumeConverterSelection, ClonesKeepTheirClass)
{
    for (nxEnumValue const format : {raw, NX_VOLUME_FORMAT_ABBREVIATED, NX_VOLUME_FORMAT_ABBREVIATED_1DP})
    {
        std::string text;
        std::string cloned;
        auto const converter = Converter(format);
        converter->GetFormattedDisplayVolume(nxVolume(1999), text);
        std::unique_ptr<nxVolumeConverter>(converter->Clone())
            ->GetFormattedDisplayVolume(nxVolume(1999), cloned);
        EXPECT_EQ(cloned, text);
    }
}
