// A part of a host that is loaded and unloaded while the library's threads go on. Statics that the whole process shares,
// such as those of templates, would keep it loaded.

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"

extern "C" void LogFromPlugin();

extern "C" [[gnu::visibility("default")]] void LogFromPlugin()
{
    nxApplicationData::SetApplicationName("host");
    nxLogManager& manager = nxLogManager::GetInstance();
    (void)nxFileLogDevice::GetInstance().Create(nxValueWrapper<unsigned long long, -1, -2>());
    manager.RegisterLogDevice(&nxFileLogDevice::GetInstance());
    for (int line = 0; line < 100; ++line)
        NX_LOG(NX_INF, "line " << line);
    for (int cycle = 0; cycle < 2; ++cycle) // lines refer to names of source files, which go with the plugin
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
}
