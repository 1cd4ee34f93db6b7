#include "core/logging/nxLogManager.h"

#include "core/logging/nxLog.h"

#include <cstdio>

constinit std::atomic<unsigned int> nxLogManager::_minimumLogLevel = static_cast<unsigned int>(NX_INF);

nxLogManager& nxLogManager::GetInstance()
{
    static nxLogManager* const instance = new nxLogManager;
    return *instance;
}

void nxLogManager::Write(nxLog& log)
{
    if (!ShouldLog(log.GetLogLevel()))
    {
        return;
    }
    std::printf("[%s] %s [%s:%d]\n", log.GetLogLevel().GetShortDescription().c_str(),
                log.GetLogEntry()->c_str(), log.GetSourceFile(), static_cast<int>(log.GetLineNumber()));
    std::fflush(stdout);
}
