// What the gates of this project rest on: that the sanitizers of this build see what they are there for.

#include "tests/Sanitizer.h"

#include <gtest/gtest.h>

// The compilers' "undefined" leaves conversions of doubles out; they are asked for by name.
TEST(nxGates, AConversionThatDoesNotFitIsReported)
{
    if (!underAddressSanitizer)
        GTEST_SKIP() << "this build has no sanitizer for undefined behaviour";
    double volatile huge = 1e300;
    EXPECT_DEATH({ [[maybe_unused]] int volatile cut = static_cast<int>(huge); }, "outside the range");
}
