// Puts the library's promises to the proof: nxcore_faults FIGURE [full].

#include "core/process/nxApplicationData.h"
#include "tests/faults/Faults.h"

#include <cstdio>

int main(int argumentCount, char** argumentValues)
{
    (void)std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Arguments arguments(argumentValues + 1, argumentValues + argumentCount);
    if (arguments.size() >= 2 && arguments[0] == "--host")
    {
        nxApplicationData::SetApplicationName("host");
        Figure const& figure = *Figure::All().at(arguments[1]);
        return figure.host(Arguments(arguments.begin() + 2, arguments.end()));
    }
    if (arguments.empty() || Figure::All().count(arguments[0]) == 0)
    {
        for (auto const& [name, figure] : Figure::All())
        {
            std::printf("nxcore_faults %s [full]\n", name.c_str());
        }
        return 2;
    }
    isFull = arguments.size() > 1 && arguments[1] == "full";
    return Figure::All().at(arguments[0])->show() ? 0 : 1;
}
