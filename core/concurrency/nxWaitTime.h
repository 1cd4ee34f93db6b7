#pragma once

#include <ctime>

/// @file
/// How long a wait lasts: relative times and the deadlines made of them. For the sources of this folder.

namespace nxWaitTime
{
/// Whole seconds, kept in 32 signed bits, and nanoseconds, both cut. A negative time has negative seconds and
/// positive nanoseconds. What has no whole number (NaN, an infinity, a number beyond 64 bits) has the
/// smallest one.
std::timespec FromSeconds(double seconds);

/// Whole seconds, kept in 32 signed bits (so that 2^32 s are none), and nanoseconds.
std::timespec FromMicroseconds(unsigned long long microseconds);

/// The wall clock, cut to the millisecond, plus the relative time. A step of the system's time changes the
/// length of the wait. Nanoseconds that sum up to exactly one second stay in place, and the system refuses
/// such a deadline.
std::timespec Deadline(std::timespec const& relative);
} // namespace nxWaitTime
