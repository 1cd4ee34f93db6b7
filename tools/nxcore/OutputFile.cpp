#include "OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace nxTool
{
namespace
{
std::string Reason(std::string const& path, int number)
{
    return path + ": " + std::generic_category().message(number);
}
} // namespace

std::string WriteFile(std::string const& path, std::string_view content)
{
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return Reason(path, errno);
    bool const isWritten = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    int number = isWritten ? 0 : errno;
    if (std::fclose(file) != 0 && number == 0)
        number = errno;
    return number == 0 ? "" : Reason(path, number);
}
} // namespace nxTool
