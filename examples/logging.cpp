// A host's log: a file device in a directory of its own, lines of several levels, and the end.

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/numbers/nxDecimal.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/vocabulary/nxBuySellEnum.h"

#include <filesystem>

int main(int, char** argv, char** envp)
{
    // The log reads its keys when it is first used, so they are settled before.
    std::filesystem::path const directory = std::filesystem::temp_directory_path() / "nxcore-example-log";
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    (void)arguments.SetEnvValue("KVT_LOG_DIRECTORY", directory.string());
    arguments.Initialise(argv, envp);
    nxApplicationData::SetApplicationName("example");
    nxApplicationData::SetApplicationInstanceName("1");

    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    if (!device.Create(nxValueWrapper<unsigned long long, -1, -2>(100000000))) // a new file every 100 MB
        return 1;
    nxLogManager& log = nxLogManager::GetInstance();
    log.RegisterLogDevice(&device);

    nxBuySellEnum const side(NX_BUY);
    nxDecimal const price("101.25", '.');
    NX_LOG(NX_INF, "Order sent, side: " << side << ", price: " << price << ", quantity: " << 25);
    NX_LOG(NX_WRN, "Nobody has answered for " << 1.5 << " seconds");

    char const message[] = "8=FIX.4.2\x01"
                           "35=D";
    (void)nxLog::LogBufferAsHex(message, sizeof message - 1, 8, 100, '.', true);

    // The end of the process would do the same.
    (void)log.Destroy();
    std::filesystem::remove_all(directory);
    return 0;
}
