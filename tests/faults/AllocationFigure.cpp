// F5: that want of memory at any place leaves each object old or new, every lock open and nothing lost.
//
// A program of its own, since it takes memory away: each operation is repeated while its first allocation fails, then
// its second and so on until none is left to fail; once with that one alone, and once with all that come after it.

#include "core/core.h"
#include "tests/Sanitizer.h"
#include "tests/faults/Faults.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <new>
#include <set>
#include <string_view>

#include <unistd.h>

namespace
{

// What fails is counted on the thread that asks for it; the log's writer has a switch of its own.

constinit thread_local long untilFailure = -1; // allocations that are still granted; negative: all
constinit thread_local bool isLasting = false; // the failure is one of many
constinit thread_local unsigned long failures = 0;
constinit std::atomic<long> untilFailureAnywhere = -1;
constinit std::atomic<long> liveBlocks = 0;

[[maybe_unused]] bool Fails()
{
    if (untilFailureAnywhere.load(std::memory_order_relaxed) >= 0)
    {
        return untilFailureAnywhere.fetch_sub(1) == 0;
    }
    if (untilFailure < 0)
    {
        return false;
    }
    if (untilFailure > 0)
    {
        --untilFailure;
        return false;
    }
    ++failures;
    untilFailure = isLasting ? 0 : -1;
    return true;
}

} // namespace

#if !NX_ADDRESS_SANITIZER && !NX_THREAD_SANITIZER
// The system's allocator has a second name for those who replace the first. The C library allocates by it, too, and so
// does operator new.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void __libc_free(void* block);

namespace
{

template <typename Allocate>
void* Granted(Allocate allocate)
{
    if (Fails())
    {
        errno = ENOMEM;
        return nullptr;
    }
    return allocate();
}

} // namespace

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
#endif

namespace
{

/// Takes memory away while it lives.
class Shortage
{
public:
    Shortage(long granted, bool isForAll)
    {
        isLasting = isForAll;
        untilFailure = granted;
    }
    ~Shortage()
    {
        untilFailure = -1;
    }
    Shortage(Shortage const&) = delete;
    Shortage& operator=(Shortage const&) = delete;
};

/// Whether an operation may keep memory for later use: the log's store does, and so does the system's.
enum class Memory
{
    returned,
    kept
};

/// Refuses operations one allocation after the other, until they get by without meeting the one that fails.
class Trial
{
public:
    unsigned int operations = 0;
    unsigned long refused = 0;
    unsigned int wrong = 0;

    /// @param show  tells the state of the object that `make` gives, as a text.
    template <typename Make, typename Act, typename Show>
    void On(char const* name, Make make, Act act, Show show, Memory memory = Memory::returned)
    {
        ++operations;
        for (bool const isForAll : {false, true})
        {
            _Starve(name, isForAll, memory,
                    [&](long granted)
                    {
                        auto object = make();
                        std::string const before = show(object);
                        try
                        {
                            Shortage const shortage(granted, isForAll);
                            act(object);
                        }
                        catch (std::bad_alloc const&)
                        {
                        }
                        return std::pair(before, show(object));
                    });
        }
    }

    /// An operation that changes an object whose text tells its state.
    template <typename Object, typename Act>
    void OnValue(char const* name, Act act)
    {
        On(
            name, [] { return Object(); }, act, [](Object const& object) { return object.GetAsString(); });
    }

    template <typename Act>
    void Changes(char const* name, Act act)
    {
        On(
            name, [] { return std::string(longText); }, act, [](std::string const& text) { return text; });
    }

    /// An operation that gives a text.
    template <typename Act>
    void Gives(char const* name, Act act)
    {
        Changes(name, [act](std::string& text) { text = act() + longText; });
    }

    /// An operation after which there is nothing to look at but that it works again.
    template <typename Act>
    void Does(char const* name, Act act)
    {
        On(
            name, [] { return 0; }, [act](int) { act(); }, [](int) { return std::string(); }, Memory::kept);
    }

