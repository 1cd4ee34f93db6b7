// F5: that want of memory at any place leaves each object old or new, every lock open and nothing lost.
//
// A program of its own, since it takes memory away: each operation is repeated while its first allocation fails, then
// its second and so on until none is left to fail; once with that one alone, and once with all that come after it.

#include "core/core.h"
#include "tests/faults/Faults.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <set>
#include <type_traits>
#include <vector>

#include <unistd.h>

namespace
{

// What fails is counted on the thread that asks for it; the log's writer has a switch of its own.

constinit thread_local long untilFailure = -1; // allocations that are still granted; negative: all
constinit thread_local bool isLasting = false; // the failure is one of many
constinit thread_local unsigned long failures = 0;
constinit std::atomic<long> untilFailureAnywhere = -1;
constinit std::atomic<bool> isLastingAnywhere = false;
constinit std::atomic<long> liveBlocks = 0;

bool Fails()
{
    if (untilFailureAnywhere.load(std::memory_order_relaxed) >= 0)
        return isLastingAnywhere || untilFailureAnywhere.fetch_sub(1) == 0;
    if (untilFailure != 0)
    {
        untilFailure -= untilFailure > 0;
        return false;
    }
    ++failures;
    untilFailure = isLasting ? 0 : -1;
    return true;
}

template <typename Allocate>
void* Granted(Allocate allocate)
{
    if (!Fails())
        return allocate();
    errno = ENOMEM;
    return nullptr;
}

} // namespace

// The system's allocator has a second name for those who replace the first. The C library allocates by it, too, and so
// does operator new.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void __libc_free(void* block);

extern "C" void* malloc(std::size_t size)
{
    return Granted([=] { return ++liveBlocks, __libc_malloc(size); });
}

extern "C" void* calloc(std::size_t count, std::size_t size)
{
    return Granted([=] { return ++liveBlocks, __libc_calloc(count, size); });
}

extern "C" void* realloc(void* block, std::size_t size)
{
    return Granted([=] { return liveBlocks += block == nullptr, __libc_realloc(block, size); });
}

extern "C" void free(void* block)
{
    liveBlocks -= block != nullptr;
    __libc_free(block);
}

