// Where a fuzzer, or the replay of a corpus, enters a target.

#include "fuzz/FuzzInput.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1); // or the log's lines cover the fuzzer's
    (void)setenv("KVT_LOG_FORCE_FLUSH", "YES", 1);
    (void)setenv("TZ", "UTC0", 1);
    if (FuzzStart != nullptr)
        FuzzStart();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    FuzzOne(input);
    return 0;
}
