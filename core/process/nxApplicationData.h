#pragma once

#include "core/platform/nxExport.h"
#include "core/time/nxDateTime.h"
#include "core/vocabulary/nxAPIConnectionTypeEnum.h"
#include "core/vocabulary/nxServerCapabilityBitMask.h"

#include <string>

/// @file
/// The identity of the process.

/// Who the program is, where it runs and since when. The host fills in at start-up what it knows; the rest is found out
/// on first demand and then kept. The names of log files are made from it.
///
/// Static members only. Where an operation says nothing else, any thread may call it at any time; what it returns by
/// reference is to be set during start-up, before other threads read it. GetHostName() and GetIPAddress() keep other
/// threads from all that is guarded, the names of log files too, for as long as the system's answer takes.
///
/// @code
/// nxApplicationData::SetApplicationName("priceserver");
/// nxApplicationData::SetApplicationInstanceName("lon1");
/// @endcode
class NX_CORE_API nxApplicationData
{
public:
    static void SetApplicationName(std::string const& applicationName);
    static std::string GetApplicationName();

    static void SetApplicationInstanceName(std::string const& applicationInstanceName);
    static std::string GetApplicationInstanceName();

    static void SetUserName(std::string const& userName);
    static std::string GetUserNameA();

    /// The getter's reference is not guarded.
    static void SetDaemonHostName(std::string const& daemonHostName);
    static std::string const& GetDaemonHostName();

    /// Not guarded.
    static void SetLocation(std::string const& location);
    static std::string const& GetLocation();

    /// @return the local time at which the library was loaded, for a program that is linked with it its start.
    static nxDateTime GetStartTime();

    /// Asked for once and kept; a forked child asks anew.
    static unsigned int GetProcessID();

    /// @return the host's name up to its first dot, asked for once and kept; empty if the system has none.
    static std::string GetHostName();

    /// @return the first address of the host's name as dotted text, kept once it was found. Empty when there is none;
    ///         the next call tries again. Logs each failure, at Info.
    static std::string GetIPAddress();

    /// @return whether the value of KVT_DAEMON has "ssl:" anywhere, in any case. Reads it at every call.
    static bool GetIsSecureSSLConnection();

    /// Not guarded.
    static void SetServerCapabilities(nxServerCapabilityBitMask const& serverCapabilities);
    static nxServerCapabilityBitMask const& GetServerCapabilities();

    /// Not guarded.
    static void SetAPIConnectionType(nxAPIConnectionTypeEnum const& apiConnectionType);
    static nxAPIConnectionTypeEnum const& GetAPIConnectionType();

    /// Not guarded; false unless set.
    static void SetMifidEnabled(bool mifidEnabled);
    static bool GetMifidEnabled();

private:
    struct _Members;

    nxApplicationData();
    nxApplicationData(nxApplicationData const& other);
    ~nxApplicationData();
    nxApplicationData& operator=(nxApplicationData const& other);
    bool operator==(nxApplicationData const& other) const;

    /// Never destroyed, since threads may still write the log while the process ends.
    static _Members& _Get();
    static _Members* _Create();
    static std::string _FindIPAddress(std::string& failure);

    static nxDateTime const _startTime;
};
