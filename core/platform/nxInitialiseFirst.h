#pragma once

/// @file
/// The order of static initialisation across source files.

/// Before the definition of an object of a class type: the object is initialised before all others of the program
/// that don't say so, in whichever file or static library they stand.
#define NX_INITIALISE_FIRST [[gnu::init_priority(101)]]
