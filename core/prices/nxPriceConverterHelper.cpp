#include "core/prices/nxPriceConverterHelper.h"

#include "core/concurrency/nxConditionalMutexGuard.h"
#include "core/concurrency/nxHeldAcrossForks.h"
#include "core/prices/nxDecimalPriceConverter.h"
#include "core/prices/nxFraction100thsTickPriceConverter.h"
#include "core/prices/nxFraction10thsTickPriceConverter.h"
#include "core/prices/nxFraction12thsTickPriceConverter.h"
#include "core/prices/nxFraction16thsTickPriceConverter.h"
#include "core/prices/nxFraction20thsTickPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFraction40thsTickPriceConverter.h"
#include "core/prices/nxFraction64thsTickPriceConverter.h"
#include "core/prices/nxFraction8thsTickPriceConverter.h"
#include "core/prices/nxFractionEighth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionFive1000thsTickPriceConverter.h"
#include "core/prices/nxFractionHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionHalf64thsTickPriceConverter.h"
#include "core/prices/nxFractionHalfTickPriceConverter.h"
#include "core/prices/nxFractionModifiedEighth32ndsAltTickPriceConverter.h"
#include "core/prices/nxFractionModifiedEighth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarter100thsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarter32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedQuarterTickPriceConverter.h"
#include "core/prices/nxFractionQuarter32ndsTickPriceConverter.h"
#include "core/prices/nxFractionQuarterTickPriceConverter.h"
#include "core/prices/nxFractionSixteenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionTenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionWholeTickPriceConverter.h"
#include "core/vocabulary/nxEnumValue.h"

#include <array>

namespace
{
constexpr unsigned int firstFormat = NX_PRICE_FORMAT_DECIMALS;
constexpr unsigned int lastFormat = NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT;

using SharedConverters = std::array<nxPriceConverter*, lastFormat - firstFormat + 1>;

nxMutex& SharedConvertersMutex()
{
    static nxMutex& mutex = *new nxMutex;
    return mutex;
}

[[maybe_unused]] bool const isHeldAcrossForks = nxHeldAcrossForks::Add(SharedConvertersMutex);

nxPriceConverter* NewConverter(unsigned int format)
{
    switch (format)
    {
    case NX_PRICE_FORMAT_DECIMALS: return new nxDecimalPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_FULL_TICK: return new nxFractionWholeTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_HALF_TICK: return new nxFractionHalfTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_QUARTER_TICK: return new nxFractionQuarterTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_TICK:
        return new nxFractionModifiedQuarterTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_8THS_TICK: return new nxFraction8thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_10THS_TICK: return new nxFraction10thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_16THS_TICK: return new nxFraction16thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_20THS_TICK: return new nxFraction20thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_32NDS_TICK: return new nxFraction32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_40THS_TICK: return new nxFraction40thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_64THS_TICK: return new nxFraction64thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_100THS_TICK: return new nxFraction100thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK: return new nxFractionHalf32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_QUARTER_32NDS_TICK: return new nxFractionQuarter32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK: return new nxFractionHalf64thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK: return new nxFractionFive1000thsTickPriceConverter;
    case NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS: return new nxDecimalPriceConverter;
    case NX_PRICE_FORMAT_MODIFIED_DECIMALS_10000THS: return new nxDecimalPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK: return new nxFractionTenth32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK:
        return new nxFractionModifiedHalf32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK:
        return new nxFractionModifiedQuarter32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK:
        return new nxFractionModifiedQuarter100thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_12THS_TICK: return new nxFraction12thsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK: return new nxFractionEighth32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK: return new nxFractionSixteenth32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK:
        return new nxFractionModifiedEighth32ndsTickPriceConverter;
    case NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT:
        return new nxFractionModifiedEighth32ndsAltTickPriceConverter;
    default: return nullptr;
    }
}

// What the shown value is to the price; null for the formats that show the price itself.
nxDecimal GetRatio(unsigned int format)
{
    switch (format)
    {
    case NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS: return nxDecimal::ConstructFromValueAndDecimalPlaces(1, 2);
    case NX_PRICE_FORMAT_MODIFIED_DECIMALS_10000THS:
        return nxDecimal::ConstructFromValueAndDecimalPlaces(1, 4);
    default: return nxDecimal::GetNullDecimal();
    }
}

// Never destroyed: a thread may still show prices while the process exits.
SharedConverters MakeSharedConverters()
{
    SharedConverters converters{};
    for (unsigned int format = firstFormat; format <= lastFormat; ++format)
    {
        converters[format - firstFormat] =
            nxPriceConverterHelper::CreatePriceConverter(nxPriceFormatEnum(static_cast<nxEnumValue>(format)));
    }
    return converters;
}
} // namespace

nxPriceConverter* nxPriceConverterHelper::CreatePriceConverter(nxPriceFormatEnum const& format)
{
    nxPriceConverter* const converter = NewConverter(format.GetValue());
    if (converter != nullptr)
        (void)converter->_SetPriceRatio(GetRatio(format.GetValue())); // most have none, which is refused
    return converter;
}

bool nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper const& price,
                                              nxPriceFormatEnum const& format, std::string& text,
                                              bool useLock)
{
    nxConditionalMutexGuard const guard(SharedConvertersMutex(), useLock);
    nxPriceConverter* const converter = _GetPriceConverter(format);
    if (converter == nullptr || !converter->SetPrice(price, false))
        return false;
    text = converter->GetPriceAsString();
    return true;
}

bool nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper const& price, nxDecimal const& tick,
                                              nxPriceFormatEnum const& format, std::string& text,
                                              bool useLock, bool validate)
{
    nxConditionalMutexGuard const guard(SharedConvertersMutex(), useLock);
    nxPriceConverter* const converter = _GetPriceConverter(format);
    if (converter == nullptr || !converter->SetMinimumTickIncrement(tick) ||
        !converter->SetPrice(price, validate))
        return false;
    text = converter->GetPriceAsString();
    return true;
}

nxPriceConverter* nxPriceConverterHelper::_GetPriceConverter(nxPriceFormatEnum const& format)
{
    static SharedConverters const converters = MakeSharedConverters();
    unsigned int const number = format.GetValue();
    return number < firstFormat || number > lastFormat ? nullptr : converters[number - firstFormat];
}

// Built at load: a child of fork() could not wait for another thread to finish them.
[[maybe_unused]] static bool const areBuiltAtLoad = []
{
    std::string text;
    return nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper(), nxPriceFormatEnum(), text, false);
}();
