// Volumes and their texts, against products of whole numbers.

#include "fuzz/FuzzInput.h"

#include "core/prices/nxVolumeConverter.h"
#include "core/prices/nxVolumeConverterHelper.h"

#include <limits>
#include <memory>

namespace
{
struct Unit
{
    unsigned int factor;
    unsigned int places;
};

/// What the last character says about the ones before it.
Unit FindUnit(nxVolumeFormatEnum const& format, char last)
{
    bool const oneDigit = format == NX_VOLUME_FORMAT_ABBREVIATED_1DP;
    switch (last)
    {
    case 'M':
    case 'm': return {1000000, oneDigit ? 1u : 6u};
    case 'K':
    case 'k': return {1000, oneDigit ? 1u : 3u};
    default: return {1, 0};
    }
}

/// Tells texts that the format takes from others; the number only as far as it is exact.
void CheckAbbreviated(nxVolumeConverter const& converter, nxVolumeFormatEnum const& format,
                      std::string digits)
{
    nxVolume volume(7);
    bool tooPrecise = true;
    bool const taken = converter.SetVolumeFromString(digits, volume, tooPrecise);
    FUZZ_CHECK(!taken || !tooPrecise);
    if (digits.empty() || digits.find('\0') != std::string::npos)
        return;
    Unit const unit = FindUnit(format, digits.back());
    if (unit.factor != 1)
        digits.pop_back();
    std::size_t const point = digits.find('.');
    std::size_t const places = point == std::string::npos ? 0 : digits.size() - point - 1;
    if (point != std::string::npos)
        digits.erase(point, 1);
    bool const isNumber = !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
    if (!isNumber || places > unit.places)
    {
        if (digits.find_first_of("+-") == std::string::npos)
            FUZZ_CHECK(!taken && volume.IsNull());
        return;
    }
    if (digits.size() > 15)
        return;
    unsigned long long number = std::stoull(digits) * unit.factor;
    for (std::size_t place = 0; place < places; ++place)
        number /= 10;
    bool const fits = number <= std::numeric_limits<unsigned int>::max();
    if (point != std::string::npos && unit.factor == 1)
        FUZZ_CHECK(!taken && tooPrecise); // a point and nothing else
    else
        FUZZ_EQUAL(taken, fits);
    if (taken)
        FUZZ_EQUAL(volume.GetValue(), static_cast<unsigned int>(number));
}

void CheckRaw(nxVolumeConverter const& converter, std::string const& text)
{
    nxVolume volume(7);
    bool tooPrecise = true;
    bool const taken = converter.SetVolumeFromString(text, volume, tooPrecise);
    FUZZ_CHECK(!tooPrecise);
    bool const isNumber = text.find_first_not_of("0123456789") == std::string::npos;
    FUZZ_CHECK(isNumber || !taken);
    unsigned int number = 0;
    for (char const digit : text)
        number = number * 10 + static_cast<unsigned int>(digit - '0');
    if (isNumber && !text.empty())
        FUZZ_EQUAL(taken, number < 0xFFFFFFFEu);
    if (taken && !text.empty())
        FUZZ_EQUAL(volume.GetValue(), number);
    FUZZ_CHECK(!text.empty() || (taken && volume.IsNull()));
}

/// A short form is cut off, never rounded: it reads back as no more than the volume, and no less but by its last digit.
void CheckShown(nxVolumeConverter const& converter, nxVolumeFormatEnum const& format, nxVolume volume)
{
    std::string text = "x";
    converter.GetFormattedDisplayVolume(volume, text);
    std::string shared;
    FUZZ_CHECK(nxVolumeConverterHelper::GetFormattedDisplayVolume(volume, format, shared));
    FUZZ_EQUAL(shared, text);
    FUZZ_EQUAL(text.empty(), !volume.IsValid());
    if (!volume.IsValid())
        return;
    nxVolume back;
    bool tooPrecise = false;
    FUZZ_CHECK(converter.SetVolumeFromString(text, back, tooPrecise));
    unsigned long long grain = FindUnit(format, text.back()).factor;
    for (unsigned int place = FindUnit(format, text.back()).places; place != 0; --place)
        grain /= 10;
    FUZZ_CHECK(back.GetValue() <= volume.GetValue() &&
               volume.GetValue() - back.GetValue() < std::max(grain, 1ull));
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    auto const number = static_cast<nxEnumValue>(NX_VOLUME_FORMAT_ABBREVIATED + input.Below(3));
    nxVolumeFormatEnum const format(number);
    std::unique_ptr<nxVolumeConverter> const converter(
        nxVolumeConverterHelper::CreateVolumeConverter(format));
    std::string const text = input.Text();
    bool const isShort = format == NX_VOLUME_FORMAT_ABBREVIATED || format == NX_VOLUME_FORMAT_ABBREVIATED_1DP;
    if (isShort)
        CheckAbbreviated(*converter, format, text);
    else
        CheckRaw(*converter, text);
    CheckShown(*converter, format, nxVolume(input.Take<unsigned int>()));
    std::string shown;
    converter->GetFormattedDisplayVolume(nxVolumeConverter::LongVolume(input.Take<long long>()), shown);
    FUZZ_CHECK(shown.size() <= 21);
    return 0;
}
