#include "core/logging/nxConsoleLogDevice.h"

#include "core/logging/nxLog.h"
#include "core/logging/nxLogLine.h"

#include <cstdio>
#include <new>
#include <string>

namespace
{

std::string GetVerboseText(nxLog const& log)
{
    std::string const stamp = log.GetTimeStamp().GetAsString();
    nxLogLine line = nxLogLine::Of(log, stamp);
    line.end = "\n";
    return line.GetText();
}

std::string GetTerseText(nxLog const& log)
{
    return "[" + log.GetLogLevel().GetShortDescription() + "] " + nxLogLine::GetMessage(log) + "\n";
}

} // namespace

nxConsoleLogDevice& nxConsoleLogDevice::GetInstance()
{
    static nxConsoleLogDevice* const instance = new nxConsoleLogDevice;
    return *instance;
}

// Built at load: a child of fork() could not wait for another thread to finish it.
[[maybe_unused]] static nxConsoleLogDevice const& builtAtLoad = nxConsoleLogDevice::GetInstance();

nxErrorEnum nxConsoleLogDevice::Destroy()
{
    return nxErrorEnum();
}

void nxConsoleLogDevice::Write(nxLog const& log)
{
    try
    {
        std::string const text = GetVerboseOutput() ? GetVerboseText(log) : GetTerseText(log);
        (void)std::fwrite(text.data(), 1, text.size(), stdout);
    }
    catch (std::bad_alloc const&)
    {
        (void)std::fprintf(stdout, "[%s] %s\n", log.GetLogLevel().GetShortDescription().c_str(),
                           nxLogLine::GetMessage(log));
    }
}

void nxConsoleLogDevice::Flush()
{
    (void)std::fflush(stdout);
}
