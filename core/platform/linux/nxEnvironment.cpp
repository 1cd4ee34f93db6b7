#include "core/platform/nxEnvironment.h"

#include "core/platform/nxClock.h"
#include "core/platform/nxEnvironmentLock.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <netdb.h>
#include <unistd.h>
#include <vector>

namespace nxPlatform
{

namespace
{

bool ChangeEnvironment(char const* name, char const* value)
{
    EnvironmentLock lock;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): that is what the lock is for.
    return (*value == '\0' ? ::unsetenv(name) : ::setenv(name, value, 1)) == 0;
}

} // namespace

unsigned int GetEnvironmentVariableA(char const* name, char* buffer, unsigned int size)
{
    EnvironmentLock lock;
    char const* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): that is what the lock is for.
    if (value == nullptr)
        return 0;
    std::size_t const length = std::strlen(value);
    if (length >= size)
        return static_cast<unsigned int>(length + 1);
    std::memcpy(buffer, value, length + 1);
    return static_cast<unsigned int>(length);
}

bool SetEnvironmentVariableA(char const* name, char const* value)
{
    if (!ChangeEnvironment(name, value))
        return false;
    if (std::strcmp(name, "TZ") == 0)
        ReloadTimeZone();
    return true;
}

unsigned int _getpid()
{
    return static_cast<unsigned int>(::getpid());
}

int GetHostName(char* buffer, unsigned int size)
{
    *buffer = '\0';
    if (::gethostname(buffer, size) == 0)
    {
        buffer[size - 1] = '\0'; // a name that just fits comes without its NUL
        return 0;
    }
    int const error = errno;
    *buffer = '\0';
    return error;
}

std::string GetHostAddress(char const* hostName)
{
    // getaddrinfo() would sort the addresses by its own rules; here the resolver's order counts.
    std::vector<char> storage(1024);
    hostent entry = {};
    hostent* found = nullptr;
    int resolverError = 0;
    int result = 0;
    while ((result = ::gethostbyname_r(hostName, &entry, storage.data(), storage.size(), &found,
                                       &resolverError)) == ERANGE)
        storage.resize(storage.size() * 2);
    if (result != 0 || found == nullptr || found->h_addrtype != AF_INET || found->h_addr_list[0] == nullptr)
        return std::string();
    char text[INET_ADDRSTRLEN] = "";
    return ::inet_ntop(AF_INET, found->h_addr_list[0], text, sizeof(text)) == nullptr ? std::string() : text;
}

} // namespace nxPlatform
