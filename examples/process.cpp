// What a program knows about itself: its switches, its environment, its name and its version.
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeys.h"
#include "core/process/nxVersionNumber.h"

#include <cstdio>

int main(int, char** argv, char** envp)
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    arguments.Initialise(argv, envp);
    nxApplicationData::SetApplicationName("priceserver");
    nxApplicationData::SetApplicationInstanceName("lon1");

    std::printf("-verbose: %s\n", arguments.IsArgDefined("verbose") ? "given" : "not given");
    std::printf("-offset: %s\n", arguments.GetArgValueAsDecimal("offset").GetAsLogString().c_str());
    std::printf("-limit: %s\n", arguments.GetArgValueAsVolume("limit").IsNull() ? "none" : "a number");
    std::printf("%s: %s\n", KVT_USERNAME.c_str(), arguments.GetEnvValue(KVT_USERNAME).c_str());
    std::printf("%s %s\n", nxApplicationData::GetApplicationName().c_str(),
                nxApplicationData::GetApplicationInstanceName().c_str());

    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    std::printf("1.37.9 fits: %s, 1.38.0 fits: %s\n",
                version.IsCompatibleVersionNumber("1.37.9") ? "yes" : "no",
                version.IsCompatibleVersionNumber("1.38.0") ? "yes" : "no");
}
