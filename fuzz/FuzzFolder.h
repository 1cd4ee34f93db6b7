#pragma once

#include <filesystem>
#include <stdlib.h>
#include <unistd.h>

/// @file
/// A place for the files of a target.

/// A folder of the process's own, which is removed when the process ends in order.
inline std::filesystem::path const& FuzzFolder()
{
    struct Folder
    {
        Folder()
        {
            std::string name = (std::filesystem::temp_directory_path() / "fuzz-XXXXXX").string();
            path = mkdtemp(name.data());
            owner = getpid();
        }
        ~Folder()
        {
            std::error_code ignored;
            if (getpid() == owner)
                std::filesystem::remove_all(path, ignored);
        }
        std::filesystem::path path;
        pid_t owner;
    };
    static Folder const folder;
    return folder.path;
}
