// A log device of one's own: the last lines stay in memory, for a screen or for the report of a fault.
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxConsoleLogDevice.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"

#include <cstdio>
#include <deque>
#include <new>
#include <string>

namespace
{
/// Keeps so many lines. The log calls it on its writer thread; any thread may ask for the lines. For want of memory a line
/// is lost.
class RingLogDevice : public nxLogDevice
{
public:
    explicit RingLogDevice(std::size_t capacity) : _capacity(capacity)
    {
    }

    nxErrorEnum Destroy() override
    {
        return nxErrorEnum(); // the lines stay readable when the log has ended
    }

    void Write(nxLog const& log) override
    {
        try
        {
            // Null when the statement had been ended before.
            std::string const* const text = log.GetLogEntry();
            nxMutexGuard guard(_mutex);
            _lines.push_back(log.GetLogLevel().GetAsString() + ": " + (text == nullptr ? "" : *text));
            if (_lines.size() > _capacity)
                _lines.pop_front();
        }
        catch (std::bad_alloc const&)
        {
        }
    }

    void Flush() override
    {
    }

    std::deque<std::string> GetLines() const
    {
        nxMutexGuard guard(_mutex);
        return _lines;
    }

private:
    std::size_t const _capacity;
    mutable nxMutex _mutex;
    std::deque<std::string> _lines;
};
} // namespace

int main()
{
    RingLogDevice ring(3);
    nxLogManager& log = nxLogManager::GetInstance();
    log.UnregisterLogDevice(&nxConsoleLogDevice::GetInstance());
    log.RegisterLogDevice(&ring);

    for (int order = 1; order <= 5; ++order)
        NX_LOG(NX_INF, "Order " << order << " sent");
    NX_LOG(NX_WRN, "Nobody has answered");

    (void)log.Destroy(); // writes what is queued, and lets go of the ring
    for (std::string const& line : ring.GetLines())
        std::printf("%s\n", line.c_str());
}
