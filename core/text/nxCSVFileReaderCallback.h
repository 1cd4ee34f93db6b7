#pragma once

#include "core/platform/nxExport.h"

#include <string>

/// @file
/// What an nxCSVFileReader asks its host about a row.

/// Says which rows of a file are comments. Derive from it to say something else.
///
/// Whoever makes one deletes it as what it is: the destructor is not virtual, and a reader never deletes one.
class NX_CORE_API nxCSVFileReaderCallback
{
public:
    nxCSVFileReaderCallback() = default;
    nxCSVFileReaderCallback(nxCSVFileReaderCallback const& other) = default;
    nxCSVFileReaderCallback(nxCSVFileReaderCallback&& other) noexcept = default;
    nxCSVFileReaderCallback& operator=(nxCSVFileReaderCallback const& other) = default;
    nxCSVFileReaderCallback& operator=(nxCSVFileReaderCallback&& other) noexcept = default;

    /// @param row  the whole row, trimmed on both sides.
    /// @return true to leave the row out: here for one that is empty or begins with `;` or `#`.
    virtual bool IsCommentRow(std::string const& row);
};
