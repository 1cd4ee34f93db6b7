// F11: that a host may unload the part of it that uses the library, and go on or end. This program is not linked with the
// library, which comes and would go with a plugin: nxcore_faults_unload PLUGIN [full].

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// @return the exit code: 0 when the plugin worked each time.
int LoadAndUnload(char const* path, unsigned int microseconds)
{
    (void)alarm(10); // a host that hangs ends by a signal
    for (int round = 0; round < 2; ++round)
    {
        void* const plugin = dlopen(path, RTLD_NOW);
        auto const log = plugin ? reinterpret_cast<void (*)()>(dlsym(plugin, "LogFromPlugin")) : nullptr;
        if (log == nullptr)
            return 1;
        log();
        if (dlclose(plugin) != 0 || dlopen(path, RTLD_NOW | RTLD_NOLOAD) != nullptr)
            return 1; // it is still there
        (void)usleep(microseconds); // the writer's cycle is 10 ms
    }
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    unsigned int const hosts = argumentCount > 2 ? 1000 : 20;
    auto const start = std::chrono::steady_clock::now();
    char directory[] = "/tmp/nxfaultsXXXXXX";
    (void)setenv("KVT_LOG_DIRECTORY", mkdtemp(directory), 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    (void)setenv("KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01", 1);
    unsigned int failures = 0;
    for (unsigned int i = 0; i < hosts; ++i)
    {
        if (fork() == 0)
            std::exit(LoadAndUnload(arguments[1], i % 20 * 1000));
        int status = 0;
        (void)wait(&status);
        failures += status != 0;
    }
    std::filesystem::remove_all(directory);
    std::chrono::duration<double> const time = std::chrono::steady_clock::now() - start;
    std::printf("F11 plugin unloaded beside a running writer, %u hosts: %u crashes or hangs, %.1f s%s\n",
                hosts, failures, time.count(), failures == 0 ? "" : " FAILED");
    return failures == 0 ? 0 : 1;
}
