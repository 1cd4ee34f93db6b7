// Log statements, dumps of buffers and names of log files, each as text that the C library would have made.

#include "fuzz/FuzzFolder.h"
#include "fuzz/FuzzInput.h"

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSite.h"
#include "core/numbers/nxDecimal.h"
#include "core/process/nxApplicationData.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"

#include <cctype>
#include <vector>

namespace
{
/// The lines that reach a device.
class Recorder : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }
    void Write(nxLog const& log) override
    {
        lines.push_back(*log.GetLogEntry());
    }
    void Flush() override
    {
    }

    std::vector<std::string> lines;
};

Recorder& TheRecorder()
{
    static Recorder& recorder = *new Recorder;
    return recorder;
}

/// As printf, into a text; a macro, so that the compiler sees the format.
#define FORMAT(...)                                                                                          \
    [&]                                                                                                      \
    {                                                                                                        \
        char text[64];                                                                                       \
        std::snprintf(text, sizeof text, __VA_ARGS__);                                                       \
        return std::string(text);                                                                            \
    }()

/// Streams one value and adds what it should look like.
void AddValue(FuzzInput& input, nxLog& log, std::string& expected)
{
    switch (input.Below(13))
    {
    case 0:
    {
        std::string const text = input.Text();
        log << text;
        expected += text.c_str();
        break;
    }
    case 1:
    {
        std::string const text = input.Text();
        log << nxLogCharLenPair(text.data(), text.size());
        expected += text;
        break;
    }
    case 2:
    {
        auto const value = input.Take<char>();
        log << value;
        expected += std::to_string(static_cast<signed char>(value));
        break;
    }
    case 3:
    {
        auto const value = input.Take<short>();
        log << value << static_cast<unsigned short>(value);
        expected += std::to_string(value) + std::to_string(static_cast<unsigned short>(value));
        break;
    }
    case 4:
    {
        auto const value = input.Take<int>();
        log << value << static_cast<unsigned int>(value);
        expected += std::to_string(value) + std::to_string(static_cast<unsigned int>(value));
        break;
    }
    case 5:
    {
        auto const value = input.Take<long long>();
        log << value << static_cast<unsigned long long>(value) << static_cast<long>(value);
        expected += std::to_string(value) + std::to_string(static_cast<unsigned long long>(value)) +
                    std::to_string(value);
        break;
    }
    case 6:
    {
        bool const value = input.Truth();
        log << value;
        expected += value ? "TRUE" : "FALSE";
        break;
    }
    case 7:
    {
        // In steps of which binary fractions are exact; the other doubles have a target of their own.
        double const value = input.Take<int>() / 256.0;
        log << value;
        std::string fixed = FORMAT("%.8f", value);
        fixed.erase(fixed.find_last_not_of('0') + 1);
        if (fixed.ends_with('.'))
            fixed.pop_back();
        expected += fixed;
        break;
    }
    case 8:
    {
        nxVolume const value(input.Take<unsigned int>());
        log << value;
        expected += value.IsNull()       ? "NULL"
                    : value.IsNoChange() ? "NO_CHANGE"
                                         : std::to_string(value.GetValue());
        break;
    }
    case 9:
    {
        auto const cents = input.Take<int>();
        log << nxDecimal::ConstructFromValueAndDecimalPlaces(cents, 2);
        expected +=
            FORMAT("%s%lld.%02lld", cents < 0 ? "-" : "", std::abs(cents / 100LL), std::abs(cents % 100LL));
        break;
    }
    case 10:
    {
        nxErrorEnum const error(static_cast<nxEnumValue>(1000000 + input.Take<unsigned short>()));
        log << error;
        expected += '(' + std::to_string(error.GetValue()) + ") " + error.GetShortDescription() + " - '" +
                    error.GetLongDescription() + '\'';
        break;
    }
    case 11:
    {
        nxExchangePriceFilterBitMask const mask(input.Below(32));
        log << mask;
        expected += mask.GetShortDescription(" ");
        break;
    }
    default: log << nxLog::nxLogDestinationUserID(nxVolume(input.Take<unsigned int>()));
    }
}

