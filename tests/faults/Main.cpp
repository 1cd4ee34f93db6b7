// Puts the library's promises to the proof: nxcore_faults FIGURE [full].

#include "core/process/nxApplicationData.h"
#include "tests/faults/Figures.h"

#include <cstdio>
#include <functional>
#include <map>

namespace
{

std::map<std::string, bool (*)(Extent)> const figures = {
    {"disk-full", DiskFullFigure}, {"signals", SignalFigure}, {"soak", SoakFigure},
    {"nemesis", NemesisFigure},    {"exit", ExitFigure},      {"fork", ForkFigure},
    {"mutex", MutexFigure},        {"pool", PoolFigure},      {"clock", ClockFigure},
    {"sockets", SocketFigure},
};

std::map<std::string, int (*)(Arguments const&)> const hosts = {
    {"disk-full", DiskFullHost}, {"signals", SignalHost},
    {"soak", SoakHost},          {"nemesis", NemesisHost},
    {"exit", ExitHost},          {"fork", ForkHost},
    {"clock", ClockHost},        {"descriptors", DescriptorHost},
};

} // namespace

int main(int argumentCount, char** argumentValues)
{
    (void)std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Arguments arguments(argumentValues + 1, argumentValues + argumentCount);
    if (arguments.size() >= 2 && arguments[0] == "--host")
    {
        auto const host = hosts.at(arguments[1]);
        arguments.erase(arguments.begin(), arguments.begin() + 2);
        nxApplicationData::SetApplicationName("host");
        return host(arguments);
    }
    if (arguments.empty() || figures.count(arguments[0]) == 0)
    {
        for (auto const& [name, figure] : figures)
        {
            std::printf("nxcore_faults %s [full]\n", name.c_str());
        }
        return 2;
    }
    bool const isFull = arguments.size() > 1 && arguments[1] == "full";
    return figures.at(arguments[0])(isFull ? Extent::full : Extent::fast) ? 0 : 1;
}
