// What a process knows about itself: set by the host, or found out and kept; its version; and the keys of its
// configuration.
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeys.h"
#include "core/process/nxVersionNumber.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <set>
#include <utility>

#include <arpa/inet.h>

namespace
{

// Before main, as the log may ask.
std::string const nameBeforeMain = nxApplicationData::GetApplicationName();
nxDateTime const startBeforeMain = nxApplicationData::GetStartTime();
std::string const builtFromKeys = KVT_LOG_LEVEL + "," + KVT_EXCHANGE_ROLE_PRICE + "," + KVT_NETWORK_DEFAULT;

} // namespace

TEST(nxApplicationData, HoldsWhatTheHostSets)
{
    EXPECT_EQ(nameBeforeMain, "");
    EXPECT_EQ(nxApplicationData::GetAPIConnectionType(), 0u);
    EXPECT_EQ(nxApplicationData::GetServerCapabilities().GetValue(), 0u);
    EXPECT_FALSE(nxApplicationData::GetMifidEnabled());
    nxApplicationData::SetApplicationName("application");
    nxApplicationData::SetApplicationInstanceName("instance");
    nxApplicationData::SetUserName("user");
    nxApplicationData::SetDaemonHostName("daemon");
    nxApplicationData::SetLocation("location");
    nxApplicationData::SetServerCapabilities(nxServerCapabilityBitMask(5));
    nxApplicationData::SetAPIConnectionType(nxAPIConnectionTypeEnum(NX_API_CONNECTION_TYPE_MULTICAST));
    nxApplicationData::SetMifidEnabled(true);
    EXPECT_EQ(nxApplicationData::GetApplicationName() + "," +
                  nxApplicationData::GetApplicationInstanceName() + "," + nxApplicationData::GetUserNameA() +
                  "," + nxApplicationData::GetDaemonHostName() + "," + nxApplicationData::GetLocation(),
              "application,instance,user,daemon,location");
    EXPECT_EQ(nxApplicationData::GetServerCapabilities().GetValue(), 5u);
    EXPECT_EQ(nxApplicationData::GetAPIConnectionType(), NX_API_CONNECTION_TYPE_MULTICAST);
    EXPECT_TRUE(nxApplicationData::GetMifidEnabled());
}

TEST(nxApplicationData, FindsTheHostAndWhenItStarted)
{
    EXPECT_TRUE(startBeforeMain.IsValid());
    EXPECT_LE(startBeforeMain, nxDateTime());
    EXPECT_EQ(nxApplicationData::GetStartTime(), startBeforeMain);
    char name[256] = "";
    ASSERT_EQ(::gethostname(name, sizeof(name)), 0);
    EXPECT_EQ(nxApplicationData::GetHostName(), std::string(name).substr(0, std::string(name).find('.')));
    std::string const address = nxApplicationData::GetIPAddress();
    in_addr parsed = {};
    EXPECT_TRUE(address.empty() || ::inet_pton(AF_INET, address.c_str(), &parsed) == 1) << address;
    EXPECT_EQ(nxApplicationData::GetIPAddress(), address);
}

TEST(nxApplicationData, AForkedChildHasItsOwnNumber)
{
    auto const isOwn = [] { return std::cmp_equal(nxApplicationData::GetProcessID(), ::getpid()); };
    EXPECT_TRUE(isOwn());
    EXPECT_EQ(RunInChild(isOwn), 1);
    EXPECT_TRUE(isOwn());
}

TEST(nxApplicationData, AsksForSecurityEachTime)
{
    for (auto const& [daemon, isSecure] :
         {std::pair("", false), {"SSL:host:1234", true}, {"xssl:y", true}, {"ssl", false}})
    {
        ASSERT_TRUE(nxCmdLineArgs::GetInstance().SetEnvValue("KVT_DAEMON", daemon));
        EXPECT_EQ(nxApplicationData::GetIsSecureSSLConnection(), isSecure) << daemon;
    }
}

TEST(nxVersionNumber, TakesVersionsApartAndComparesMajorAndMinor)
{
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    EXPECT_EQ(version.GetVersionNumber(), "1.37.2032");
    struct
    {
        char const* text;
        unsigned int parts[3];
        bool isCompatible;
    } const rows[] = {
        {"1.37.2032", {1, 37, 2032}, true},
        {"1.37", {1, 37, 0}, true},
        {"1.37abc.5", {1, 37, 5}, true},
        {"01.037.99999", {1, 37, 99999}, true},
        {"", {0, 0, 0}, false},
        {"1.38.2032", {1, 38, 2032}, false},
        {"2.37.2032", {2, 37, 2032}, false},
        {"1.2.3.4", {1, 2, 3}, false},
        {"..7", {0, 0, 7}, false},
        {"a1. 2.+3", {0, 2, 3}, false},
        {"-1.- 1.--1", {UINT_MAX, 0, 0}, false},
        {"2147483647.2147483648.-2147483649", {INT_MAX, INT_MAX, 1u << 31}, false},
        {"99999999999999999999999.0000000000000000000000012.-", {INT_MAX, 12, 0}, false},
    };
    for (auto const& row : rows)
    {
        unsigned int parts[3] = {9, 9, 9};
        version.GetMajorMinorSubVersionParts(row.text, parts[0], parts[1], parts[2]);
        EXPECT_TRUE(std::equal(parts, parts + 3, row.parts)) << row.text;
        EXPECT_EQ(version.IsCompatibleVersionNumber(row.text), row.isCompatible) << row.text;
    }
}

TEST(nxConfigurationKeys, AreCompleteAndUniqueAndHaveWordsAndDefaults)
{
    std::set<std::string> names;
    unsigned int checksum = 2166136261u; // FNV-1a of all names in order, a line feed behind each
    int words = 0;
    auto const check = [&](std::string const& constant, std::string const& name)
    {
        EXPECT_EQ(constant, name);
        EXPECT_TRUE(names.insert(constant).second) << name;
        for (char const character : name + "\n")
            checksum = (checksum ^ static_cast<unsigned char>(character)) * 16777619u;
    };
#define NX_KEY_GROUP(title)
#define NX_KEY(key) check(::key, nxConfigurationKeyText::key);
#define NX_KEY_WORD(scope, word) words += !::scope##_##word.empty();
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value)
#include "core/process/tables/keys.def"
    EXPECT_EQ(names.size(), 352u);
    EXPECT_EQ(checksum, 2915926549u);
    EXPECT_EQ(words, 46);
    EXPECT_EQ(KVT_CASS_CONSISTENCY_LOCAL_QUORUM, "LOCAL_QUORUM");
    EXPECT_EQ(KVT_FIX_VDGW_MODE_DROP_COPY, KVT_FIX_EXCHANGE_MODE_DROP_COPY);
    EXPECT_EQ(KVT_SERVICE_DEFAULT, "7600");
    EXPECT_EQ(builtFromKeys, "KVT_LOG_LEVEL,PRICE,;239.192.0.0"); // while statics were built
}
