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

bool Fails()
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

#ifdef NX_FAULTS_OWN_MALLOC
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
#else
void* operator new(std::size_t size)
{
    void* const block = Fails() ? nullptr : std::malloc(size);
    if (block == nullptr)
    {
        throw std::bad_alloc();
    }
    ++liveBlocks;
    return block;
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    void* const block = Fails() ? nullptr : std::malloc(size);
    liveBlocks += block != nullptr;
    return block;
}

void operator delete(void* block) noexcept
{
    liveBlocks -= block != nullptr;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
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

struct Outcome
{
    std::string before;
    std::string after;
};

/// @param granted  allocations before the first that fails; negative: none fails.
using Operation = std::function<Outcome(long granted, bool isForAll)>;

/// An operation on an object that `make` gives; `show` tells its state as a text.
template <typename Make, typename Act, typename Show>
Operation On(Make make, Act act, Show show)
{
    return [=](long granted, bool isForAll)
    {
        auto object = make();
        Outcome outcome;
        outcome.before = show(object);
        try
        {
            Shortage const shortage(granted, isForAll);
            act(object);
        }
        catch (std::bad_alloc const&)
        {
        }
        outcome.after = show(object);
        return outcome;
    };
}

constexpr char longText[] = "a text that no small string holds without an allocation";

/// An operation that gives a text, or an object with one.
template <typename Act>
Operation Gives(Act act)
{
    return On([] { return std::string(longText); }, [act](std::string& text) { text = act(); },
              [](std::string const& text) { return text; });
}

/// An operation that changes a text.
template <typename Act>
Operation Changes(Act act)
{
    return On([] { return std::string(longText); }, act, [](std::string const& text) { return text; });
}

/// An operation on an object whose text tells its state.
template <typename Object, typename Act>
Operation OnValue(Act act)
{
    return On([] { return Object(); }, act, [](Object const& object) { return object.GetAsString(); });
}

std::string Text(bool value)
{
    return value ? "yes" : "no";
}

std::string ColumnsOf(nxCSVFileRow const& row)
{
    std::string text;
    for (unsigned int i = 0; i < row.GetColCount(); ++i)
    {
        text += row.GetColValue(i) + "|";
    }
    return text;
}

nxExchangeRateList Rates()
{
    nxExchangeRateList rates;
    rates.SetExchangeRate(nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92", '.')));
    return rates;
}

std::string CountOfRates(nxExchangeRateList const& rates)
{
    return std::to_string(rates.GetExchangeRateMap().size());
}

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

class Silent : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }
    void Write(nxLog const&) override
    {
    }
    void Flush() override
    {
    }
};

std::string const& FileOfRows()
{
    static std::string const path = []
    {
        static Directory const directory;
        std::ofstream((directory.Path() / "rows.csv")) << "first,\"second, which is quoted\",third\n"
                                                       << longText << ",2,3\n";
        return (directory.Path() / "rows.csv").string();
    }();
    return path;
}

struct Named
{
    char const* name;
    Operation operation;
    bool keepsMemory = false; ///< the log's store, or the system's, for later use
};

