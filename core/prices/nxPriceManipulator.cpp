#include "core/prices/nxPriceManipulator.h"

#include "core/prices/nxVariableTickTable.h"

// Declared with the decimal and defined here, where the manipulator is known.
void nxDecimal::Round(nxPriceManipulator const& manipulator, nxRoundingMethodEnum const& method)
{
    if (IsValid())
        Round(manipulator._GetStepForPrice(*this), method);
}

nxPriceManipulator::nxPriceManipulator() : _tickTable(nullptr)
{
}

nxPriceManipulator::nxPriceManipulator(nxDecimal const& tick) : _fixedTick(tick), _tickTable(nullptr)
{
}

nxPriceManipulator::nxPriceManipulator(nxVariableTickTable const* table) : _tickTable(table)
{
}

nxPriceManipulator const& nxPriceManipulator::operator=(nxPriceManipulator const& other)
{
    _fixedTick = other._fixedTick;
    _tickTable = other._tickTable;
    return other;
}

void nxPriceManipulator::Init(nxDecimal const& tick)
{
    _fixedTick = tick;
    _tickTable = nullptr;
}

void nxPriceManipulator::Init(nxVariableTickTable const* table)
{
    _tickTable = table;
}

bool nxPriceManipulator::IsValid() const
{
    return IsVariableTick() || _HasFixedTick();
}

bool nxPriceManipulator::IsVariableTick() const
{
    return _tickTable != nullptr;
}

nxDecimal const& nxPriceManipulator::GetMinimumTickIncrement() const
{
    return IsVariableTick() ? _tickTable->GetMinimumTickIncrement() : _fixedTick;
}

unsigned char nxPriceManipulator::NumberOfDecimalPlaces(nxDecimal const& price) const
{
    return IsVariableTick() ? _tickTable->NumberOfDecimalPlaces(price) : _fixedTick.GetDecimalPlaces();
}

void nxPriceManipulator::Increment(nxDecimal& price) const
{
    if (IsVariableTick())
    {
        _tickTable->Increment(price);
        return;
    }
    price += _HasFixedTick() ? _fixedTick : nxDecimal(1LL, price.GetDecimalPlaces());
}

void nxPriceManipulator::Decrement(nxDecimal& price) const
{
    if (IsVariableTick())
    {
        _tickTable->Decrement(price);
        return;
    }
    price -= _HasFixedTick() ? _fixedTick : nxDecimal(1LL, price.GetDecimalPlaces());
}

void nxPriceManipulator::Increment(nxDecimal& price, int ticks) const
{
    if (IsVariableTick())
    {
        _tickTable->Increment(price, ticks);
        return;
    }
    long long const count = ticks;
    price += _HasFixedTick() ? nxDecimal(count, _fixedTick.GetDecimalPlaces()) * _fixedTick
                             : nxDecimal(count, price.GetDecimalPlaces());
}

void nxPriceManipulator::RoundToValidPrice(nxRoundingMethodEnum const& method, nxDecimal& price) const
{
    price.Round(*this, method);
}

nxVolume nxPriceManipulator::GetPriceDifferenceInTicks(nxDecimal const& a, nxDecimal const& b) const
{
    if (!a.IsValid() || !b.IsValid())
        return nxVolume();
    bool const ascending = a < b;
    nxDecimal low = ascending ? a : b;
    nxDecimal const& high = ascending ? b : a;
    unsigned int count = 0;
    while (low < high)
    {
        nxDecimal const before = low;
        Increment(low);
        if (low == before)
            break;
        ++count;
    }
    return nxVolume(count);
}

bool nxPriceManipulator::_HasFixedTick() const
{
    return _fixedTick.IsValid() && _fixedTick.IsPositive();
}

nxDecimal const& nxPriceManipulator::_GetStepForPrice(nxDecimal const& price) const
{
    return IsVariableTick() ? _tickTable->_GetIncrementForPrice(price) : _fixedTick;
}