    static constexpr char longText[] = "a text that no small string holds without an allocation";

private:
    template <typename Operation>
    void _Starve(char const* name, bool isForAll, Memory memory, Operation operation)
    {
        constexpr long most = 5000;
        std::string const expected = operation(-1).second;
        (void)operation(-1);
        for (long granted = 0; granted < most; ++granted)
        {
            unsigned long const failuresBefore = failures;
            long const blocks = liveBlocks;
            bool isOldOrNew = false;
            {
                auto const [before, after] = operation(granted);
                isOldOrNew = after == before || after == expected;
            }
            bool const isLeakFree = memory == Memory::kept || liveBlocks == blocks;
            bool const worksAgain = operation(-1).second == expected;
            if ((!isOldOrNew || !isLeakFree || !worksAgain) && ++wrong <= 20)
            {
                std::printf("%s, %s allocation %ld:%s%s%s\n", name, isForAll ? "from" : "without",
                            granted + 1, isOldOrNew ? "" : " left in between",
                            isLeakFree ? "" : " memory leaked",
                            worksAgain ? "" : " does not work afterwards");
            }
            if (failures == failuresBefore)
            {
                return;
            }
            refused += failures - failuresBefore;
        }
        std::printf("%s never ends\n", name);
        ++wrong;
    }
};

constexpr auto& longText = Trial::longText;

class Nothing : public nxFunctor
{
    void _Invoke() override
    {
    }
};

class IdleThread : public nxThread
{
public:
    nxErrorEnum Run() override
    {
        return nxErrorEnum();
    }
};

std::string CountOfRates(nxExchangeRateList const& rates)
{
    return std::to_string(rates.GetExchangeRateMap().size());
}

nxExchangeRateList Rates()
{
    nxExchangeRateList rates;
    rates.SetExchangeRate(nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92", '.')));
    return rates;
}

void StarveTexts(Trial& trial, files::path const& directory)
{
    std::string const fields = "\"" + std::string(longText) + "\"," + longText;
    files::path const rows = directory / "rows.csv";
    std::ofstream(rows) << "first,\"second, which is quoted\",third\n" << longText << ",2,3\n";
    trial.Gives("text of a double", [] { return nxStringHelper::GetAsString(1.0 / 3.0); });
    trial.Changes("append", [](std::string& text) { nxStringHelper::AppendAsString(text, 1ULL << 60); });
    trial.Changes("append hex",
                  [](auto& text) { nxAlgorithm::AppendAsHex(std::vector<unsigned char>(4, 7), text); });
    trial.Changes("replace", [](auto& text) { nxStringHelper::Replace(text, "text", "much longer text"); });
    trial.Changes("pad", [](std::string& text) { nxStringHelper::PadLeft(text, 100, ' '); });
    trial.Gives("trimmed", [] { return nxStringHelper::GetLeftTrimmed(longText); });
    trial.Gives("quoted field", [&] { return nxStringParser(fields).GetSubString(',', '"'); });
    trial.Changes("column", [](std::string& text) { nxCSVFileReader::GetAsCSVColumn("a\"b,c", text); });
    trial.On(
        "row", [] { return nxCSVFileRow(); }, [&](nxCSVFileRow& row) { row.SetRowData(fields, ','); },
        [](nxCSVFileRow const& row)
        {
            std::string text;
            for (unsigned int i = 0; i < row.GetColCount(); ++i)
            {
                text += row.GetColValue(i) + "|";
            }
            return text;
        });
    trial.On(
        "file", [] { return std::make_unique<nxCSVFileReader>(',', true); },
        [&](auto& reader) { (void)reader->ReadFile(rows.string()); },
        [](auto const& reader) { return std::to_string(reader->GetRowCount() / 2); });
}

void StarveValues(Trial& trial)
{
    trial.OnValue<nxDecimal>("decimal", [](auto& value) { value = nxDecimal("12345678.901234567", '.'); });
    trial.Gives("text of a decimal", [] { return nxDecimal("12345678.901234567", '.').GetAsString('.'); });
    trial.OnValue<nxMoney>("money", [](nxMoney& value) { (void)value.SetFromString("123456789.25 USD"); });
    trial.Gives("text of money",
                [] { return nxMoney(nxDecimal("123456789.25", '.'), NX_USD).GetAsString(); });
    trial.OnValue<nxRatio>("ratio", [](nxRatio& value) { (void)value.SetFromString("1234567:7654321"); });
    trial.On(
        "set a rate", Rates,
        [](nxExchangeRateList& rates)
        { rates.SetExchangeRate(nxExchangeRate(NX_EUR, NX_USD, nxDecimal("1.08", '.'))); },
        CountOfRates);
    trial.On(
        "copy rates", [] { return nxExchangeRateList(); }, [](auto& rates) { rates = Rates(); },
        CountOfRates);
    trial.Does("shared rates", [] { nxExchangeRateConverter::GetInstance().SetExchangeRateList(Rates()); });
    trial.Gives("day", [] { return nxDate(2024, 3, 5).GetAsString("%A, the %d of %B in the year %Y"); });
    trial.Gives("moment", [] { return nxDateTime(1720000000LL).GetAsString_Seconds(); });
    trial.Gives("stamp", [] { return nxTimeStamp(1720000000, 0).GetAsString(); });
    trial.On(
        "word by its token", [] { return nxGenericEnum(); },
        [](nxGenericEnum& value) { (void)value.SetFromString("NX_ERR_INVALID_PARAMETER"); },
        [](nxGenericEnum const& value) { return value.GetShortDescription(); });
    trial.Gives("error", [] { return nxErrorEnum(NX_ERR_INVALID_PARAMETER).GetLongDescription(); });
    trial.Gives("exception",
                [] { return nxException(nxErrorEnum(NX_ERR_INTERNAL), longText).GetDescription(); });
    trial.Gives("mask", [] { return nxServerCapabilityBitMask(0xffu).GetShortDescription(" "); });
}

void StarvePrices(Trial& trial)
{
    using Ladders = nxVariableTickTableContainer;
    nxPriceFormatEnum const format(NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK);
    trial.Does("ladder", [] { (void)Ladders::GetVariableTickTable("VTT_TAIFEX_EQUITY_OPTIONS"); });
    trial.Gives("identifier", [] { return Ladders::GetVariableTickTableID("TAIFEX_EQUITY_OPTIONS"); });
    trial.OnValue<nxDecimal>("step", [](nxDecimal& price)
                             { Ladders::GetVariableTickTable("VTT_TAIFEX_TAIEX")->Increment(price); });
    trial.On(
        "price",
        [&]
        { return std::unique_ptr<nxPriceConverter>(nxPriceConverterHelper::CreatePriceConverter(format)); },
        [](auto& converter) { (void)converter->SetPriceFromString("123456-165"); },
        [](auto const& converter) { return nxStringHelper::GetAsString(double(converter->GetPrice())); });
    trial.Does("new converter", [&]
               { std::unique_ptr<nxPriceConverter>(nxPriceConverterHelper::CreatePriceConverter(format)); });
    trial.Changes("text of a price",
                  [&](std::string& text)
                  {
                      nxDoubleValueWrapper const price(123456789012.5);
                      (void)nxPriceConverterHelper::GetPriceAsString(price, format, text, true);
                  });
    trial.OnValue<nxDecimal>(
        "round", [](nxDecimal& price)
        { nxPriceManipulator(nxDecimal("0.25", '.')).RoundToValidPrice(NX_ROUNDING_METHOD_DOWN, price); });
    trial.Changes("text of a volume",
                  [](std::string& text)
                  {
                      (void)nxVolumeConverterHelper::GetFormattedDisplayVolume(
                          nxVolume(123456789u), NX_VOLUME_FORMAT_ABBREVIATED, text);
                  });
}

void StarveProcess(Trial& trial)
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    trial.Gives("value of a key", [&] { return arguments.GetEnvValue("PATH"); });
    trial.On(
        "set a key", [&] { return arguments.SetEnvValue("NX_FAULTS", "old"); },
        [&](bool) { (void)arguments.SetEnvValue("NX_FAULTS", longText); },
        [&](bool) { return arguments.GetEnvValue("NX_FAULTS"); }, Memory::kept);
    trial.On(
        "all keys", [] { return std::map<std::string, std::string>(); },
        [&](auto& keys) { arguments.GetEnvs(keys); },
        [](auto const& keys) { return std::to_string(keys.count("PATH")); });
    trial.On(
        "set the name", [] { return (nxApplicationData::SetApplicationName("host"), 0); },
        [](int) { nxApplicationData::SetApplicationName(longText); },
        [](int) { return nxApplicationData::GetApplicationName(); }, Memory::kept);
    trial.Does("host's name", [] { (void)nxApplicationData::GetHostName(); });
    trial.Does("name of a log file",
               [] { (void)nxFileLogDevice::GenerateFileName(".log", true, 3, true, true); });
    trial.Does("directory is there",
               [] { (void)nxFileHelper::DoesDirectoryExist("/a/directory/that/nobody/has"); });
}

void StarveThreads(Trial& trial)
{
    trial.On(
        "push", [] { return std::make_unique<nxManuallyDispatchedFunctorQueue>(); },
        [](auto& queue)
        {
            auto functor = std::make_unique<Nothing>();
            if (queue->Push(functor.get()).IsOK())
            {
                (void)functor.release();
            }
            (void)queue->DispatchAll();
        },
        [](auto const& queue) { return std::to_string(queue->Size()); });
    trial.Does("pool",
               []
               {
                   nxFunctorQueue queue;
                   auto pool = std::make_unique<nxFunctorThreadPool>(2);
                   queue.Create(pool.release());
                   (void)queue.Stop();
               });
    trial.Does("thread",
               []
               {
                   IdleThread thread;
                   (void)(thread.Create().IsOK() && thread.Wait().IsOK());
               });
    trial.Gives("thread's number", [] { return nxThread::GetThreadIDAsString(); });
    trial.Does("named objects",
               []
               {
                   nxWindowsMutex mutex("nxfaults of allocations");
                   (void)(mutex.Lock().IsOK() && mutex.Unlock().IsOK());
                   nxWindowsSemaphore semaphore("nxfaults of allocations", 1, 1);
                   (void)(semaphore.TimedWait(0.0).IsOK() && semaphore.Post().IsOK());
               });
}

void StarveSockets(Trial& trial)
{
    trial.Does("sockets",
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
}

void StarveTheLog(Trial& trial)
{
    static nxLogDevice* const device = &nxConsoleLogDevice::GetInstance();
    nxLogManager& manager = nxLogManager::GetInstance();
    trial.Does("line", [] { NX_LOG(NX_INF, "value " << longText << 42 << nxDecimal("1.5", '.')); });
    trial.Does("long line", [] { NX_LOG(NX_INF, std::string(10000, 'x')); });
    trial.Does("dump", [] { (void)nxLog::LogBufferAsHex(longText, sizeof longText, 16, 4, '.', false); });
    trial.Does("list of ladders", [] { nxVariableTickTableContainer::LogRegisteredEntries(); });
    trial.Does("register", [&] { manager.RegisterLogDevice(device), manager.UnregisterLogDevice(device); });
    trial.Does("reserve", [&] { manager.SetRecommendedBufferCapacity(20000); });
}

/// The log's writer meets the want of memory. @return the lines that were handed over and are not in the file.
unsigned int StarveTheWriter(unsigned int rounds, files::path const& directory)
{
    LogToFile(20000);
    for (unsigned int i = 0; i < rounds; ++i)
    {
        LogLines(0, 20, 20 * i);
        untilFailureAnywhere = i % 40;
        (void)usleep(15000); // the writer's cycle is 10 ms; this thread allocates nothing meanwhile
        untilFailureAnywhere = -1;
    }
    (void)nxLogManager::GetInstance().Destroy();
    return 20 * rounds - CountLog(directory).Lines(0);
}

} // namespace

int main(int argumentCount, char** argumentValues)
{
    isFull = argumentCount > 1 && argumentValues[1] == std::string_view("full");
    if (underSanitizer)
    {
        NotRun("F5 want of memory: not run, the sanitizer has an allocator of its own");
    }
    auto const start = Clock::now();
    static Directory const directory;
    (void)setenv("KVT_LOG_DIRECTORY", (directory.path / "log").c_str(), 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    (void)setenv("KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01", 1);
    (void)alarm(300); // a lock that stays closed ends this process
    Trial trial;
    StarveTexts(trial, directory.path);
    StarveValues(trial);
    StarvePrices(trial);
    StarveProcess(trial);
    StarveThreads(trial);
    StarveSockets(trial);
    StarveTheLog(trial);
    bool const isKept = Report(start, trial.wrong == 0,
                               "F5 want of memory in %u operations, %lu allocations refused: %u wrong",
                               trial.operations, trial.refused, trial.wrong);

    nxApplicationData::SetApplicationName("host");
    unsigned int const rounds = Trials(60, 2000);
    auto const startOfWriter = Clock::now();
    unsigned int const lost = StarveTheWriter(rounds, directory.path);
    bool const isComplete = Report(startOfWriter, lost == 0,
                                   "F5 want of memory in the log's writer, %u cycles: %u of %u lines lost",
                                   rounds, lost, rounds * 20);
    return isKept && isComplete ? 0 : 1;
}