std::vector<Named> TextOperations()
{
    return {
        {"text of a double", Gives([] { return nxStringHelper::GetAsString(1.0 / 3.0) + longText; })},
        {"append a number",
         Changes([](std::string& text) { nxStringHelper::AppendAsString(text, 1ULL << 60); })},
        {"append hex", Changes([](std::string& text)
                               { nxAlgorithm::AppendAsHex(std::vector<unsigned char>(4, 7), text); })},
        {"replace",
         Changes([](std::string& text) { nxStringHelper::Replace(text, "text", "much longer text"); })},
        {"pad", Changes([](std::string& text) { nxStringHelper::PadLeft(text, 100, ' '); })},
        {"to upper case", Changes([](std::string& text) { nxStringHelper::ToUpper(text); })},
        {"trimmed", Gives([] { return nxStringHelper::GetLeftTrimmed(longText); })},
        {"double from text",
         On([] { return 0.5; },
            [](double& value) { (void)nxStringHelper::SetFromString("12345.678901", value); },
            [](double value) { return std::to_string(value); })},
        {"field of a text", Gives(
                                []
                                {
                                    std::string const fields = std::string(longText) + ",second";
                                    nxStringParser parser(fields);
                                    return parser.GetSubString(',');
                                })},
        {"quoted field", Gives(
                             []
                             {
                                 std::string const fields = "\"" + std::string(longText) + "\",second";
                                 nxStringParser parser(fields);
                                 return parser.GetSubString(',', '"');
                             })},
        {"column for a CSV file",
         Changes([](std::string& text) { nxCSVFileReader::GetAsCSVColumn("a\"b,c", text); })},
        {"stem and suffix", Gives(
                                []
                                {
                                    std::string stem;
                                    std::string suffix;
                                    nxFileHelper::RemoveFileTypeSuffix(std::string(longText) + ".txt", stem,
                                                                       suffix);
                                    return stem + suffix;
                                })},
        {"CSV row",
         On([] { return nxCSVFileRow(); },
            [](nxCSVFileRow& row) { row.SetRowData(std::string(longText) + ",2", ','); }, ColumnsOf)},
        {"CSV file", On([] { return std::make_unique<nxCSVFileReader>(',', true); },
                        [](auto& reader) { (void)reader->ReadFile(FileOfRows()); },
                        [](auto const& reader) { return std::to_string(reader->GetRowCount() / 2); })},
    };
}

std::vector<Named> ValueOperations()
{
    using nxStringValueText = std::string;
    return {
        {"decimal from text",
         OnValue<nxDecimal>([](nxDecimal& value) { value = nxDecimal("12345678.901234567", '.'); })},
        {"text of a decimal", Gives([] { return nxDecimal("12345678.901234567", '.').GetAsString('.'); })},
        {"money from text",
         OnValue<nxMoney>([](nxMoney& value) { (void)value.SetFromString("123456789.25 USD"); })},
        {"text of money",
         Gives([] { return nxMoney(nxDecimal("123456789.25", '.'), NX_USD).GetAsString(); })},
        {"ratio from text",
         OnValue<nxRatio>([](nxRatio& value) { (void)value.SetFromString("1234567:7654321"); })},
        {"string value",
         On([] { return nxStringValue(longText); },
            [](nxStringValue& value) { value = nxStringValue(std::string(longText) + longText); },
            [](nxStringValue const& value) -> nxStringValueText { return value.GetAsString(); })},
        {"set a rate", On(
                           Rates,
                           [](nxExchangeRateList& rates)
                           { rates.SetExchangeRate(nxExchangeRate(NX_EUR, NX_USD, nxDecimal("1.08", '.'))); },
                           CountOfRates)},
        {"copy rates", On([] { return nxExchangeRateList(); },
                          [](nxExchangeRateList& rates) { rates = Rates(); }, CountOfRates)},
        {"set the process's rates",
         On([] { return 0; },
            [](int) { nxExchangeRateConverter::GetInstance().SetExchangeRateList(Rates()); },
            [](int)
            {
                return nxExchangeRateConverter::GetInstance()
                    .ConvertToTargetCurrency(nxMoney(nxDecimal("100", '.'), NX_USD), NX_EUR)
                    .GetAsString();
            }),
         true},
        {"day by a format",
         Gives([] { return nxDate(2024, 3, 5).GetAsString("%A, the %d of %B in the year %Y"); })},
        {"moment by a format",
         Gives(
             []
             { return nxDateTime(2024, 3, 5, 9, 30, 0, 0).GetAsString("%A, the %d of %B in the year %Y"); })},
        {"log text of a moment",
         Gives([] { return nxDateTime(1720000000LL).GetAsString_Seconds() + longText; })},
        {"text of a stamp", Gives([] { return nxTimeStamp(1720000000, 0).GetAsString() + longText; })},
        {"word by its token",
         On([] { return nxGenericEnum(); },
            [](nxGenericEnum& value) { (void)value.SetFromString("NX_ERR_INVALID_PARAMETER"); },
            [](nxGenericEnum const& value) { return value.GetShortDescription(); })},
        {"error's text",
         Gives([] { return nxErrorEnum(NX_ERR_INVALID_PARAMETER).GetLongDescription() + longText; })},
        {"exception",
         Gives([] { return nxException(nxErrorEnum(NX_ERR_INTERNAL), longText).GetDescription(); })},
        {"text of a mask", Gives(
                               []
                               {
                                   nxServerCapabilityBitMask mask(0xffu);
                                   return mask.GetShortDescription(" ") + longText;
                               })},
    };
}

