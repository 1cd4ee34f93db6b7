#pragma once

#include "core/logging/nxLogCharLenPair.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/time/nxTimeStamp.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <cstddef>
#include <string>

class nxBitMask;
class nxDateTime;
class nxDecimal;
class nxErrorEnum;
class nxMoney;

/// @file
/// One log statement.

/// A log statement: built on the stack of a log site, filled with `<<`, ended by nxLogTerminator, by Flush() or by
/// nxLogManager::Write(). One that is destroyed without being ended prints nothing.
///
/// All text is formed when `<<` runs; nothing refers to the caller's data afterwards but the name of the source file,
/// which has to be a literal. A statement belongs to one thread. Its memory is taken from and given back to a store
/// of the log's own, so that the usual line allocates nothing; only want of memory makes anything here throw.
///
/// Sites use NX_LOG of nxLogSite.h, which asks nxLogManager::ShouldLog() before it builds anything.
///
/// @code
/// if (nxLogManager::ShouldLog(NX_INF))
/// {
///     nxLog log(NX_INF, __FILE__, __LINE__);
///     log << "Order sent, quantity: " << quantity << nxLog::nxLogTerminator();
/// }
/// @endcode
class NX_CORE_API nxLog final
{
public:
    /// Streamed, ends the statement.
    class nxLogTerminator
    {
    };

    /// Streamed, addresses the statement to a user.
    class NX_CORE_API nxLogDestinationUserID
    {
    public:
        explicit nxLogDestinationUserID(nxValueWrapper<unsigned int, -1, -2> const& userID) : _userID(userID)
        {
        }

        nxValueWrapper<unsigned int, -1, -2> const& GetUserID() const
        {
            return _userID;
        }

    private:
        nxLogDestinationUserID() : _userID(noUser)
        {
        }

        nxValueWrapper<unsigned int, -1, -2> _userID;
    };

    /// Streamed, addresses the statement to a user and names the application that it comes from.
    class NX_CORE_API nxLogSourceApplicationDestUserID
    {
    public:
        nxLogSourceApplicationDestUserID(nxValueWrapper<unsigned int, -1, -2> const& userID,
                                         std::string const& sourceApplication)
            : _userID(userID), _sourceApplication(sourceApplication)
        {
        }

        nxValueWrapper<unsigned int, -1, -2> const& GetUserID() const
        {
            return _userID;
        }

        std::string const& GetSourceApplication() const
        {
            return _sourceApplication;
        }

    private:
        nxValueWrapper<unsigned int, -1, -2> _userID;
        std::string _sourceApplication;
    };

    /// Takes the time; takes the thread's index too if the log prints it.
    /// @param sourceFile  kept as a pointer: a literal.
    nxLog(nxLogLevelEnum const& level, char const* sourceFile, unsigned int line);

    /// The same.
    /// @param stamp  receives the statement's time stamp, for a caller who needs the very stamp of the line.
    nxLog(nxLogLevelEnum const& level, char const* sourceFile, unsigned int line, nxTimeStamp& stamp);

    ~nxLog()
    {
        if (_entry != nullptr || _sourceApplication != nullptr)
            _ReleaseTexts();
    }

    nxLog& operator=(nxLog const&) = delete;

    /// Moves the text and the source application to a new statement on the heap, which the caller owns, and copies
    /// the rest. Text streamed to this one afterwards is ignored.
    nxLog* CreateCopyWithOwnershipTransfer();

    /// Ends the statement, as nxLogTerminator does. In deferred mode its text is gone afterwards; a second end then
    /// writes a line without a message.
    void Flush();

    nxLogLevelEnum const& GetLogLevel() const
    {
        return _level;
    }

    /// Null once the text has moved to a copy.
    std::string const* GetLogEntry() const
    {
        return _entry;
    }

    char const* GetSourceFile() const
    {
        return _sourceFile;
    }

    unsigned int GetLineNumber() const
    {
        return _lineNumber;
    }

    /// Null unless one was streamed.
    nxValueWrapper<unsigned int, -1, -2> const& GetDestinationUserID() const
    {
        return _destinationUserID;
    }

    /// A null pointer unless one was streamed.
    std::string const* GetSourceApplication() const
    {
        return _sourceApplication;
    }

    /// When the statement was built, to the millisecond.
    nxTimeStamp const& GetTimeStamp() const
    {
        return _timeStamp;
    }

    /// 0 unless nxLogManager::GetLogThreadIndex().
    unsigned int GetThreadIndex() const
    {
        return _threadIndex;
    }

