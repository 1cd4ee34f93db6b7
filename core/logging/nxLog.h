#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <string>

/// @file
/// One log statement.

/// A log statement: built on the stack of a log site, filled with `<<`, ended with nxLogTerminator.
class NX_CORE_API nxLog
{
public:
    /// Ends a statement: hands it to the log manager.
    class nxLogTerminator
    {
    };

    /// @param sourceFile  kept as a pointer: a literal.
    nxLog(nxLogLevelEnum const& level, char const* sourceFile, unsigned int line);

    nxLog(nxLog const&) = delete;
    nxLog& operator=(nxLog const&) = delete;

    nxLogLevelEnum const& GetLogLevel() const
    {
        return _level;
    }
    std::string const* GetLogEntry() const
    {
        return &_entry;
    }
    char const* GetSourceFile() const
    {
        return _sourceFile;
    }
    unsigned int GetLineNumber() const
    {
        return _lineNumber;
    }

    nxLog& operator<<(char const* text);
    nxLog& operator<<(std::string const& text);
    /// A number, not a character: 'A' gives 65.
    nxLog& operator<<(char value);
    nxLog& operator<<(unsigned char value);
    nxLog& operator<<(short value);
    nxLog& operator<<(unsigned short value);
    nxLog& operator<<(int value);
    nxLog& operator<<(unsigned int value);
    nxLog& operator<<(long const& value);
    nxLog& operator<<(unsigned long value);
    nxLog& operator<<(long long value);
    nxLog& operator<<(unsigned long long value);
    nxLog& operator<<(bool value);
    nxLog& operator<<(double value);
    nxLog& operator<<(float value);
    nxLog& operator<<(nxEnum const& value);
    nxLog& operator<<(nxErrorEnum const& value);
    nxLog& operator<<(nxBitMask const& value);
    nxLog& operator<<(nxLogTerminator const&);
    /// An address is logged as a number that the caller makes of it; a pointer would print as a `bool`.
    nxLog& operator<<(void const*) = delete;

private:
    nxLogLevelEnum _level;
    std::string _entry;
    char const* _sourceFile;
    unsigned int _lineNumber;
};
