#pragma once

/// @file
/// Tags that select the "no change" and "null" constructors of the value classes; write `nxNullInitalizer{}`. Their
/// value is never looked at.

/// Selects the constructor of a value that stands for "no change".
enum nxNoChangeInitalizer
{
};

/// Selects the constructor of a value that is null.
enum nxNullInitalizer
{
};
