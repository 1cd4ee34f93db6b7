#pragma once

#include "core/logging/nxLog.h"

#include <atomic>
#include <cstddef>
#include <string>

/// @file
/// The memory of one log statement. For nxLogSlots.

/// The memory of one statement: the string of its text, and room for the copy that goes to the queue.
///
/// Whoever builds a statement on the stack holds the string; the copy that is made from it moves into the room beside
/// the string, so that what the writer touches lies together. Both are held separately, since a copy may be copied
/// again.
class nxLogSlot : public std::string
{
public:
    /// Room for the text of a usual line.
    static constexpr std::size_t reservedText = 256;

    nxLogSlot()
    {
        _room.slot = this;
        reserve(reservedText);
    }

    /// The slot whose string this is; `entry` came from nxLogSlots::TakeText().
    static nxLogSlot& OfText(std::string& entry)
    {
        return static_cast<nxLogSlot&>(entry);
    }

    /// The slot whose room holds, or held until just now, this statement; `statement` came from a room of a slot.
    static nxLogSlot& OfStatement(void* statement)
    {
        return **(static_cast<nxLogSlot**>(statement) - 1);
    }

private:
    friend class nxLogSlots;

    /// Who holds a part of the slot, as bits; of a free slot they say nothing.
    static constexpr unsigned char _textHeld = 1;
    static constexpr unsigned char _statementHeld = 2;

    struct Room
    {
        nxLogSlot* slot;
        alignas(nxLog) std::byte bytes[sizeof(nxLog)];
    };
    static_assert(sizeof(Room) == sizeof(nxLogSlot*) + sizeof(nxLog),
                  "the slot is found directly before the room");

    std::atomic<unsigned char> _held = 0;
    Room _room;
};
