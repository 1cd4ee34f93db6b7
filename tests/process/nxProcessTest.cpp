// What a process knows about itself: set by the host, or found out and kept; its version; and the keys of its
// configuration.
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeys.h"
#include "core/process/nxVersionNumber.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
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
    auto const getAll = []
    {
        return nxApplicationData::GetApplicationName() + ',' +
               nxApplicationData::GetApplicationInstanceName() + ',' + nxApplicationData::GetUserNameA() +
               ',' + nxApplicationData::GetDaemonHostName() + ',' + nxApplicationData::GetLocation() + ',' +
               std::to_string(nxApplicationData::GetServerCapabilities().GetValue()) + ',' +
               std::to_string(nxApplicationData::GetAPIConnectionType().GetValue()) + ',' +
               std::to_string(nxApplicationData::GetMifidEnabled());
    };
    EXPECT_EQ(nameBeforeMain + getAll(), ",,,,,0,0,0");
    nxApplicationData::SetApplicationName("application");
    nxApplicationData::SetApplicationInstanceName("instance");
    nxApplicationData::SetUserName("user");
    nxApplicationData::SetDaemonHostName("daemon");
    nxApplicationData::SetLocation("location");
    nxApplicationData::SetServerCapabilities(nxServerCapabilityBitMask(5));
    nxApplicationData::SetAPIConnectionType(nxAPIConnectionTypeEnum(NX_API_CONNECTION_TYPE_MULTICAST));
    nxApplicationData::SetMifidEnabled(true);
    std::string const type = std::to_string(NX_API_CONNECTION_TYPE_MULTICAST);
    EXPECT_EQ(getAll(), "application,instance,user,daemon,location,5," + type + ",1");
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
    using Parts = std::array<unsigned int, 3>;
    std::pair<char const*, Parts> const rows[] = {
        {"1.37.2032", {1, 37, 2032}},
        {"01.037abc", {1, 37, 0}},
        {"", {0, 0, 0}},
        {"1.38.2032", {1, 38, 2032}},
        {"2.37.2032", {2, 37, 2032}},
        {"1.2.3.4", {1, 2, 3}},
        {"a1. 2.+3", {0, 2, 3}},
        {"-1.- 1.--1", {UINT_MAX, 0, 0}},
        {"2147483647.2147483648.-2147483649", {INT_MAX, INT_MAX, 1u << 31}},
        {"99999999999999999999999.0000000000000000000000012.-", {INT_MAX, 12, 0}},
    };
    for (auto const& [text, expected] : rows)
    {
        Parts parts = {9, 9, 9};
        version.GetMajorMinorSubVersionParts(text, parts[0], parts[1], parts[2]);
        EXPECT_EQ(parts, expected) << text;
        EXPECT_EQ(version.IsCompatibleVersionNumber(text), parts[0] == 1 && parts[1] == 37) << text;
    }
}

TEST(nxConfigurationKeys, AreCompleteAndHaveWordsAndDefaults)
{
    std::string keys; // in order, a line feed behind each
    int words = 0;
#define NX_KEY_GROUP(title)
#define NX_KEY(key) keys += ::key == nxConfigurationKeyText::key ? ::key + "\n" : "";
#define NX_KEY_WORD(scope, word) words += !::scope##_##word.empty();
#define NX_KEY_WORDS_OF(key, scope)
#define NX_KEY_DEFAULT(key, value)
#include "core/process/tables/keys.def"
    unsigned int checksum = 2166136261u; // FNV-1a
    for (char const character : keys)
        checksum = (checksum ^ static_cast<unsigned char>(character)) * 16777619u;
    EXPECT_EQ(std::ranges::count(keys, '\n'), 352);
    EXPECT_EQ(checksum, 2915926549u);
    EXPECT_EQ(words, 46);
    EXPECT_EQ(KVT_CASS_CONSISTENCY_LOCAL_QUORUM, "LOCAL_QUORUM");
    EXPECT_EQ(KVT_FIX_VDGW_MODE_DROP_COPY, KVT_FIX_EXCHANGE_MODE_DROP_COPY);
    EXPECT_EQ(KVT_SERVICE_DEFAULT, "7600");
    EXPECT_EQ(builtFromKeys, "KVT_LOG_LEVEL,PRICE,;239.192.0.0"); // while statics were built
}
