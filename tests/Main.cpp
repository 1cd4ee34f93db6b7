// The main of the programs of tests: as a host that has set the locale of the environment before all else, if there is
// one to try.

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments)
{
    char const* const locale = std::getenv("NX_TEST_LOCALE");
    if (locale != nullptr && std::setlocale(LC_ALL, locale) == nullptr)
    {
        std::fprintf(stderr, "There is no locale %s below LOCPATH\n", locale);
        return 1;
    }
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
