// When a sleep that another thread can end is over; and how a file that is written without a buffer is overwritten and
// cut off. The log's tests hold files that refuse.

#include "core/platform/nxInterruptibleSleep.h"
#include "core/platform/nxOutputFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <unistd.h>

namespace
{
double SecondsOf(nxPlatform::InterruptibleSleep& sleep, double seconds)
{
    auto const start = std::chrono::steady_clock::now();
    sleep.Sleep(seconds);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}
} // namespace

TEST(InterruptibleSleep, LastsItsTimeOrUntilItIsWoken)
{
    nxPlatform::InterruptibleSleep sleep;
    EXPECT_EQ(sleep.GetError(), 0);
    sleep.Wake(); // two before the sleep end one
    sleep.Wake();
    EXPECT_LT(SecondsOf(sleep, 60), 30);
    EXPECT_GE(SecondsOf(sleep, 1.01), 1.01);
    EXPECT_LT(SecondsOf(sleep, -5.0), 5.0);
    EXPECT_LT(SecondsOf(sleep, std::nan("")), 5.0);
    std::thread waker([&sleep] { sleep.Wake(); });
    EXPECT_LT(SecondsOf(sleep, 1e300), 30);
    waker.join();
}

TEST(OutputFile, OverwritesAndCutsOff)
{
    std::string const name = testing::TempDir() + "nxfile" + std::to_string(getpid());
    (void)(std::ofstream(name) << "much longer than what follows");
    nxPlatform::OutputFile file;
    EXPECT_FALSE(file.IsOpen());
    ASSERT_TRUE(file.Open(name.c_str()));
    EXPECT_EQ(file.Write("line\ntorn", 9), 9u);
    EXPECT_TRUE(file.CutOff(4));
    EXPECT_FALSE(file.CutOff(100)); // more than there is
    EXPECT_EQ(file.Write("next\n", 5), 5u);
    file.Close();
    std::ifstream stream(name);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "line\nnext\n");
    unlink(name.c_str());
}
