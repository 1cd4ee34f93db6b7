#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

/// A file or directory of a test's own, gone with the object.
class nxTestFile
{
public:
    explicit nxTestFile(std::string const& content) : nxTestFile()
    {
        Write(content);
    }

    /// Names the file only.
    nxTestFile()
    {
        char directory[] = "/tmp/nxtest.XXXXXX";
        _directory = ::mkdtemp(directory) == nullptr ? std::string() : directory;
        _path = _directory + "/file";
    }

    ~nxTestFile()
    {
        (void)std::remove(_path.c_str());
        (void)std::remove(_directory.c_str());
    }

    nxTestFile(nxTestFile const&) = delete;
    nxTestFile& operator=(nxTestFile const&) = delete;

    void Write(std::string const& content) const
    {
        std::FILE* const file = std::fopen(_path.c_str(), "wb");
        (void)std::fwrite(content.data(), 1, content.size(), file);
        (void)std::fclose(file);
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
    std::string _directory;
    std::string _path;
};