std::vector<Named> PriceOperations()
{
    return {
        {"ladder by identifier", Gives(
                                     []
                                     {
                                         return nxVariableTickTableContainer::GetVariableTickTable(
                                                    "VTT_TAIFEX_EQUITY_OPTIONS") != nullptr
                                                    ? std::string(longText)
                                                    : std::string();
                                     })},
        {"identifier of a ladder",
         Gives([] { return nxVariableTickTableContainer::GetVariableTickTableID("TAIFEX_EQUITY_OPTIONS"); })},
        {"step on a ladder",
         On([] { return nxDecimal("9.9", '.'); },
            [](nxDecimal& price)
            { nxVariableTickTableContainer::GetVariableTickTable("VTT_TAIFEX_TAIEX")->Increment(price); },
            [](nxDecimal const& price) { return price.GetAsString('.'); })},
        {"new price converter", On([] { return std::unique_ptr<nxPriceConverter>(); },
                                   [](auto& converter) {
                                       converter.reset(nxPriceConverterHelper::CreatePriceConverter(
                                           NX_PRICE_FORMAT_FRACTION_8THS_TICK));
                                   },
                                   [](auto const& converter) { return Text(converter != nullptr); })},
        {"price from text",
         On(
             []
             {
                 return std::unique_ptr<nxPriceConverter>(
                     nxPriceConverterHelper::CreatePriceConverter(NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK));
             },
             [](auto& converter) { (void)converter->SetPriceFromString("123456-165"); },
             [](auto const& converter)
             { return nxStringHelper::GetAsString(double(converter->GetPrice())); })},
        {"text of a price", Changes(
                                [](std::string& text)
                                {
                                    (void)nxPriceConverterHelper::GetPriceAsString(
                                        nxDoubleValueWrapper(123456789012.5),
                                        NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, text, true);
                                })},
        {"round a price",
         OnValue<nxDecimal>(
             [](nxDecimal& price)
             {
                 price = nxDecimal("10.26", '.');
                 nxPriceManipulator(nxDecimal("0.25", '.')).RoundToValidPrice(NX_ROUNDING_METHOD_DOWN, price);
             })},
        {"new volume converter",
         On([] { return std::unique_ptr<nxVolumeConverter>(); },
            [](auto& converter) {
                converter.reset(nxVolumeConverterHelper::CreateVolumeConverter(NX_VOLUME_FORMAT_ABBREVIATED));
            },
            [](auto const& converter) { return Text(converter != nullptr); })},
        {"text of a volume", Changes(
                                 [](std::string& text)
                                 {
                                     (void)nxVolumeConverterHelper::GetFormattedDisplayVolume(
                                         nxVolume(123456789u), NX_VOLUME_FORMAT_ABBREVIATED, text);
                                 })},
    };
}

std::vector<Named> ProcessOperations()
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    return {
        {"value of a key", Gives([&] { return arguments.GetEnvValue("PATH") + longText; })},
        {"set a key",
         On([&] { return arguments.SetEnvValue("NX_FAULTS", "old"); },
            [&](bool) { (void)arguments.SetEnvValue("NX_FAULTS", longText); },
            [&](bool) { return arguments.GetEnvValue("NX_FAULTS"); }),
         true},
        {"all keys",
         On([] { return std::map<std::string, std::string>(); }, [&](auto& keys) { arguments.GetEnvs(keys); },
            [](auto const& keys) { return std::to_string(keys.count("PATH")); })},
        {"application's name",
         On([] { return (nxApplicationData::SetApplicationName("host"), 0); },
            [](int) { nxApplicationData::SetApplicationName(longText); },
            [](int) { return nxApplicationData::GetApplicationName(); }),
         true},
        {"read the name", Gives([] { return nxApplicationData::GetApplicationName() + longText; })},
        {"host's name", Gives([] { return nxApplicationData::GetHostName() + longText; }), true},
        {"name of a log file",
         Gives(
             [] {
                 return nxFileLogDevice::GenerateFileName(".log", true, 3, nxDateTime(1720000000LL), true,
                                                          true);
             }),
         true},
        {"directory is there",
         On([] { return false; },
            [](bool& is) { is = nxFileHelper::DoesDirectoryExist("/a/directory/that/nobody/has"); }, Text)},
    };
}

