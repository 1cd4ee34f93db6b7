// `nxcore reference`: the vocabulary as a page for a browser.

#include "Arguments.h"
#include "Commands.h"
#include "OutputFile.h"
#include "ReferencePage.h"
#include "Result.h"

#include <filesystem>

namespace nxTool
{
namespace
{
constexpr char fileName[] = "index.html";

Status Run(Arguments const& arguments, Result& result)
{
    std::filesystem::path const directory = arguments.Get(0);
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error)
        return result.Refuse("DIRECTORY", directory.string() + ": " + error.message());

    ReferencePage const page = MakeReferencePage();
    std::string const path = (directory / fileName).string();
    std::string const reason = WriteFile(path, page.html);
    if (!reason.empty())
        return result.Refuse("DIRECTORY", reason);

    result.AddField("file", "File", path);
    result.AddField("bytes", "Bytes", page.html.size());
    for (auto const& [section, count] : page.counts)
        result.AddField(section, section, count);
    return Status::Good;
}
} // namespace

Command const referenceCommand = {
    .name = "reference",
    .arguments = "DIRECTORY",
    .summary = "write the whole vocabulary as one page for a browser",
    .details =
        "Writes index.html into DIRECTORY, which is made if need be: errors, functions with their rights,\n"
        "enumerations, bit masks, configuration keys, tick ladders with their staircases, and price formats\n"
        "with examples. The page needs no network and nothing beside it; a field searches all of it by\n"
        "number, token or text, and each entry has an address, such as index.html#1005064.",
    .example = "nxcore reference reference",
    .fewestArguments = 1,
    .mostArguments = 1,
    .completes = Completes::Directory,
    .run = Run,
};
} // namespace nxTool
