#include "core/logging/nxLog.h"

#include "core/concurrency/nxThreadIndex.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSlots.h"
#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxMoney.h"
#include "core/text/nxStringHelper.h"
#include "core/time/nxDateTime.h"
#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <algorithm>

namespace
{

/// The source file that the dump's lines name.
constexpr char sourceFile[] = "nxLog";

} // namespace

nxLog::nxLog(nxLogLevelEnum const& level, char const* file, unsigned int line)
    : _level(level), _entry(nullptr), _sourceFile(file), _lineNumber(line), _destinationUserID(noUser)
{
    // Whether the index is wanted is known only with the manager, which the first statement of all builds.
    nxLogManager const& manager = nxLogManager::GetInstance();
    _entry = nxLogSlots::TakeText();
    if (manager.GetLogThreadIndex())
        _threadIndex = nxThreadIndex::GetIndexOfCurrentThread();
}

nxLog::nxLog(nxLogLevelEnum const& level, char const* file, unsigned int line, nxTimeStamp& stamp)
    : nxLog(level, file, line)
{
    stamp = _timeStamp;
}

nxLog::nxLog(nxLog& other)
    : _level(other._level), _entry(other._entry), _sourceFile(other._sourceFile),
      _lineNumber(other._lineNumber), _destinationUserID(other._destinationUserID),
      _timeStamp(other._timeStamp), _threadIndex(other._threadIndex), _threadCPU(other._threadCPU),
      _sourceApplication(other._sourceApplication)
{
    other._entry = nullptr;
    other._sourceApplication = nullptr;
}

nxLog* nxLog::CreateCopyWithOwnershipTransfer()
{
    return ::new (nxLogSlots::TakeRoom(_entry)) nxLog(*this);
}

void nxLog::_ReleaseTexts()
{
    if (_entry != nullptr)
        nxLogSlots::ReturnText(_entry);
    delete _sourceApplication;
}

void* nxLog::operator new(std::size_t)
{
    return nxLogSlots::TakeRoom(nullptr);
}

void nxLog::operator delete(void* statement) noexcept
{
    nxLogSlots::ReturnRoom(statement);
}

void nxLog::Flush()
{
    _Flush();
}

void nxLog::_Flush()
{
    nxLogManager::GetInstance().Write(*this);
}

template <typename Value>
nxLog& nxLog::_Append(Value value)
{
    if (_entry != nullptr)
        nxStringHelper::AppendAsString(*_entry, value);
    return *this;
}

nxLog& nxLog::operator<<(nxLogCharLenPair const& text)
{
    if (_entry != nullptr)
        _entry->append(text.GetUnterminatedCharBuffer(), text.GetLength());
    return *this;
}

nxLog& nxLog::operator<<(char value)
{
    return _Append(static_cast<int>(static_cast<signed char>(value)));
}

