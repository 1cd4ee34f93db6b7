// What a statement adds for each kind of value, who owns its texts, and how it reaches the devices. The fuzz target
// of statements holds dumps, texts, errors and masks; that of the log's calls holds who is listed, what each device
// sees, and devices that log or leave while they write.

#include "core/logging/nxLogSite.h"
#include "core/logging/nxPrintable.h"
#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxMoney.h"
#include "core/time/nxDateTime.h"
#include "core/vocabulary/nxBuySellEnum.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <chrono>
#include <concepts>
#include <memory>

namespace
{

using UserID = nxValueWrapper<unsigned int, -1, -2>;

template <typename Value>
concept Loggable = requires(nxLog log, Value value)
{
    log << value;
};

static_assert(!Loggable<void const*> && !Loggable<int*> && !Loggable<nxLog*>,
              "an address would print as TRUE");
static_assert(Loggable<unsigned long> && Loggable<long> && Loggable<signed char>);
static_assert(!std::copy_constructible<nxLog>);
static_assert(!std::is_default_constructible_v<nxLogCharLenPair>);
static_assert(!std::is_default_constructible_v<nxLog::nxLogDestinationUserID>);

template <typename... Values>
std::string Text(Values const&... values)
{
    nxLog log(NX_INF, "file", 1);
    (log << ... << values);
    return *log.GetLogEntry();
}

TEST(nxLogText, OfEachKindOfValue)
{
    nxDateTime const time(2026, 11, 15, 9, 30, 5, 123456);
    std::pair<std::string, std::string> const rows[] = {
        {Text(static_cast<unsigned char>(255)), "255"},
        {Text(1.5, 0.5f), "1.50.5"},
        {Text("x", static_cast<char const*>(nullptr), "y"), "xy"},
        {Text(nxMoney(nxDecimal("100.50", '.'), nxCurrencyEnum(NX_USD))), "100.50USD"},
        {Text(time), "15 Nov 2026 09:30:05.123456"},
        {Text(nxBuySellEnum(NX_BUY)), "BUY"},
        {Text("<", nxPrintable(std::string()), ">"), "<>"},
        {Text(nxPrintable("\0a\r\n[ERR] forged", 16)), "\\x00a\\x0D\\x0A[ERR] forged"},
        {Text(nxPrintable(std::string("\x1f ~\x7f\\x0A\xc3\xa9"))), "\\x1F ~\\x7F\\x5Cx0A\xc3\xa9"},
    };
    for (auto const& [text, expected] : rows)
        EXPECT_EQ(text, expected);
}

TEST(nxLogStatement, StartsWithoutAUserAndAnApplication)
{
    nxTimeStamp stamp(0, 0);
    nxLog const log(NX_WRN, "file.cpp", 42, stamp);
    EXPECT_EQ(log.GetLineNumber(), 42u);
    EXPECT_TRUE(log.GetDestinationUserID().IsNull() && log.GetSourceApplication() == nullptr);
    EXPECT_EQ(stamp.GetNanoseconds(), log.GetTimeStamp().GetNanoseconds());
    EXPECT_GT(stamp.GetAsTimeValue(), 0);
}

TEST(nxLogStatement, MovesItsTextsToACopy)
{
    std::unique_ptr<nxLog> first;
    {
        nxLog log(NX_INF, "file", 1);
        log << "text" << nxLog::nxLogSourceApplicationDestUserID(UserID(5), "application");
        first.reset(log.CreateCopyWithOwnershipTransfer());
        EXPECT_EQ(log.GetSourceApplication(), nullptr);
        log << "ignored" << 1 << 1.5 << true << nxLogCharLenPair("x", 1) << nxDecimal() << nxDateTime();
        EXPECT_EQ(log.GetLogEntry(), nullptr);
    }
    // A copy of the copy has the text where it was.
    std::string const* const entry = first->GetLogEntry();
    std::unique_ptr<nxLog> const second(first->CreateCopyWithOwnershipTransfer());
    EXPECT_EQ(second->GetLogEntry(), entry);
    EXPECT_EQ(*entry + ' ' + *second->GetSourceApplication(), "text application");
    EXPECT_EQ(second->GetDestinationUserID().GetValue(), 5u);
    std::unique_ptr<nxLog> const empty(first->CreateCopyWithOwnershipTransfer());
    EXPECT_EQ(empty->GetLogEntry(), nullptr);

    // The memory of a text was given back once, and not while it was in use.
    nxLog others[] = {nxLog(NX_INF, "file", 1), nxLog(NX_INF, "file", 1)};
    others[0] << "0";
    others[1] << "1";
    EXPECT_EQ(*entry + *others[0].GetLogEntry() + *others[1].GetLogEntry(), "text01");
}

using nxLogDeferred = nxRecordingTest;

TEST_F(nxLogDeferred, ADumpRefusesNothingToDump)
{
    EXPECT_EQ(nxLog::LogBufferAsHex(nullptr, 5, 4, 1, '.', true), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(nxLog::LogBufferAsHex("x", 1, 0, 1, '.', true), NX_ERR_INVALID_PARAMETER);
    std::string const refusal = "ERR Unable to dump memory as hex and ascii. ";
    EXPECT_EQ(Take(), (Lines{refusal + "A null buffer was passed in",
                             refusal + "Bytes per line value is not valid"}));
}

TEST_F(nxLogDeferred, ASiteIsOneStatementThatEvaluatesNothingBelowTheLevel)
{
    int evaluated = 0;
    if (evaluated == 0)
        NX_LOG(NX_DBG, "never " << ++evaluated);
    else
        FAIL();
    EXPECT_EQ(evaluated, 0);
    NX_LOG(NX_INF, "once " << ++evaluated);
    EXPECT_EQ(Messages(), Lines{"once 1"});
}

TEST_F(nxLogDeferred, EachDeviceSeesTheBatchBeforeTheNextAndIsFlushedOnce)
{
    nxRecordingLogDevice second;
    std::string order;
    _device.onWrite = [&](std::string const& message) { order += " first " + message; };
    second.onWrite = [&](std::string const& message) { order += " second " + message; };
    second.onFlush = [&] { order += " flush"; };

    nxLogManager& manager = nxLogManager::GetInstance();
    nxLog a(NX_INF, "file", 1);
    nxLog b(NX_INF, "file", 2);
    a << "a";
    b << "b";
    manager.RegisterLogDevice(&second);
    manager.ImmediateWrite({&a, &b});
    manager.FlushDevices();
    manager.UnregisterLogDevice(&second);
    EXPECT_EQ(order, " first a first b second a second b flush");
}

TEST_F(nxLogDeferred, WriteMovesTheTextAndTestsTheLevelAgain)
{
    nxLog debug(NX_DBG, "file", 1);
    debug << "below" << nxLog::nxLogTerminator();
    EXPECT_NE(debug.GetLogEntry(), nullptr);
    (void)(nxLog(NX_INF, "file", 1) << "not ended, so not written");

    nxLog log(NX_INF, "file", 1);
    log << "text" << nxLog::nxLogTerminator();
    log.Flush(); // a second end writes a line without a message
    EXPECT_EQ(Messages(), (Lines{"text", "(none)"}));
}

TEST_F(nxLogDeferred, AWaitIsBoundedByItsTime)
{
    using Clock = std::chrono::steady_clock;
    nxLogManager& manager = nxLogManager::GetInstance();
    // Null and no change wait for the cycle, and so does a time that no deadline could hold.
    for (double const seconds :
         {0.0, -1.0, 1e-9, nxDoubleValueWrapper::nullValue, nxDoubleValueWrapper::noChangeValue, 1e300})
    {
        auto const start = Clock::now();
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(seconds));
        auto const longest = std::chrono::milliseconds(seconds < 1.0 ? 90 : 5000);
        EXPECT_LT(Clock::now() - start, longest) << seconds;
    }
}

TEST_F(nxLogDeferred, AReservationIsCutAndNeverLowered)
{
    nxLogEntriesQueue queue;
    queue.Reserve(50000);
    EXPECT_EQ(queue.GetCapacity(), 20000u);
    queue.Reserve(10);
    EXPECT_EQ(queue.GetCapacity(), 20000u);

    std::vector<nxLog*> logs;
    queue.Swap(logs);
    EXPECT_EQ(queue.GetCapacity(), 0u); // the storage goes with the swap
}

} // namespace
