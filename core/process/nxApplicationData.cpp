#include "core/process/nxApplicationData.h"

#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLogSite.h"
#include "core/platform/nxEnvironment.h"
#include "core/platform/nxInitialiseFirst.h"
#include "core/platform/nxPThread.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxStringHelper.h"
#include "core/text/nxStringParser.h"

#include <array>

struct nxApplicationData::_Members
{
    nxMutex _mutex; ///< Guards what the operations say.
    std::string _applicationName;
    std::string _applicationInstanceName;
    std::string _userName;
    std::string _location;
    std::string _daemonHostName;
    std::string _hostName;
    std::string _IPAddress;
    unsigned int _processID = 0;
    nxServerCapabilityBitMask _serverCapabilities;
    nxAPIConnectionTypeEnum _apiConnectionType;
    bool _mifidEnabled = false;
};

// Built at load, also of a program with the library inside it, and with it the members: their fork handlers must be older
// than those of the log, which asks for names while it holds locks of its own.
NX_INITIALISE_FIRST nxDateTime const nxApplicationData::_startTime = (_Get(), nxDateTime());

nxApplicationData::_Members& nxApplicationData::_Get()
{
    static _Members* const members = _Create();
    return *members;
}

nxApplicationData::_Members* nxApplicationData::_Create()
{
    auto const lock = [] { (void)_Get()._mutex.Lock(); };
    auto const unlock = [] { (void)_Get()._mutex.Unlock(); };
    auto const unlockInChild = []
    {
        _Get()._processID = 0; // the parent's
        (void)_Get()._mutex.Unlock();
    };
    (void)pthread_atfork(lock, unlock, unlockInChild);
    return new _Members;
}

nxApplicationData::nxApplicationData()
{
}

nxApplicationData::nxApplicationData(nxApplicationData const&)
{
}

nxApplicationData::~nxApplicationData()
{
}

nxApplicationData& nxApplicationData::operator=(nxApplicationData const&)
{
    return *this;
}

bool nxApplicationData::operator==(nxApplicationData const&) const
{
    return false;
}

void nxApplicationData::SetApplicationName(std::string const& applicationName)
{
    nxMutexGuard guard(_Get()._mutex);
    _Get()._applicationName = applicationName;
}

std::string nxApplicationData::GetApplicationName()
{
    nxMutexGuard guard(_Get()._mutex);
    return _Get()._applicationName;
}

void nxApplicationData::SetApplicationInstanceName(std::string const& applicationInstanceName)
{
    nxMutexGuard guard(_Get()._mutex);
    _Get()._applicationInstanceName = applicationInstanceName;
}

std::string nxApplicationData::GetApplicationInstanceName()
{
    nxMutexGuard guard(_Get()._mutex);
    return _Get()._applicationInstanceName;
}

void nxApplicationData::SetUserName(std::string const& userName)
{
    nxMutexGuard guard(_Get()._mutex);
    _Get()._userName = userName;
}

std::string nxApplicationData::GetUserNameA()
{
    nxMutexGuard guard(_Get()._mutex);
    return _Get()._userName;
}

void nxApplicationData::SetDaemonHostName(std::string const& daemonHostName)
{
    nxMutexGuard guard(_Get()._mutex);
    _Get()._daemonHostName = daemonHostName;
}

std::string const& nxApplicationData::GetDaemonHostName()
{
    nxMutexGuard guard(_Get()._mutex);
    return _Get()._daemonHostName;
}

void nxApplicationData::SetLocation(std::string const& location)
{
    _Get()._location = location;
}

std::string const& nxApplicationData::GetLocation()
{
    return _Get()._location;
}

nxDateTime nxApplicationData::GetStartTime()
{
    nxMutexGuard guard(_Get()._mutex);
    return _startTime;
}

unsigned int nxApplicationData::GetProcessID()
{
    nxMutexGuard guard(_Get()._mutex);
    if (_Get()._processID == 0)
        _Get()._processID = nxPlatform::_getpid();
    return _Get()._processID;
}

std::string nxApplicationData::GetHostName()
{
    nxMutexGuard guard(_Get()._mutex);
    if (_Get()._hostName.empty())
    {
        std::array<char, nxPlatform::maximumHostNameSize> buffer;
        (void)nxPlatform::GetHostName(buffer.data(), nxPlatform::maximumHostNameSize);
        std::string const fullName(buffer.data());
        nxStringParser parser(fullName);
        _Get()._hostName = parser.GetSubString('.');
    }
    return _Get()._hostName;
}

// The lines are logged when the mutex is free again: a device that opens its file on this thread asks for names.
std::string nxApplicationData::GetIPAddress()
{
    try
    {
        std::string failure;
        std::string address;
        {
            nxMutexGuard guard(_Get()._mutex);
            if (_Get()._IPAddress.empty())
                _Get()._IPAddress = _FindIPAddress(failure);
            address = _Get()._IPAddress;
        }
        if (!failure.empty())
            NX_LOG(NX_INF, failure);
        if (address.empty())
            NX_LOG(NX_INF, "ERROR - Failed to get IP address for host");
        return address;
    }
    catch (...)
    {
        NX_LOG(NX_INF, "ERROR - Unknown exception caught whilst tring to retrieve IP address");
        return std::string();
    }
}

std::string nxApplicationData::_FindIPAddress(std::string& failure)
{
    constexpr unsigned int size = 256;
    std::array<char, size> hostName;
    int const error = nxPlatform::GetHostName(hostName.data(), size);
    if (error != 0)
    {
        failure = "ERROR - Failed to get the hostname. Windows sockets error code: ";
        nxStringHelper::AppendAsString(failure, error);
        return std::string();
    }
    return nxPlatform::GetHostAddress(hostName.data());
}

bool nxApplicationData::GetIsSecureSSLConnection()
{
    std::string daemon = nxCmdLineArgs::GetInstance().GetEnvValue(nxConfigurationKeyText::KVT_DAEMON);
    nxStringHelper::ToLower(daemon);
    return daemon.find("ssl:") != std::string::npos;
}

void nxApplicationData::SetServerCapabilities(nxServerCapabilityBitMask const& serverCapabilities)
{
    _Get()._serverCapabilities = serverCapabilities;
}

nxServerCapabilityBitMask const& nxApplicationData::GetServerCapabilities()
{
    return _Get()._serverCapabilities;
}

void nxApplicationData::SetAPIConnectionType(nxAPIConnectionTypeEnum const& apiConnectionType)
{
    _Get()._apiConnectionType = apiConnectionType;
}

nxAPIConnectionTypeEnum const& nxApplicationData::GetAPIConnectionType()
{
    return _Get()._apiConnectionType;
}

void nxApplicationData::SetMifidEnabled(bool mifidEnabled)
{
    _Get()._mifidEnabled = mifidEnabled;
}

bool nxApplicationData::GetMifidEnabled()
{
    return _Get()._mifidEnabled;
}