std::vector<Named> ThreadOperations()
{
    return {
        {"push", On([] { return std::make_unique<nxManuallyDispatchedFunctorQueue>(); },
                    [](auto& queue)
                    {
                        auto functor = std::make_unique<Nothing>();
                        if (queue->Push(functor.get()).IsOK())
                        {
                            (void)functor.release();
                        }
                        (void)queue->DispatchAll();
                    },
                    [](auto const& queue) { return std::to_string(queue->Size()); })},
        {"run on a pool",
         On([] { return 0; },
            [](int)
            {
                nxFunctorQueue queue;
                auto pool = std::make_unique<nxFunctorThreadPool>(2);
                queue.Create(pool.release());
                (void)queue.Stop();
            },
            [](int) { return std::string(); }),
         true},
        {"thread",
         On([] { return std::make_unique<IdleThread>(); },
            [](auto& thread)
            {
                if (thread->Create().IsOK())
                {
                    (void)thread->Wait();
                }
            },
            [](auto const&) { return std::string(); }),
         true},
        {"thread's number as text", Gives([] { return nxThread::GetThreadIDAsString() + longText; })},
        {"named mutex",
         On([] { return 0; },
            [](int)
            {
                nxWindowsMutex mutex("nxfaults of allocations");
                (void)mutex.Lock();
                (void)mutex.Unlock();
            },
            [](int) { return std::string(); }),
         true},
        {"named semaphore",
         On([] { return 0; },
            [](int)
            {
                nxWindowsSemaphore semaphore("nxfaults of allocations", 1, 1);
                (void)semaphore.TimedWait(0.0);
                (void)semaphore.Post();
            },
            [](int) { return std::string(); }),
         true},
        {"condition's copy",
         On([] { return std::make_unique<nxConditionRaw>(); },
            [](auto& condition)
            {
                nxConditionRaw copy;
                copy = *condition;
            },
            [](auto const&) { return std::string(); }),
         true},
    };
}

std::vector<Named> SocketOperations()
{
    auto const anySocket = []
    {
        auto socket = std::make_unique<nxSocket>();
        (void)socket->Create(NX_SOCKET_TYPE_UDP);
        return socket;
    };
    auto const noState = [](auto const&) { return std::string(); };
    return {
        {"create a socket",
         On([] { return std::make_unique<nxSocket>(); }, [](auto& socket) { (void)socket->Create(); },
            [](auto const& socket) { return Text(socket->IsValid()); }),
         true},
        {"bind",
         On(
             anySocket, [](auto& socket) { (void)socket->Bind("127.0.0.1", 0); }, noState),
         true},
        {"send to",
         On(
             anySocket, [](auto& socket) { (void)socket->SendToDestination("x", 1, "127.0.0.1", 9); },
             noState),
         true},
        {"wait for sockets",
         On(
             anySocket,
             [](auto& socket)
             {
                 unsigned int ready = 0;
                 std::vector<bool> readable;
                 (void)nxSocket::Select({socket.get()}, 0, ready, readable);
             },
             noState),
         true},
        {"address and mask", Gives(
                                 []
                                 {
                                     std::string text;
                                     unsigned int address = 0;
                                     nxValueWrapper<unsigned int, -1, -2> mask;
                                     nxValueWrapper<unsigned int, -1, -2> network;
                                     nxValueWrapper<unsigned int, -1, -2> host;
                                     (void)nxSocket::ParseAddressAndMask("255.255.255.255/24", text, address,
                                                                         mask, network, host);
                                     return text + longText;
                                 })},
    };
}

