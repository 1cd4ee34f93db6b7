#pragma once

#include "tests/faults/Faults.h"

#include <string>
#include <vector>

// Each figure prints its lines and returns whether its promise held; each host is the program that it is shown on.

using Arguments = std::vector<std::string>;

bool DiskFullFigure(Extent extent);
bool SignalFigure(Extent extent);
bool SoakFigure(Extent extent);
bool NemesisFigure(Extent extent);
bool ExitFigure(Extent extent);
bool ForkFigure(Extent extent);
bool MutexFigure(Extent extent);
bool PoolFigure(Extent extent);
bool ClockFigure(Extent extent);
bool SocketFigure(Extent extent);

int DiskFullHost(Arguments const& arguments);
int SignalHost(Arguments const& arguments);
int SoakHost(Arguments const& arguments);
int NemesisHost(Arguments const& arguments);
int ExitHost(Arguments const& arguments);
int ForkHost(Arguments const& arguments);
int DescriptorHost(Arguments const& arguments);
int ClockHost(Arguments const& arguments);

/// What the clock of this process is ahead of the system's, in seconds. Only this program's own clock is moved.
void ShiftClock(long long seconds);

/// Uses every lock that the process shares, as its threads do all the time.
/// @return whether the answers were right.
bool UseSharedParts(unsigned int turn);

inline unsigned int Number(std::string const& text)
{
    return static_cast<unsigned int>(std::stoul(text));
}
