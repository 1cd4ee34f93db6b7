#pragma once

#include "core/platform/nxExport.h"
#include "core/process/nxConfigurationKeyText.h"

#include <string>

/// @file
/// The names of all configuration keys of the platform, so that every program means the same variable by them.
///
/// A key is a name and nothing else: the constant `KVT_LOG_LEVEL` holds the text of that name. What its value means,
/// and what holds when it is missing, is the business of the program that reads it. Behind some keys stand the words
/// that their value is compared with, named key, underscore, word; the two keys of the Cassandra store's consistency
/// share theirs under `KVT_CASS_CONSISTENCY_`. Keys are compared by text.
///
/// There is one object for each name in the whole program. Each is ready for every later static of a source file
/// that includes this header, and for all code that runs after load. The rows stand in `tables/keys.def`.
///
/// @code
/// std::string const role = nxCmdLineArgs::GetInstance().GetEnvValue(KVT_EXCHANGE_ROLE);
/// bool const pricesOnly = role == KVT_EXCHANGE_ROLE_PRICE_ONLY;
/// @endcode

#define NX_KEY_GROUP(title)
#define NX_KEY(key) NX_CORE_API inline const std::string key(nxConfigurationKeyText::key);
#define NX_KEY_WORD(scope, word)                                                                             \
    NX_CORE_API inline const std::string scope##_##word(nxConfigurationKeyText::scope##_##word);
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value)                                                                           \
    NX_CORE_API inline const std::string key##_DEFAULT(nxConfigurationKeyText::key##_DEFAULT);
#include "core/process/tables/keys.def"
