#include "core/logging/nxLogLine.h"

#include "core/logging/nxLog.h"
#include "core/logging/nxLogManager.h"
#include "core/text/nxDigits.h"

#include <algorithm>

namespace
{

char* Put(char* out, std::string_view text)
{
    return std::copy(text.begin(), text.end(), out); // an empty text may have no address
}

// Line and index are printed as signed numbers, as "%d" does.
char* PutNumber(char* out, unsigned int number)
{
    char digits[nxDigits::maximum];
    bool const isNegative = static_cast<int>(number) < 0;
    char* const end = digits + sizeof digits;
    char* const begin = nxDigits::WriteBackward(end, isNegative ? 0u - number : number);
    if (isNegative)
        *out++ = '-';
    return Put(out, std::string_view(begin, static_cast<std::size_t>(end - begin)));
}

} // namespace

nxLogLine nxLogLine::Of(nxLog const& log, std::string_view stamp)
{
    nxLogLine line;
    line.level = log.GetLogLevel().GetShortDescription();
    line.stamp = stamp;
    line.hasThreadIndex = nxLogManager::GetInstance().GetLogThreadIndex();
    line.threadIndex = log.GetThreadIndex();
    line.message = GetMessage(log);
    line.sourceFile = log.GetSourceFile() != nullptr ? log.GetSourceFile() : "";
    line.lineNumber = log.GetLineNumber();
    return line;
}

char const* nxLogLine::GetMessage(nxLog const& log)
{
    return log.GetLogEntry() != nullptr ? log.GetLogEntry()->c_str() : "";
}

std::size_t nxLogLine::GetMostSize() const
{
    constexpr std::size_t numbersAndFrame = 64; // two numbers of at most 11 characters and the brackets
    return level.size() + stamp.size() + message.size() + sourceFile.size() + end.size() + numbersAndFrame;
}

char* nxLogLine::Write(char* out) const
{
    *out++ = '[';
    out = Put(out, level);
    out = Put(out, "][");
    out = Put(out, stamp);
    if (hasThreadIndex)
    {
        out = Put(out, "][");
        out = PutNumber(out, threadIndex);
    }
    out = Put(out, "] ");
    out = Put(out, message);
    out = Put(out, " [");
    out = Put(out, sourceFile);
    *out++ = ':';
    out = PutNumber(out, lineNumber);
    *out++ = ']';
    return Put(out, end);
}

std::string nxLogLine::GetText() const
{
    std::string text(GetMostSize(), '\0');
    text.resize(static_cast<std::size_t>(Write(text.data()) - text.data()));
    return text;
}
