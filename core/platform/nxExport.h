#pragma once

/// @file
/// The one place that says which symbols leave the library.

/// Marks a class, function or variable as part of the library's interface; all other symbols stay hidden.
#define NX_CORE_API [[gnu::visibility("default")]]

/// Marks a member of an exported class that only the library itself uses.
#define NX_CORE_LOCAL [[gnu::visibility("hidden")]]
