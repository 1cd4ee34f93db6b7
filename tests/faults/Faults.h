#pragma once

#include "core/concurrency/nxNonCopyable.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>

#include <sys/types.h>

// What the figures share: hosts in processes of their own, directories, and the checker of logs.
//
// A figure is a promise put to the proof: a number of trials and one line that says what was seen, such as
// "F9 soak 8x100000: 0 lost, 0 disordered, 1.1 s". It is run with a few trials by the quick tests and with many before a
// release.

namespace files = std::filesystem;
using Clock = std::chrono::steady_clock;
using Environment = std::map<std::string, std::string>;

/// The name of what prints a figure's lines and returns whether its promise held. Adds itself to All().
struct Figure
{
    using Show = bool (*)();

    Figure(char const* name, Show show);
    static std::map<std::string, Show>& All();
};

/// How many trials: `isFull` tells whether it is before a release. A sanitizer, which slows all down, gets by with the
/// quick ones then, and with a tenth of them otherwise.
unsigned int Trials(unsigned int quick, unsigned int full);
extern bool isFull;

double SecondsSince(Clock::time_point start);

/// Prints the line of a figure and its seconds. @return what the figure returns: whether the promise held.
[[gnu::format(printf, 3, 4)]] bool Report(Clock::time_point start, bool isKept, char const* format, ...);

/// Prints why a figure can't be shown here, and ends the process with the code that counts as skipped.
[[noreturn]] void NotRun(std::string const& line);

/// A directory that goes with the object.
struct Directory : nxNonCopyable
{
    explicit Directory(files::path const& parent = files::temp_directory_path());
    ~Directory();

    files::path path;
};

/// A memory file system of its own, seen by this process and those that it starts from now on.
struct SmallDisk : Directory
{
    explicit SmallDisk(unsigned long long bytes);
    ~SmallDisk();

    bool isMounted; ///< false when this user may not mount
};

/// Takes all the room that a directory's disk has.
void FillDisk(files::path const& ballast);

/// Waits for a child. @return its exit code, 128 + the signal that ended it, or nothing when it hangs; it is killed then.
std::optional<int> WaitFor(pid_t child, double seconds);

/// Cycles of the log that take a tenth of the usual time.
extern Environment const shortCycles;

/// Has this process log to the directory "log" of `directory`, and not to the console.
void SetUpLog(files::path const& directory, Environment const& environment = {});

/// Starts a child that ends by `exit` with what its body returns. Its log is set up for `directory`, which is its current
/// one and gets standard output and error as "out" and "err".
pid_t StartHost(files::path const& directory, std::function<int()> const& body,
                Environment const& environment = {});

/// Starts a host and waits for it.
std::optional<int> RunHost(files::path const& directory, std::function<int()> const& body, double seconds,
                           Environment const& environment = {});

/// What lies in log files: lines "thread T line N end", N rising from 0 by 1 in each thread, among others.
struct LogCount
{
    std::map<unsigned int, unsigned int> lines; ///< of each thread, up to the first that is missing
    unsigned int disordered = 0;                ///< lines that don't follow on one before of their thread
    unsigned int torn = 0;                      ///< lines that are not whole inside a file
    unsigned int tornLast = 0;                  ///< files whose last line is not whole
    unsigned int files = 0;

    unsigned int Lost(unsigned int threads, unsigned int linesOfEach);
    unsigned int Faults() const
    {
        return disordered + torn + tornLast;
    }
};

/// Reads all log files below a directory.
LogCount CountLog(files::path const& directory);

/// Numbers that look random and are the same in each run.
struct Chance : std::mt19937_64
{
    using std::mt19937_64::mt19937_64;

    unsigned int Below(unsigned int limit)
    {
        return static_cast<unsigned int>((*this)() % limit);
    }
};

// For the hosts.

/// Creates the file device and registers it. @param maximumSize  0: no limit.
void LogToFile(unsigned long long maximumSize = 0);

/// Logs "thread n" lines, from number `first` on.
void LogLines(unsigned int thread, unsigned int lines, unsigned int first = 0);

/// Returns when what has been logged before lies in the file.
void Drain();

/// How many descriptors this process has open.
unsigned int OpenDescriptors();

/// Moves the clock of this program alone.
void ShiftClock(long long seconds);
