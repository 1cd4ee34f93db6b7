#pragma once

#include <string>
#include <vector>

/// @file
/// The memory of log statements, which goes round between the threads that log and the writer.
///
/// A block that another core frees costs its allocator a dozen times what one of its own costs. So the writer gives
/// the memory of written statements back to those who log, in batches: a thread takes a batch under a lock once in
/// some dozens of statements and works it off alone.

class nxLog;
class nxLogSlot;

/// Gives out slots and takes them back. Static only; any thread may call, also while the process ends.
class nxLogSlots
{
public:
    nxLogSlots() = delete;

    /// @return an empty string with room for a usual line.
    static std::string* TakeText();

    /// Takes a string back that came from TakeText().
    static void ReturnText(std::string* entry);

    /// @return room for the copy of the statement that holds `entry`, which may be null.
    static void* TakeRoom(std::string* entry);

    /// Takes a room back that came from TakeRoom().
    static void ReturnRoom(void* room);

    /// Destroys the statements and returns all that they hold, for any thread to use; empties the vector and keeps
    /// its storage. For the writer, once a cycle: it also lets go of memory that has not been needed for some time.
    static void Recycle(std::vector<nxLog*>& statements);

    /// Has memory for so many statements ready before they come, and keeps as much from then on. Without memory for
    /// all, for fewer.
    static void Prepare(unsigned long long statements);

    /// Holds back every other thread's use of what threads share, across a fork.
    static void LockBeforeFork();
    static void UnlockAfterFork();

private:
    class Depot;
    class ThreadCache;
    struct Chunk;

    static nxLogSlot* _Take();
    static void _Return(nxLogSlot* slot);
    static void _Drop(nxLogSlot& slot, unsigned char part);
    static bool _ReturnWhole(nxLog* statement, Chunk*& chunk);
    static Depot& _GetDepot();
};
