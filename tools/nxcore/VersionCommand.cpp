// `nxcore version`: the library's version, and whether another fits it.

#include "Arguments.h"
#include "Commands.h"
#include "Result.h"

#include "core/process/nxVersionNumber.h"

namespace nxTool
{
namespace
{
Status Run(Arguments const& arguments, Result& result)
{
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    result.AddField("version", "version", version.GetVersionNumber());
    if (arguments.GetAll().empty())
        return Status::Good;

    std::string const other = arguments.Get(0);
    bool const isCompatible = version.IsCompatibleVersionNumber(other);
    result.AddField("other", "other", other);
    result.AddField("compatible", "compatible", isCompatible);
    return isCompatible ? Status::Good : Status::Faulty;
}
} // namespace

Command const versionCommand = {
    .name = "version",
    .arguments = "[OTHER]",
    .summary = "show the library's version, or whether another fits it",
    .details = "Versions fit when major and minor are the same; the sub part may differ.\n"
               "The exit status is 1 when OTHER does not fit.",
    .example = "nxcore version 1.37.9",
    .mostArguments = 1,
    .run = Run,
};
} // namespace nxTool
