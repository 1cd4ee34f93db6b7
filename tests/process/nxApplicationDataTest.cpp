// What a process knows about itself: set by the host, or found out and kept.
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// Before main, as the log may ask.
std::string const nameBeforeMain = nxApplicationData::GetApplicationName();
nxDateTime const startBeforeMain = nxApplicationData::GetStartTime();

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

TEST(nxApplicationData, StartedAtLoad)
{
    EXPECT_TRUE(startBeforeMain.IsValid());
    EXPECT_LE(startBeforeMain, nxDateTime());
    EXPECT_EQ(nxApplicationData::GetStartTime(), startBeforeMain);
}

TEST(nxApplicationData, FindsTheHost)
{
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
    EXPECT_EQ(nxApplicationData::GetProcessID(), static_cast<unsigned int>(::getpid()));
    pid_t const child = ::fork();
    if (child == 0)
        ::_exit(nxApplicationData::GetProcessID() == static_cast<unsigned int>(::getpid()) ? 0 : 1);
    int status = 1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(nxApplicationData::GetProcessID(), static_cast<unsigned int>(::getpid()));
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