    /// Always 0.
    unsigned int GetThreadCPU() const
    {
        return _threadCPU;
    }

    /// @name Adding text
    /// Nothing is added when the text has moved to a copy.
    /// @{
    nxLog& operator<<(char const* text) ///< a null pointer adds nothing
    {
        _Write(text);
        return *this;
    }
    nxLog& operator<<(std::string const& text) ///< up to the first zero byte
    {
        return *this << text.c_str();
    }
    nxLog& operator<<(nxLogCharLenPair const& text); ///< its whole length, zero bytes included
    nxLog& operator<<(char value);                   ///< a number, not a character: 'A' gives 65
    nxLog& operator<<(unsigned char value);
    nxLog& operator<<(short value);
    nxLog& operator<<(unsigned short value);
    nxLog& operator<<(int value);
    nxLog& operator<<(unsigned int value);
    nxLog& operator<<(long const& value);
    nxLog& operator<<(unsigned long value);
    nxLog& operator<<(long long value);
    nxLog& operator<<(unsigned long long value);
    nxLog& operator<<(bool value);   ///< TRUE or FALSE
    nxLog& operator<<(double value); ///< at most nine decimals, no trailing zeros; see nxStringHelper
    nxLog& operator<<(float value);
    nxLog& operator<<(nxValueWrapper<unsigned int, -1, -2> const& value); ///< NULL, NO_CHANGE or the number
    nxLog& operator<<(nxDecimal const& value);                            ///< NULL, NO_CHANGE or 12.50
    nxLog& operator<<(nxMoney const& value);     ///< NULL, NO_CHANGE or 12.50USD; ??? for no currency
    nxLog& operator<<(nxDateTime const& value);  ///< NULL, NO_CHANGE or 15 Nov 2026 09:30:05.123456
    nxLog& operator<<(nxEnum const& value);      ///< its token
    nxLog& operator<<(nxBitMask const& value);   ///< the tokens of its bits with blanks between them
    nxLog& operator<<(nxErrorEnum const& value); ///< (1000002) NX_ERR_INVALID_PARAMETER - 'its text'
    /// An address is streamed as the number that the caller makes of it: a pointer would print as a `bool`.
    nxLog& operator<<(void const*) = delete;
    /// @}

    /// Sets the user, and adds no text.
    nxLog& operator<<(nxLogDestinationUserID const& userID);

    /// Sets user and source application, and adds no text.
    nxLog& operator<<(nxLogSourceApplicationDestUserID const& source);

    /// Ends the statement.
    nxLog& operator<<(nxLogTerminator const&)
    {
        _Flush();
        return *this;
    }

    /// Logs bytes as lines of hexadecimal digits and characters, at level Info.
    ///
    /// The minimum level holds for each line by itself. Bytes outside 32 to 126 show as `nonPrintable`.
    /// @param bytesPerLine  bytes in a line, at least 1.
    /// @param maxLines      the dump ends after that many lines; the product of both is cut to 32 bits.
    /// @param sohAsPipe     shows the byte 1, the separator of FIX messages, as "|".
    /// @return OK; NX_ERR_INVALID_PARAMETER, with a line at level Error, for a null buffer or 0 bytes a line.
    static nxErrorEnum LogBufferAsHex(char const* buffer, unsigned long long size,
                                      unsigned int const& bytesPerLine, unsigned int const& maxLines,
                                      char nonPrintable, bool sohAsPipe);

    /// Memory of statements on the heap comes from the log's store.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t, void* place) noexcept
    {
        return place;
    }
    static void operator delete(void* statement) noexcept;
    static void operator delete(void*, void*) noexcept
    {
    }

private:
    friend class nxLogSlots;

    /// What an unset destination user is made of: all bits set.
    static constexpr unsigned int noUser = 0xffffffff;

    /// Moves texts out of `other` and copies the rest.
    nxLog(nxLog& other);

    void _Flush();
    void _Write(char const* text)
    {
        if (_entry != nullptr && text != nullptr)
            _entry->append(text);
    }
    void _ReleaseTexts();
    template <typename Value>
    nxLog& _Append(Value value);

    nxLogLevelEnum _level;
    std::string* _entry;
    char const* _sourceFile;
    unsigned int _lineNumber;
    nxValueWrapper<unsigned int, -1, -2> _destinationUserID;
    nxTimeStamp _timeStamp;
    unsigned int _threadIndex = 0;
    unsigned int _threadCPU = 0;
    std::string* _sourceApplication = nullptr;
};
