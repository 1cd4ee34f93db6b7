// Log statements, dumps of buffers and names of log files, each as text that the C library would have made.

#include "fuzz/FuzzInput.h"

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSite.h"
#include "core/numbers/nxDecimal.h"
#include "core/process/nxApplicationData.h"
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"

namespace
{
std::vector<std::string>& lines = *new std::vector<std::string>;

/// Gathers the lines that the log writes.
class Recorder : public nxLogDevice
{
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
};

/// Streams one value.
/// @return what it should look like
std::string AddValue(FuzzInput& input, nxLog& log)
{
    unsigned int const kind = input.Below(13);
    std::string const text = kind < 2 ? input.Text() : "";
    auto const number = kind < 2 ? 0 : input.Take<int>();
    auto const natural = static_cast<unsigned int>(number);
    // What the C library makes of numbers, which follow each other in the line.
    auto const stream = [&log](auto... numbers)
    { return (log << ... << numbers), (std::to_string(numbers) + ...); };
    nxErrorEnum const error(static_cast<nxEnumValue>(1000000 + natural % 0x10000));
    nxExchangePriceFilterBitMask const mask(natural % 32);
    switch (kind)
    {
    case 0: log << text; return text.c_str();
    case 1: log << nxLogCharLenPair(text.data(), text.size()); return text;
    case 2: log << static_cast<char>(number); return std::to_string(static_cast<signed char>(number));
    case 3: return stream(static_cast<short>(number), static_cast<unsigned short>(number));
    case 4: return stream(number, natural);
    case 5: return stream(number * 0x10001ll, natural * 0x100010001ull, long{number});
    case 6: log << (number % 2 != 0); return number % 2 != 0 ? "TRUE" : "FALSE";
    case 7: // in steps of which binary fractions are exact; the other doubles have a target of their own
        log << number / 256.0;
        return FuzzFixed(number / 256.0, 8);
    case 8:
        log << nxVolume(natural);
        return ~natural == 0 ? "NULL" : ~natural == 1 ? "NO_CHANGE" : std::to_string(natural);
    case 9:
        log << nxDecimal::ConstructFromValueAndDecimalPlaces(number, 2);
        return FUZZ_FORMAT("%s%lld.%02lld", number < 0 ? "-" : "", std::abs(number / 100LL),
                           std::abs(number % 100LL));
    case 10:
        log << error;
        return '(' + std::to_string(error.GetValue()) + ") " + error.GetShortDescription() + " - '" +
               error.GetLongDescription() + '\'';
    case 11: log << mask; return mask.GetShortDescription(" ");
    default: log << nxLog::nxLogDestinationUserID(nxVolume(natural)); return "";
    }
}

void CheckStatement(FuzzInput& input)
{
    nxLog log(NX_INF, "file.cpp", 1);
    std::string expected;
    for (unsigned int count = input.Below(16); count != 0; --count)
        expected += AddValue(input, log);
    FUZZ_EQUAL(*log.GetLogEntry(), expected);
    lines.clear();
    log.Flush();
    FUZZ_CHECK(lines == std::vector<std::string>{expected});
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
    lines.clear();
    nxErrorEnum const result =
        nxLog::LogBufferAsHex(bytes.data(), bytes.size(), bytesPerLine, maxLines, nonPrintable, sohAsPipe);
    FUZZ_EQUAL(result.IsOK(), bytesPerLine != 0);
    if (bytesPerLine == 0)
        return;
    std::string const shown = bytes.substr(0, bytesPerLine * maxLines);
    FUZZ_EQUAL(lines.size(), 1 + (shown.size() + bytesPerLine - 1) / bytesPerLine);
    for (std::size_t line = 1; line < lines.size(); ++line)
    {
        std::string hex;
        std::string characters = shown.substr((line - 1) * bytesPerLine, bytesPerLine);
        for (char& byte : characters)
        {
            hex += FUZZ_FORMAT("%02X ", static_cast<unsigned char>(byte));
            if (byte < 32 || byte == 127)
                byte = sohAsPipe && byte == 1 ? '|' : nonPrintable;
        }
        hex.resize(3 * bytesPerLine, ' ');
        characters.resize(bytesPerLine, ' ');
        // A zero byte, as what is not printable may be shown, ends a line.
        FUZZ_EQUAL(std::string(lines[line].c_str()), (hex + ' ' + characters).c_str());
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
    std::string expected = application + (instance.empty() ? "" : '_' + instance);
    if (hasTime)
        expected += FUZZ_FORMAT("_%02d%02d%02d", time.GetHour(), time.GetMinute(), time.GetSecond());
    expected += '_' + std::to_string(getpid()) + (hasSequence ? '_' + std::to_string(sequence) : "") + ".log";
    FUZZ_CHECK(nxFileLogDevice::GenerateFileName(".log", hasSequence, sequence, time, hasTime, true)
                   .ends_with('/' + expected));
}
} // namespace

void FuzzStart()
{
    static Recorder& recorder = *new Recorder;
    setenv("KVT_LOG_DIRECTORY", FuzzFolder().c_str(), 1);
    nxLogManager::GetInstance().RegisterLogDevice(&recorder);
}

void FuzzOne(FuzzInput& input)
{
    CheckStatement(input);
    CheckFileName(input);
    CheckDump(input);
}
