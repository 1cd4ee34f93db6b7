// Puts the library's promises to the proof: nxcore_faults FIGURE [full]. A program of one figure needs no name.

#include "tests/faults/Faults.h"

#include <cstdio>
#include <string_view>

// Most hosts end in the middle of something, and threads of a forked child are meant.
extern "C" char const* __asan_default_options();
extern "C" char const* __tsan_default_options();

extern "C" char const* __asan_default_options()
{
    return "detect_leaks=0";
}

extern "C" char const* __tsan_default_options()
{
    return "report_thread_leaks=0:die_after_fork=0";
}

int main(int argumentCount, char** arguments)
{
    (void)std::setvbuf(stdout, nullptr, _IOLBF, 0);
    auto const& figures = Figure::All();
    auto const figure =
        figures.size() == 1 ? figures.begin() : figures.find(argumentCount > 1 ? arguments[1] : "");
    if (figure == figures.end())
        return 2;
    isFull = arguments[argumentCount - 1] == std::string_view("full");
    return figure->second() ? 0 : 1;
}
