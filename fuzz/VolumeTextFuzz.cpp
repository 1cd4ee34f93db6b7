// Volumes and their texts, against products of whole numbers.

#include "fuzz/FuzzInput.h"

#include "core/prices/nxVolumeConverter.h"
#include "core/prices/nxVolumeConverterHelper.h"

namespace
{
/// What the last character says about the ones before it: a factor, and their places at most.
std::pair<unsigned int, unsigned int> FindUnit(nxVolumeFormatEnum const& format, char last)
{
    bool const oneDigit = format == NX_VOLUME_FORMAT_ABBREVIATED_1DP;
    if (last == 'M' || last == 'm')
        return {1000000, oneDigit ? 1u : 6u};
    if (last == 'K' || last == 'k')
        return {1000, oneDigit ? 1u : 3u};
    return {1, 0};
}

/// A short form is cut off, never rounded: it reads back as no more than the volume, and no less but by its
/// last digit.
void CheckShown(nxVolumeConverter const& converter, nxVolumeFormatEnum const& format, nxVolume volume)
{
    std::string text = "x";
    converter.GetFormattedDisplayVolume(volume, text);
    std::string shared;
    FUZZ_CHECK(nxVolumeConverterHelper::GetFormattedDisplayVolume(volume, format, shared) && shared == text);
    FUZZ_EQUAL(text.empty(), !volume.IsValid());
    if (!volume.IsValid())
        return;
    nxVolume back;
    bool tooPrecise = false;
    FUZZ_CHECK(converter.SetVolumeFromString(text, back, tooPrecise));
    auto const [factor, places] = FindUnit(format, text.back());
    auto const grain = std::max<FuzzWide>(factor / FuzzPowerOfTen(places), 1);
    FUZZ_CHECK(back.GetValue() <= volume.GetValue() && volume.GetValue() - back.GetValue() < grain);
}

/// What is taken can be shown, what is refused is none, and digits are a number, which a unit multiplies.
void CheckText(nxVolumeConverter const& converter, nxVolumeFormatEnum const& format, std::string const& text)
{
    nxVolume volume(7);
    bool tooPrecise = true;
    bool const taken = converter.SetVolumeFromString(text, volume, tooPrecise);
    if (format != NX_VOLUME_FORMAT_ABBREVIATED && format != NX_VOLUME_FORMAT_ABBREVIATED_1DP)
    {
        auto const number = static_cast<unsigned int>(FuzzNumber(text));
        FUZZ_EQUAL(taken, FuzzIsDigits(text) && number < 0xFFFFFFFEu);
        FUZZ_CHECK(!tooPrecise && (!taken || volume == (text.empty() ? nxVolume() : nxVolume(number))));
        return;
    }
    FUZZ_CHECK(taken ? !tooPrecise : volume.IsNull() || text.find_first_of("+-") != std::string::npos);
    CheckShown(converter, format, volume);
    unsigned int const factor = text.empty() ? 1 : FindUnit(format, text.back()).first;
    std::string const digits = text.substr(0, text.size() - (factor == 1 ? 0 : 1));
    if (digits.empty() || digits.size() > 12 || !FuzzIsDigits(digits))
        return;
    unsigned long long const number = FuzzNumber(digits) * factor;
    FUZZ_EQUAL(taken, number <= std::numeric_limits<unsigned int>::max());
    FUZZ_CHECK(!taken || volume.GetValue() == number);
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    nxVolumeFormatEnum const format(static_cast<nxEnumValue>(NX_VOLUME_FORMAT_ABBREVIATED + input.Below(3)));
    std::unique_ptr<nxVolumeConverter> const converter(
        nxVolumeConverterHelper::CreateVolumeConverter(format));
    CheckText(*converter, format, input.Text());
    CheckShown(*converter, format, nxVolume(input.Take<unsigned int>()));
    std::string shown;
    converter->GetFormattedDisplayVolume(nxVolumeConverter::LongVolume(input.Take<long long>()), shown);
    FUZZ_CHECK(shown.size() <= 21);
}
