// F24: what large input may cost.

#include "core/core.h"
#include "tests/faults/Faults.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <functional>
#include <memory>
#include <new>

#include <malloc.h>
#include <sys/resource.h>

namespace
{
std::size_t requested = 0; // by `new`, in all

std::size_t BytesInUse()
{
    struct mallinfo2 const use = mallinfo2();
    return use.uordblks + use.hblkhd;
}

/// Has a pipe read, which has no size, and no end before the command has one.
nxErrorEnum ReadOutput(nxCSVFileReader& reader, std::string const& command)
{
    std::FILE* const output = popen(command.c_str(), "r");
    nxErrorEnum const result = reader.ReadFile("/proc/self/fd/" + std::to_string(fileno(output)));
    (void)pclose(output);
    return result;
}

/// @return what a row takes, in bytes, when so many have been read.
double BytesOfARow(std::size_t rows)
{
    std::string row;
    for (char letter = 'a'; letter < 'q'; ++letter)
        row += std::string(63, letter) + ',';
    row.pop_back(); // 1 KiB with its line feed
    std::size_t const before = BytesInUse();
    nxCSVFileReader reader;
    if (!ReadOutput(reader, "yes " + row + " | head -n " + std::to_string(rows)).IsOK() ||
        reader.GetRowCount() != rows)
        return -1;
    return static_cast<double>(BytesInUse() - before) / static_cast<double>(rows);
}

bool RowFigure()
{
    auto const start = Clock::now();
    std::size_t const rows = isFull ? 1024 * 1024 : 64 * 1024;
    rlimit const limit = {6ull << 30, 6ull << 30};
    (void)setrlimit(RLIMIT_AS, &limit);
    double const few = BytesOfARow(rows / 8);
    double const many = BytesOfARow(rows);
    constexpr double growth = 1.5; // of the list of rows, which is doubled when it is full
    return Report(start, few > 0 && many > 0 && many < growth * few,
                  "F24 bounds, a file of %zu MiB: %.0f bytes for a row of 1024, %.0f in an eighth of it",
                  rows / 1024, many, few);
}

bool LineFigure()
{
    auto const start = Clock::now();
    std::size_t const before = BytesInUse();
    nxCSVFileReader reader;
    bool const isRefused =
        ReadOutput(reader, "head -c 1G /dev/zero | tr '\\0' x") == NX_ERR_CSV_FILE_READ_ERROR;
    std::size_t const kept = BytesInUse() - before;
    constexpr std::size_t mostKept = 1 << 20;
    return Report(start, isRefused && kept < mostKept, "F24 bounds, a line of 1 GiB: %s, %zu bytes kept",
                  isRefused ? "refused" : "taken", kept);
}

using Reader = std::function<void(std::string const&)>;

std::vector<Reader> MakeReaders()
{
    std::vector<Reader> readers = {
        [](std::string const& text) { (void)nxDecimal().SetFromString(text, '.'); },
        [](std::string const& text) { (void)nxDoubleValueWrapper().SetFromString(text); },
        [](std::string const& text) { (void)nxGenericEnum().SetFromString(text); },
        [](std::string const& text)
        {
            nxDateTime moment;
            (void)nxDateTime::SetFromString(text, moment);
        },
        [](std::string const& text) { (void)nxDateTime(1720000000LL).GetAsString(text); },
        [](std::string const& text) { nxCSVFileRow().SetRowData(text, ',', '"'); },
        [](std::string const& text) { (void)nxCSVFileReader::GetAsCSVColumn(text); },
        [](std::string const& text) { (void)nxStringHelper::GetUppercaseAndUnderscoreFormatted(text); },
        [](std::string const& text)
        {
            std::deque<std::string> parts;
            nxStringParser::ExtractAllSubstrings(text, parts, false, ',');
        },
    };
    for (unsigned int format = NX_PRICE_FORMAT_DECIMALS;
         format <= NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT; ++format)
        readers.push_back(
            [format](std::string const& text)
            {
                std::unique_ptr<nxPriceConverter> const converter(
                    nxPriceConverterHelper::CreatePriceConverter(
                        nxPriceFormatEnum(static_cast<nxEnumValue>(format))));
                (void)converter->SetMinimumTickIncrement(nxDecimal("0.01", '.'));
                (void)converter->SetPriceFromString(text);
            });
    return readers;
}

bool TextFigure()
{
    auto const start = Clock::now();
    constexpr std::size_t size = 64 * 1024;
    constexpr double mostSeconds = 0.1;
    constexpr std::size_t mostBytes = 64 * size;
    unsigned int tried = 0, wrong = 0;
    double slowest = 0;
    std::size_t largest = 0;
    for (std::string const piece :
         {"0", "9", "-", ",", "\"", "a,", "\"a\",", "\",", "a", "aB", ".", "1.", "%c", "\n", " "})
    {
        std::string text;
        while (text.size() + piece.size() <= size)
            text += piece;
        for (Reader const& read : MakeReaders())
        {
            std::size_t const before = requested;
            std::clock_t const begin = std::clock(); // of the processor, whatever the load
            read(text);
            double const seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
            std::size_t const bytes = requested - before;
            slowest = std::max(slowest, seconds);
            largest = std::max(largest, bytes);
            wrong += seconds > mostSeconds || bytes > mostBytes;
            ++tried;
        }
    }
    return Report(
        start, wrong == 0,
        "F24 bounds, %u readings of 64 KiB: %u beyond 0.1 s or 4 MiB, slowest %.1f ms, largest %zu KiB",
        tried, wrong, slowest * 1000, largest / 1024);
}

bool Show()
{
    bool const areTextsCheap = TextFigure();
    bool const isLineRefused = LineFigure();
    return RowFigure() && isLineRefused && areTextsCheap;
}

Figure const figure("bounds", Show);
} // namespace

void* operator new(std::size_t size)
{
    requested += size;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}
