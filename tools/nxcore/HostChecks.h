#pragma once

#include <string>

/// @file
/// What a host must give to a program of the platform, as far as one can try it.

namespace nxTool
{
enum class Soundness
{
    Good,
    Notice, ///< works, but somebody should know
    Wrong
};

struct Finding
{
    Soundness soundness = Soundness::Good;
    std::string text;
};

/// Whether a program with this environment can write its log: makes a file in the directory and removes it.
Finding CheckLogDirectory();

/// How many descriptors this process may have, and has.
Finding CheckDescriptors();

/// Whether a mutex in shared memory survives the death of the process that holds it, and named objects can be made.
Finding CheckSharedMemory();
} // namespace nxTool
