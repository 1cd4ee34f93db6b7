// `nxcore identity`: what the library knows about this process and its host.

#include "Arguments.h"
#include "Commands.h"
#include "Result.h"

#include "core/process/nxApplicationData.h"

namespace nxTool
{
namespace
{
Status Run(Arguments const&, Result& result)
{
    nxDateTime const start = nxApplicationData::GetStartTime();
    std::string const address = nxApplicationData::GetIPAddress();
    result.AddField("application", "application", nxApplicationData::GetApplicationName());
    result.AddField("host", "host", nxApplicationData::GetHostName());
    result.AddField("address", "address", address.empty() ? Cell("not known", nullptr) : Cell(address));
    result.AddField("process", "process", nxApplicationData::GetProcessID());
    result.AddField("started", "started", Cell(start.GetAsString(), start.GetAsTimeValue()));
    result.AddField("secureDaemon", "secure daemon", nxApplicationData::GetIsSecureSSLConnection());
    return Status::Good;
}
} // namespace

Command const identityCommand = {
    .name = "identity",
    .summary = "show host, address, process and start time",
    .details =
        "Shows what the library knows about this process and its host. The address is the first one of\n"
        "the host's name; the start is in local time, as JSON in seconds since the epoch. The daemon is\n"
        "secure when KVT_DAEMON names one with \"ssl:\".",
    .example = "nxcore identity",
    .run = Run,
};
} // namespace nxTool