std::vector<Named> LogOperations()
{
    auto const noState = [](int) { return std::string(); };
    auto const nothing = [] { return 0; };
    static Silent* const device = new Silent;
    return {
        {"log a line",
         On(
             nothing, [](int) { NX_LOG(NX_INF, "value " << longText << 42); }, noState),
         true},
        {"log a long line",
         On(
             nothing, [](int) { NX_LOG(NX_INF, std::string(10000, 'x')); }, noState),
         true},
        {"log values",
         On(
             nothing, [](int) { NX_LOG(NX_INF, nxDecimal("1.5", '.') << nxErrorEnum(NX_ERR_INTERNAL)); },
             noState),
         true},
        {"dump bytes",
         On(
             nothing, [](int) { (void)nxLog::LogBufferAsHex(longText, sizeof longText, 16, 4, '.', false); },
             noState),
         true},
        {"list the ladders",
         On(
             nothing, [](int) { nxVariableTickTableContainer::LogRegisteredEntries(); }, noState),
         true},
        {"register a device",
         On(
             nothing,
             [](int)
             {
                 nxLogManager::GetInstance().RegisterLogDevice(device);
                 nxLogManager::GetInstance().UnregisterLogDevice(device);
             },
             noState),
         true},
        {"reserve entries",
         On(
             nothing, [](int) { nxLogManager::GetInstance().SetRecommendedBufferCapacity(20000); }, noState),
         true},
    };
}

std::vector<Named> AllOperations()
{
    std::vector<Named> all;
    for (auto const& part : {TextOperations, ValueOperations, PriceOperations, ProcessOperations,
                             ThreadOperations, SocketOperations, LogOperations})
    {
        std::vector<Named> const some = part();
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

struct Tally
{
    unsigned long refused = 0;
    unsigned int wrong = 0;
};

void Complain(Tally& tally, char const* name, long granted, bool isForAll, std::string const& what)
{
    if (++tally.wrong <= 20)
    {
        std::printf("%s, %s allocation %ld: %s\n", name, isForAll ? "from" : "without", granted + 1,
                    what.c_str());
    }
}

/// Refuses the operation one allocation after the other, until it gets by without meeting the one that fails.
void Starve(Named const& named, bool isForAll, Tally& tally)
{
    constexpr long most = 5000;
    std::string const expected = named.operation(-1, false).after;
    (void)named.operation(-1, false);
    for (long granted = 0; granted < most; ++granted)
    {
        unsigned long const before = failures;
        long const blocks = liveBlocks;
        {
            Outcome const outcome = named.operation(granted, isForAll);
            if (outcome.after != outcome.before && outcome.after != expected)
            {
                Complain(tally, named.name, granted, isForAll, "left " + outcome.after);
            }
        }
        if (!named.keepsMemory && liveBlocks != blocks)
        {
            Complain(tally, named.name, granted, isForAll,
                     std::to_string(liveBlocks - blocks) + " blocks leaked");
        }
        if (named.operation(-1, false).after != expected)
        {
            Complain(tally, named.name, granted, isForAll, "does not work afterwards");
        }
        if (failures == before)
        {
            return;
        }
        tally.refused += failures - before;
    }
    Complain(tally, named.name, most, isForAll, "never ends");
}

/// The log's writer meets the want of memory. @return the lines that were handed over and are not in the file.
unsigned int StarveTheWriter(unsigned int rounds, std::filesystem::path const& directory)
{
    (void)LogToFile(20000);
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
    bool const isFull = argumentCount > 1 && argumentValues[1] == std::string_view("full");
    auto const start = std::chrono::steady_clock::now();
    static Directory const directory;
    (void)setenv("KVT_LOG_DIRECTORY", (directory.Path() / "log").c_str(), 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    (void)setenv("KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01", 1);
    (void)alarm(300); // a lock that stays closed ends this process
    nxApplicationData::SetApplicationName("host");

    Tally tally;
    std::vector<Named> const operations = AllOperations();
    for (Named const& named : operations)
    {
        Starve(named, false, tally);
        Starve(named, true, tally);
    }
    char text[200];
    (void)std::snprintf(text, sizeof text,
                        "F5 want of memory in %zu operations, %lu allocations refused: %u wrong",
                        operations.size(), tally.refused, tally.wrong);
    bool isKept = Report(text, start, tally.wrong == 0);

    nxApplicationData::SetApplicationName("host");
    unsigned int const rounds = isFull ? 2000 : 60;
    auto const startOfWriter = std::chrono::steady_clock::now();
    unsigned int const lost = StarveTheWriter(rounds, directory.Path());
    (void)std::snprintf(text, sizeof text,
                        "F5 want of memory in the log's writer, %u cycles: %u of %u lines lost", rounds, lost,
                        rounds * 20);
    isKept = Report(text, startOfWriter, lost == 0) && isKept;
    return isKept ? 0 : 1;
}
