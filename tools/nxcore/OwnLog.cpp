#include "OwnLog.h"

#include "Result.h"

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"

#include <filesystem>
#include <system_error>

namespace nxTool
{
std::string OpenOwnLog(std::string const& directory)
{
    // The log would go to the current directory instead and say so on standard output, among the answer.
    std::error_code error;
    std::filesystem::create_directory(directory, error);
    if (!std::filesystem::is_directory(directory, error))
        return "-log: no directory " + directory;

    (void)nxCmdLineArgs::GetInstance().SetEnvValue(nxConfigurationKeyText::KVT_LOG_DIRECTORY, directory);
    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    if (!device.Create(nxValueWrapper<unsigned long long, -1, -2>()))
        return "-log: no file can be made in " + directory;
    nxLogManager::GetInstance().RegisterLogDevice(&device);
    return {};
}

std::string OwnWords(nxCmdLineArgs const& commandLine)
{
    std::string text;
    for (char const* const* word = commandLine.GetRawArgv() + 1; *word != nullptr; ++word)
        text.append(text.empty() ? "" : " ").append(Printable(*word));
    return text;
}
} // namespace nxTool
