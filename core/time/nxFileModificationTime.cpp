#include "core/platform/nxFiles.h"
#include "core/text/nxFileHelper.h"
#include "core/time/nxDateTime.h"

// The file helper's one operation that speaks of time stands here, above text.

nxDateTime nxFileHelper::GetModificationTime(std::string const& path)
{
    nxPlatform::FileStatus status;
    if (!nxPlatform::_stat64i32(path.c_str(), status))
        return nxDateTime::GetNullDateTime();
    return nxDateTime(status.modificationTime);
}