namespace
{

constexpr char longText[] = "a text that no small string holds without an allocation";
std::string const someText = longText;

unsigned int operations = 0;
unsigned long refused = 0;
unsigned int wrong = 0;

constexpr auto showIt = [](auto const& object) -> std::string
{
    if constexpr (requires { object.GetAsString(); })
        return object.GetAsString();
    else
        return object;
};

/// Refuses an operation one allocation after the other, until it gets by without meeting the one that fails.
/// @param origin  the object before, or what gives it.
/// @param show    tells the object's state as a text.
/// @param isKept  whether it may keep memory for later use: the log's store does, and so does the system's.
template <typename Origin, typename Act, typename ShowState = decltype(showIt)>
void On(char const* name, Origin const& origin, Act act, ShowState show = showIt, bool isKept = false)
{
    auto const make = [&]
    {
        if constexpr (std::is_invocable_v<Origin const&>)
            return origin();
        else
            return origin;
    };
    // Is told how many allocations are granted, and gives the state before and after.
    auto const operate = [&](long granted)
    {
        auto object = make();
        std::string const before = show(object);
        untilFailure = granted;
        try
        {
            act(object);
        }
        catch (std::bad_alloc const&)
        {
        }
        untilFailure = -1;
        return std::pair(before, show(object));
    };
    ++operations;
    std::string const expected = operate(-1).second;
    (void)operate(-1);
    for (bool const isForAll : {false, true})
    {
        isLasting = isForAll;
        bool isMet = true; // one that never ends is ended by the alarm
        for (long granted = 0; isMet; ++granted)
        {
            unsigned long const failuresBefore = failures;
            long const blocks = liveBlocks;
            bool isOldOrNew = false;
            {
                auto const [before, after] = operate(granted);
                isOldOrNew = after == before || after == expected;
            }
            bool const isLeakFree = isKept || liveBlocks == blocks;
            bool const worksAgain = operate(-1).second == expected;
            if ((!isOldOrNew || !isLeakFree || !worksAgain) && ++wrong <= 20)
                std::printf("%s, %s allocation %ld:%s%s%s\n", name, isLasting ? "from" : "without",
                            granted + 1, isOldOrNew ? "" : " left in between",
                            isLeakFree ? "" : " memory leaked",
                            worksAgain ? "" : " does not work afterwards");
            refused += failures - failuresBefore;
            isMet = failures != failuresBefore;
        }
    }
}

template <typename Act>
void Gives(char const* name, Act act)
{
    On(name, someText, [act](auto& text) { text = act() + longText; });
}

/// An operation after which there is nothing to look at but that it works again.
template <typename Act>
void Does(char const* name, Act act)
{
    On(
        name, 0, [act](int) { act(); }, [](int) { return std::string(); }, true);
}

struct Nothing : nxFunctor
{
    void _Invoke() override
    {
    }
};

struct IdleThread : nxThread
{
    nxErrorEnum Run() override
    {
        return nxErrorEnum();
    }
};

nxExchangeRateList Rates()
{
    nxExchangeRateList rates;
    rates.SetExchangeRate(nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92", '.')));
    return rates;
}

void StarveTexts(files::path const& directory)
{
    std::string const fields = "\"" + std::string(longText) + "\"," + longText;
    files::path const rows = directory / "rows.csv";
    std::ofstream(rows) << "first,\"second, which is quoted\",third\n" << longText << ",2,3\n";
    Gives("text of a double", [] { return nxStringHelper::GetAsString(1.0 / 3.0); });
    On("append", someText, [](auto& text) { nxStringHelper::AppendAsString(text, 1ULL << 60); });
    On("append hex", someText,
       [](auto& text) { nxAlgorithm::AppendAsHex(std::vector<unsigned char>(4, 7), text); });
    On("replace", someText, [](auto& text) { nxStringHelper::Replace(text, "text", "much longer text"); });
    On("pad", someText, [](auto& text) { nxStringHelper::PadLeft(text, 100, ' '); });
    On("pad right", someText, [](auto& text) { nxStringHelper::PadRight(text, 100, ' '); });
    Gives("trimmed right", [] { return nxStringHelper::GetRightTrimmed(longText); });
    Gives("formatted", [] { return nxStringHelper::GetUppercaseAndUnderscoreFormatted(longText); });
    std::set<std::string> const patterns = {longText, "*"};
    On("best match", someText,
       [&](auto& text) { (void)nxAlgorithm::GetBestMatch(patterns, longText, text, true, ',', "*"); });
    Gives("trimmed", [] { return nxStringHelper::GetLeftTrimmed(longText); });
    Gives("column alone", [&] { return nxCSVFileReader::GetAsCSVColumn(fields); });
    Gives("quoted field", [&] { return nxStringParser(fields).GetSubString(',', '"'); });
    On("column", someText, [](auto& text) { nxCSVFileReader::GetAsCSVColumn("a\"b,c", text); });
    On(
        "row", nxCSVFileRow(), [&](nxCSVFileRow& row) { row.SetRowData(fields, ','); },
        [](auto const& row) { return row.GetColValue(0) + row.GetColValue(1); });
    On(
        "file", nxCSVFileReader(',', true), [&](auto& reader) { (void)reader.ReadFile(rows.string()); },
        [](nxCSVFileReader const& reader) { return std::to_string(reader.GetRowCount() / 2); });
}

void StarveValues()
{
    On("decimal", nxDecimal(), [](auto& value) { value = nxDecimal("12345678.901234567", '.'); });
    Gives("text of a decimal", [] { return nxDecimal("12345678.901234567", '.').GetAsString('.'); });
    On("money", nxMoney(), [](auto& value) { (void)value.SetFromString("123456789.25 USD"); });
    Gives("text of money", [] { return nxMoney(nxDecimal("123456789.25", '.'), NX_USD).GetAsString(); });
    Gives("log text of money",
          [] { return nxMoney(nxDecimal("1234567890.25", '.'), NX_USD).GetAsLogString(); });
    Gives("text of a ratio", [] { return nxRatio(1234567890u, 987654321u).GetAsString(); });
    On("ratio", nxRatio(), [](auto& value) { (void)value.SetFromString("1234567:7654321"); });
    auto const count = [](auto const& rates) { return std::to_string(rates.GetExchangeRateMap().size()); };
    nxExchangeRate const rate(NX_EUR, NX_USD, nxDecimal("1.08", '.'));
    Gives("text of a rate", [&] { return rate.GetAsString(); });
    On(
        "set a rate", Rates, [&](auto& rates) { rates.SetExchangeRate(rate); }, count);
    On(
        "copy rates", nxExchangeRateList(), [](auto& rates) { rates = Rates(); }, count);
    Does("shared rates", [] { nxExchangeRateConverter::GetInstance().SetExchangeRateList(Rates()); });
    Gives("day", [] { return nxDate(2024, 3, 5).GetAsString("%A, the %d of %B in the year %Y"); });
    Gives("moment", [] { return nxDateTime(1720000000LL).GetAsString_Seconds(); });
    Gives("stamp", [] { return nxTimeStamp(1720000000, 0).GetAsString(); });
    On(
        "word by its token", nxGenericEnum(),
        [](auto& value) { (void)value.SetFromString("NX_ERR_INVALID_PARAMETER"); },
        [](auto const& value) { return value.GetShortDescription(); });
    Gives("error", [] { return nxErrorEnum(NX_ERR_INVALID_PARAMETER).GetLongDescription(); });
    Gives("exception", [] { return nxException(nxErrorEnum(NX_ERR_INTERNAL), longText).GetDescription(); });
    Gives("mask", [] { return nxServerCapabilityBitMask(0xffu).GetShortDescription(" "); });
}

void StarvePrices()
{
    using Ladders = nxVariableTickTableContainer;
    nxPriceFormatEnum const format(NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK);
    Does("ladder", [] { (void)Ladders::GetVariableTickTable("VTT_TAIFEX_EQUITY_OPTIONS"); });
    Gives("identifier", [] { return Ladders::GetVariableTickTableID("TAIFEX_EQUITY_OPTIONS"); });
    On("step", nxDecimal(),
       [](auto& price) { Ladders::GetVariableTickTable("VTT_TAIFEX_TAIEX")->Increment(price); });
    auto const create = [&]
    { return std::unique_ptr<nxPriceConverter>(nxPriceConverterHelper::CreatePriceConverter(format)); };
    On(
        "price", create, [](auto& converter) { (void)converter->SetPriceFromString("123456-165"); },
        [](auto const& converter) { return nxStringHelper::GetAsString(double(converter->GetPrice())); });
    Does("new converter", [&] { (void)create(); });
    nxDoubleValueWrapper const value(123456789012.5);
    On("text of a price", someText,
       [&](auto& text) { (void)nxPriceConverterHelper::GetPriceAsString(value, format, text, true); });
    On("round", nxDecimal(),
       [](auto& price)
       { nxPriceManipulator(nxDecimal("0.25", '.')).RoundToValidPrice(NX_ROUNDING_METHOD_DOWN, price); });
    nxVolume const volume(123456789u);
    nxVolumeFormatEnum const brief(NX_VOLUME_FORMAT_ABBREVIATED);
    On("text of a volume", someText,
       [&](auto& text) { (void)nxVolumeConverterHelper::GetFormattedDisplayVolume(volume, brief, text); });
}

void StarveProcess()
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    Gives("value of a key", [&] { return arguments.GetEnvValue("PATH"); });
    On(
        "set a key", [&] { return arguments.SetEnvValue("NX_FAULTS", "old"); },
        [&](bool) { (void)arguments.SetEnvValue("NX_FAULTS", longText); },
        [&](bool) { return arguments.GetEnvValue("NX_FAULTS"); }, true);
    On(
        "all keys", std::map<std::string, std::string>(), [&](auto& keys) { arguments.GetEnvs(keys); },
        [](auto const& keys) { return std::to_string(keys.count("PATH")); });
    On(
        "set the name", [] { return (nxApplicationData::SetApplicationName("host"), 0); },
        [](int) { nxApplicationData::SetApplicationName(longText); },
        [](int) { return nxApplicationData::GetApplicationName(); }, true);
    Does("host's name", [] { (void)nxApplicationData::GetHostName(); });
    Does("name of a log file", [] { (void)nxFileLogDevice::GenerateFileName(".log", true, 3, true, true); });
    Does("directory is there",
         [] { (void)nxFileHelper::DoesDirectoryExist("/a/directory/that/nobody/has"); });
}

void StarveThreadsAndSockets()
{
    On(
        "push", [] { return std::make_unique<nxManuallyDispatchedFunctorQueue>(); },
        [](auto& queue)
        {
            auto functor = std::make_unique<Nothing>();
            if (queue->Push(functor.get()).IsOK())
                (void)functor.release();
            (void)queue->DispatchAll();
        },
        [](auto const& queue) { return std::to_string(queue->Size()); });
    Does("pool",
         []
         {
             nxFunctorQueue queue;
             queue.Create(new nxFunctorThreadPool(2));
             (void)queue.Stop();
         });
    Does("thread and condition",
         []
         {
             IdleThread thread;
             (void)(thread.Create().IsOK() && thread.Wait().IsOK());
             nxConditionRaw const original;
             nxConditionRaw copy;
             [&]() noexcept { copy = original; }(); // nothing of a condition throws
         });
    Gives("thread's number", [] { return nxThread::GetThreadIDAsString(); });
    Does("named objects",
         []
         {
             nxWindowsMutex mutex("nxfaults of allocations");
             (void)(mutex.Lock().IsOK() && mutex.Unlock().IsOK());
             nxWindowsSemaphore semaphore("nxfaults of allocations", 1, 1);
             (void)(semaphore.TimedWait(0.0).IsOK() && semaphore.Post().IsOK());
         });
    Does("sockets",
         []
         {
             nxSocket socket;
             (void)socket.Create(NX_SOCKET_TYPE_UDP);
             (void)socket.Bind("127.0.0.1", 0);
             (void)socket.SendToDestination("x", 1, "127.0.0.1", 9);
             unsigned int ready = 0;
             std::vector<bool> readable;
             (void)nxSocket::Select({&socket}, 0, ready, readable);
         });
    std::vector<std::unique_ptr<nxLog>> held; // all that the log has ready, so that a statement needs memory
    for (unsigned int i = 0; i < 4000; ++i)
        held.push_back(std::make_unique<nxLog>(NX_INF, "", 0));
    Does("destructor that logs",
         []
         {
             nxSocket socket;
             (void)socket.Create();
             (void)socket.Close();
         });
}

void StarveTheLog()
{
    static nxLogDevice* const device = &nxConsoleLogDevice::GetInstance();
    nxLogManager& manager = nxLogManager::GetInstance();
    Does("line", [] { NX_LOG(NX_INF, "value " << longText << 42 << nxDecimal("1.5", '.')); });
    Does("long line", [] { NX_LOG(NX_INF, std::string(10000, 'x')); });
    Does("dump", [] { (void)nxLog::LogBufferAsHex(longText, sizeof longText, 16, 4, '.', false); });
    Does("list of ladders", [] { nxVariableTickTableContainer::LogRegisteredEntries(); });
    Does("register", [&] { manager.RegisterLogDevice(device), manager.UnregisterLogDevice(device); });
    Does("reserve", [&] { manager.SetRecommendedBufferCapacity(20000); });
}

/// @param granted  the allocations of one cycle before the one that fails.
void RefuseTheWriter(long granted)
{
    untilFailureAnywhere = granted;
    (void)usleep(15000); // a cycle is 10 ms; this thread allocates nothing meanwhile
    untilFailureAnywhere = -1;
}

/// The log's writer meets the want of memory where it first gives a statement back, and where it asks for as much room
/// as the host recommends.
void StarveTheRecommended()
{
    NX_LOG(NX_INF, "first");
    RefuseTheWriter(0);
    RefuseTheWriter(0);
    for (unsigned int entries = 10; entries <= 50; entries += 10)
    {
        nxLogManager::GetInstance().SetRecommendedBufferCapacity(entries);
        RefuseTheWriter(0);
    }
}

/// The log's writer has no room for a line, nor for the notice that one is lost. @return whether it comes later.
bool StarveTheNotice(files::path const& directory)
{
    Drain();
    NX_LOG(NX_INF, std::string(5 << 20, 'x')); // more than the file's room
    isLastingAnywhere = true;
    RefuseTheWriter(0);
    isLastingAnywhere = false;
    (void)nxLogManager::GetInstance().Destroy();
    return std::system(("grep -rq '] 1 lines lost \\[' " + directory.string()).c_str()) == 0;
}

/// The log's writer meets the want of memory.
bool StarveTheWriter(files::path const& directory)
{
    unsigned int const rounds = Trials(60, 2000);
    auto const start = Clock::now();
    LogToFile(20000);
    for (unsigned int i = 0; i < rounds; ++i)
    {
        LogLines(0, 20, 20 * i);
        if (i == 0)
            Drain(); // the file's list of lines has its room from here on: a line without any counts as lost
        RefuseTheWriter(i % 40);
    }
    bool const isTold = StarveTheNotice(directory);
    unsigned int const lost = CountLog(directory).Lost(1, 20 * rounds);
    return Report(
        start, lost == 0 && isTold,
        "F5 want of memory in the log's writer, %u cycles: %u of %u lines lost, one without room %s", rounds,
        lost, rounds * 20, isTold ? "told" : "not told");
}

bool StarveAll()
{
    static Directory const directory; // outlives the log
    SetUpLog(directory.path, shortCycles);
    (void)alarm(300); // a lock that stays closed ends this process
    auto const start = Clock::now();
    StarveTheRecommended();
    StarveTexts(directory.path);
    StarveValues();
    StarvePrices();
    StarveProcess();
    StarveThreadsAndSockets();
    StarveTheLog();
    bool const isKept =
        Report(start, wrong == 0, "F5 want of memory in %u operations, %lu allocations refused: %u wrong",
               operations, refused, wrong);
    nxApplicationData::SetApplicationName("host");
    return StarveTheWriter(directory.path) && isKept;
}

Figure const figure("allocation", StarveAll);

} // namespace
