#pragma once

// System calls that fail when they are told to. Stands before the C library for the whole program.

/// From now on the calls of that name are counted, and fail with the error.
/// @param granted    how many succeed before.
/// @param isLasting  whether all fail that come after, or the next one alone.
void RefuseCalls(char const* name, int error, int granted, bool isLasting);

/// All calls succeed again. @return how many were refused.
int GrantCalls();
