#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

// What the figures share: hosts in processes of their own, directories, and the checker of logs.
//
// A figure is a promise put to the proof: a number of trials and one line that says what was seen, such as
// "F9 soak 8x100000: 0 lost, 0 disordered, 1.1 s". It is run with a few trials by the quick tests and with many before a
// release.

enum class Extent
{
    fast,
    full
};

/// Prints the line of a figure. @return what the figure returns: whether the promise held.
bool Report(std::string const& line, std::chrono::steady_clock::time_point start, bool isKept);

/// Prints why a figure can't be shown here, and ends the process with the code that counts as skipped.
[[noreturn]] void NotRun(std::string const& line);

/// A directory that goes with the object.
class Directory
{
public:
    /// @param parent  empty: the system's directory for temporary files.
    explicit Directory(std::filesystem::path const& parent = {});
    ~Directory();
    Directory(Directory const&) = delete;
    Directory& operator=(Directory const&) = delete;

    std::filesystem::path const& Path() const
    {
        return _path;
    }

private:
    std::filesystem::path _path;
};

/// A memory file system of its own, seen by this process and those that it starts from now on.
class SmallDisk
{
public:
    explicit SmallDisk(unsigned long long bytes);
    ~SmallDisk();
    SmallDisk(SmallDisk const&) = delete;
    SmallDisk& operator=(SmallDisk const&) = delete;

    /// False when this user may not mount.
    bool IsMounted() const
    {
        return _isMounted;
    }
    std::filesystem::path const& Path() const
    {
        return _directory.Path();
    }

private:
    Directory _directory;
    bool _isMounted;
};

/// Takes all the room that a directory's disk has.
void FillDisk(std::filesystem::path const& ballast);

using Environment = std::map<std::string, std::string>;

/// A host program: this program again, in another role and in a process of its own.
class Host
{
public:
    /// Logs to the directory "log" of `directory`, which is its current one, standard output and error to "out"
    /// and "err" there.
    Host(std::filesystem::path const& directory, std::vector<std::string> const& role,
         Environment const& environment = {});
    ~Host();
    Host(Host const&) = delete;
    Host& operator=(Host const&) = delete;

    void Signal(int signal) const;

    /// @return its exit code, 128 + the signal that ended it, or nothing when it hangs; it is killed then.
    std::optional<int> Wait(double seconds);

private:
    pid_t _process;
};

/// Waits for a child, as Host::Wait().
std::optional<int> WaitFor(pid_t child, double seconds);

/// What lies in log files: lines "thread T line N end", N rising from 0 by 1 in each thread, among others.
struct LogCount
{
    /// The lines of each thread, in order up to the first that is missing or out of order.
    std::map<unsigned int, unsigned int> lines;
    unsigned int disordered = 0; ///< lines that don't follow on the one before of their thread
    unsigned int torn = 0;       ///< lines that are not whole inside a file
    unsigned int tornLast = 0;   ///< files whose last line is not whole
    unsigned int files = 0;

    unsigned int Lines(unsigned int thread) const
    {
        auto const found = lines.find(thread);
        return found != lines.end() ? found->second : 0;
    }
};

/// Reads all log files below a directory in the order in which they were opened.
LogCount CountLog(std::filesystem::path const& directory);

/// Rising numbers that look random and are the same in each run with the same seed.
class Chance
{
public:
    explicit Chance(std::uint64_t seed) : _state(seed)
    {
    }
    unsigned int Below(unsigned int limit);

private:
    std::uint64_t _state;
};

/// @name For the hosts.
/// @{

/// Creates the file device and registers it. @param maximumSize  0: no limit.
bool LogToFile(unsigned long long maximumSize = 0);

/// Logs "thread n" lines, from number `first` on.
void LogLines(unsigned int thread, unsigned int lines, unsigned int first = 0);

/// Returns when what has been logged before lies in the file.
void Drain();

/// How many descriptors this process has open.
unsigned int OpenDescriptors();

/// @}