void CheckStatement(FuzzInput& input)
{
    nxLog log(NX_INF, "file.cpp", 1);
    std::string expected;
    for (unsigned int count = input.Below(16); count != 0; --count)
        AddValue(input, log, expected);
    FUZZ_EQUAL(*log.GetLogEntry(), expected);
    log.Flush();
    FUZZ_EQUAL(TheRecorder().lines.size(), std::size_t{1});
    FUZZ_EQUAL(TheRecorder().lines[0], expected);
}

void CheckDump(FuzzInput& input)
{
    bool const isHuge = input.Truth(); // so that the product wraps
    // Wide enough for a wrap; a line is as wide as it is told to be, so it is not to be wider than memory.
    auto const bytesPerLine = isHuge ? input.Take<unsigned int>() % 100000 : input.Below(20);
    auto const maxLines = isHuge ? input.Take<unsigned int>() : input.Below(20);
    char const nonPrintable = input.Take<char>();
    bool const sohAsPipe = input.Truth();
    std::string const bytes = input.Rest();
    TheRecorder().lines.clear();
    std::vector<std::string>& lines = TheRecorder().lines;
    bool const done =
        nxLog::LogBufferAsHex(bytes.data(), bytes.size(), bytesPerLine, maxLines, nonPrintable, sohAsPipe)
            .IsOK();
    FUZZ_EQUAL(done, bytesPerLine != 0);
    if (!done)
        return;
    std::string const shown = bytes.substr(0, bytesPerLine * maxLines);
    FUZZ_EQUAL(lines.size(), 1 + (shown.size() + bytesPerLine - 1) / bytesPerLine);
    for (std::size_t line = 1; line < lines.size(); ++line)
    {
        std::string hex;
        std::string characters;
        for (char const byte : shown.substr((line - 1) * bytesPerLine, bytesPerLine))
        {
            hex += FORMAT("%02X ", static_cast<unsigned char>(byte));
            bool const isPlain = byte >= 32 && byte != 127;
            characters += isPlain ? byte : sohAsPipe && byte == 1 ? '|' : nonPrintable;
        }
        hex.resize(3 * bytesPerLine, ' ');
        characters.resize(bytesPerLine, ' ');
        std::string const expected = hex + ' ' + characters;
        FUZZ_EQUAL(lines[line].substr(0, hex.size()), hex);
        if (expected.find('\0') == std::string::npos)
            FUZZ_EQUAL(lines[line], expected);
    }
}

void CheckFileName(FuzzInput& input)
{
    std::string const application = input.Text();
    std::string const instance = input.Text();
    nxApplicationData::SetApplicationName(application);
    nxApplicationData::SetApplicationInstanceName(instance);
    auto const sequence = input.Take<unsigned int>();
    bool const hasTime = input.Truth();
    bool const hasSequence = input.Truth();
    nxDateTime const time(2LL + input.Take<unsigned int>());
    std::string const name =
        nxFileLogDevice::GenerateFileName(".log", hasSequence, sequence, time, hasTime, true);
    std::string expected = application + (instance.empty() ? "" : '_' + instance);
    if (hasTime)
        expected += '_' + FORMAT("%02d%02d%02d", time.GetHour(), time.GetMinute(), time.GetSecond());
    expected += '_' + std::to_string(getpid()) + (hasSequence ? '_' + std::to_string(sequence) : "") + ".log";
    FUZZ_CHECK(name.ends_with('/' + expected));
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzQuietLog();
    setenv("KVT_LOG_FORCE_FLUSH", "YES", 1);
    setenv("KVT_LOG_DIRECTORY", FuzzFolder().c_str(), 1);
    nxLogManager::GetInstance().RegisterLogDevice(&TheRecorder());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    TheRecorder().lines.clear();
    CheckStatement(input);
    CheckFileName(input);
    CheckDump(input);
    return 0;
}
