#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// A file or directory of a test's own, gone with the object.
class nxTestFile
{
public:
    explicit nxTestFile(std::string const& content) : nxTestFile()
    {
        Write(content);
    }

    /// Names the file only.
    nxTestFile() = default;

    ~nxTestFile()
    {
        std::filesystem::remove_all(_directory);
    }

    nxTestFile(nxTestFile const&) = delete;
    nxTestFile& operator=(nxTestFile const&) = delete;

    void Write(std::string const& content) const
    {
        std::ofstream(_path, std::ios::binary) << content;
    }

    std::string const& Path() const
    {
        return _path;
    }

    std::string const& Directory() const
    {
        return _directory;
    }

private:
    std::string const _directory = ::mkdtemp(std::string("/tmp/nxtest.XXXXXX").data());
    std::string const _path = _directory + "/file";
};