nxLog& nxLog::operator<<(unsigned char value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(short value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(unsigned short value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(int value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(unsigned int value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(long const& value)
{
    return _Append(static_cast<long long>(value));
}

nxLog& nxLog::operator<<(unsigned long value)
{
    return _Append(static_cast<unsigned long long>(value));
}

nxLog& nxLog::operator<<(long long value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(unsigned long long value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(bool value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(double value)
{
    return _Append(value);
}

nxLog& nxLog::operator<<(float value)
{
    return _Append(static_cast<double>(value));
}

nxLog& nxLog::operator<<(nxValueWrapper<unsigned int, -1, -2> const& value)
{
    if (value.IsNoChange())
        return *this << "NO_CHANGE";
    return value.IsNull() ? *this << "NULL" : *this << value.GetValue();
}

nxLog& nxLog::operator<<(nxDecimal const& value)
{
    if (_entry != nullptr)
        value.AppendAsLogString(*_entry, '.');
    return *this;
}

nxLog& nxLog::operator<<(nxMoney const& value)
{
    return *this << value.GetAsLogString();
}

nxLog& nxLog::operator<<(nxDateTime const& value)
{
    if (_entry != nullptr)
        value.AppendAsLogString_Microseconds(*_entry);
    return *this;
}

nxLog& nxLog::operator<<(nxEnum const& value)
{
    return *this << value.GetShortDescription();
}

nxLog& nxLog::operator<<(nxBitMask const& value)
{
    return *this << value.GetShortDescription(" ");
}

nxLog& nxLog::operator<<(nxErrorEnum const& value)
{
    return *this << "(" << value.GetValue() << ") " << value.GetShortDescription() << " - '"
                 << value.GetLongDescription() << "'";
}

nxLog& nxLog::operator<<(nxLogDestinationUserID const& userID)
{
    _destinationUserID = userID.GetUserID();
    return *this;
}

nxLog& nxLog::operator<<(nxLogSourceApplicationDestUserID const& source)
{
    constexpr std::size_t usualLength = 64;

    _destinationUserID = source.GetUserID();
    if (_sourceApplication == nullptr)
    {
        _sourceApplication = new std::string;
        _sourceApplication->reserve(usualLength);
    }
    *_sourceApplication = source.GetSourceApplication();
    return *this;
}

namespace
{

void LogDumpRefusal(char const* text)
{
    if (nxLogManager::ShouldLog(NX_ERR))
    {
        nxLog log(NX_ERR, sourceFile, __LINE__);
        log << text << nxLog::nxLogTerminator();
    }
}

void LogDumpLine(std::string const& hexadecimal, unsigned long long missing, std::string const& characters)
{
    constexpr unsigned int columnsPerByte = 3; // two digits and a blank

    if (nxLogManager::ShouldLog(NX_INF))
    {
        std::string const hexadecimalFill(columnsPerByte * missing, ' ');
        std::string const characterFill(missing, ' ');
        nxLog log(NX_INF, sourceFile, __LINE__);
        log << nxLogCharLenPair(hexadecimal.data(), hexadecimal.size()) << hexadecimalFill << " "
            << nxLogCharLenPair(characters.data(), characters.size()) << characterFill
            << nxLog::nxLogTerminator();
    }
}

void AppendDumpByte(std::string& hexadecimal, std::string& characters, char byte, char nonPrintable,
                    bool sohAsPipe)
{
    constexpr char digits[] = "0123456789ABCDEF";
    constexpr signed char startOfHeader = 1;
    constexpr signed char firstPrintable = 32;
    constexpr signed char deleteCharacter = 127;

    unsigned char const value = static_cast<unsigned char>(byte);
    hexadecimal += digits[value >> 4];
    hexadecimal += digits[value & 0xf];
    hexadecimal += ' ';

    signed char const character = static_cast<signed char>(byte);
    bool const isPrintable = character >= firstPrintable && character != deleteCharacter;
    bool const isPipe = sohAsPipe && character == startOfHeader;
    characters += isPrintable ? byte : isPipe ? '|' : nonPrintable;
}

} // namespace

nxErrorEnum nxLog::LogBufferAsHex(char const* buffer, unsigned long long size,
                                  unsigned int const& bytesPerLine, unsigned int const& maxLines,
                                  char nonPrintable, bool sohAsPipe)
{
    if (buffer == nullptr)
    {
        LogDumpRefusal("Unable to dump memory as hex and ascii. A null buffer was passed in");
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    }
    if (bytesPerLine == 0)
    {
        LogDumpRefusal("Unable to dump memory as hex and ascii. Bytes per line value is not valid");
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    }

    unsigned int const limit = bytesPerLine * maxLines; // wraps, so that 65536 lines of 65536 bytes are none
    if (nxLogManager::ShouldLog(NX_INF))
    {
        nxLog log(NX_INF, sourceFile, __LINE__);
        log << "Dumping memory as hex and ascii. At most " << limit << " bytes of data will be dumped"
            << nxLogTerminator();
    }

    std::string hexadecimal;
    std::string characters;
    unsigned int inLine = 0;
    unsigned long long const count = std::min<unsigned long long>(size, limit);
    for (unsigned long long i = 0; i < count; ++i)
    {
        AppendDumpByte(hexadecimal, characters, buffer[i], nonPrintable, sohAsPipe);
        if (++inLine == bytesPerLine)
        {
            LogDumpLine(hexadecimal, 0, characters);
            hexadecimal.clear();
            characters.clear();
            inLine = 0;
        }
    }
    if (inLine != 0)
        LogDumpLine(hexadecimal, bytesPerLine - inLine, characters);
    return nxErrorEnum();
}
