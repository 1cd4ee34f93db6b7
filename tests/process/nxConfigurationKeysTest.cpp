// The catalogue of configuration keys: all there, each once, and usable from the first static on.
#include "core/process/nxConfigurationKeys.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace
{

std::string const builtFromKeys = KVT_LOG_LEVEL + "," + KVT_EXCHANGE_ROLE_PRICE + "," + KVT_NETWORK_DEFAULT;

struct Key
{
    std::string const& constant;
    std::string_view name;
};

Key const keys[] = {
#define NX_KEY_GROUP(title)
#define NX_KEY(key) {::key, nxConfigurationKeyText::key},
#define NX_KEY_WORD(scope, word)
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value)
#include "core/process/tables/keys.def"
};

std::string const* const words[] = {
#define NX_KEY_GROUP(title)
#define NX_KEY(key)
#define NX_KEY_WORD(scope, word) &::scope##_##word,
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value)
#include "core/process/tables/keys.def"
};

} // namespace

TEST(nxConfigurationKeys, AreCompleteAndUnique)
{
    std::set<std::string> names;
    unsigned int checksum = 2166136261u; // FNV-1a of all names in order, a line feed behind each
    for (Key const& key : keys)
    {
        EXPECT_EQ(key.constant, key.name);
        EXPECT_TRUE(names.insert(key.constant).second) << key.name;
        for (char const character : std::string(key.name) + "\n")
        {
            checksum = (checksum ^ static_cast<unsigned char>(character)) * 16777619u;
        }
    }
    EXPECT_EQ(names.size(), 352u);
    EXPECT_EQ(checksum, 2915926549u);
}

TEST(nxConfigurationKeys, HaveWordsAndDefaults)
{
    EXPECT_EQ(std::size(words), 46u);
    EXPECT_EQ(KVT_CASS_CONSISTENCY_LOCAL_QUORUM, "LOCAL_QUORUM");
    EXPECT_EQ(KVT_FIX_VDGW_MODE_DROP_COPY, KVT_FIX_EXCHANGE_MODE_DROP_COPY);
    EXPECT_EQ(KVT_SERVICE_DEFAULT, "7600");
    EXPECT_EQ(builtFromKeys, "KVT_LOG_LEVEL,PRICE,;239.192.0.0"); // while statics were built
}
