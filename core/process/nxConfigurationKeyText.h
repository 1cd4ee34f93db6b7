#pragma once

/// @file
/// The names of all configuration keys as character constants.
///
/// They need no initialisation, so they serve code that may run before the initialisers of another source file, or
/// after the program's statics are gone, as the log does. Hosts include `nxConfigurationKeys.h`.

/// Keys, value words and defaults under the names that `nxConfigurationKeys.h` gives them.
namespace nxConfigurationKeyText
{

#define NX_KEY_GROUP(title)
#define NX_KEY(key) inline constexpr char key[] = #key;
#define NX_KEY_WORD(scope, word) inline constexpr char scope##_##word[] = #word;
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value) inline constexpr char key##_DEFAULT[] = value;
#include "core/process/tables/keys.def"

} // namespace nxConfigurationKeyText
