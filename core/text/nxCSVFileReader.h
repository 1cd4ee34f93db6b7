#pragma once

#include "core/platform/nxExport.h"
#include "core/text/nxCSVFileReaderCallback.h"
#include "core/text/nxCSVFileRow.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// Reads files of delimited text.

/// Reads whole text files of delimited rows into memory and hands the rows out by index.
///
/// A row is one line of at most 8191 bytes, its line feed not counted. Text is bytes, a zero byte among them. Blanks,
/// tabs and CR around a line and around each column are dropped; so a file whose separator is the tab loses the empty
/// columns at both ends of a line. Quotes don't reach over the end of a line.
///
/// A reader belongs to one thread while it reads; afterwards any number may ask for its rows. Nothing is logged.
///
/// @code
/// nxCSVFileReader reader(';', true);
/// if (!reader.ReadFile("products.csv").IsOK())
///     return;
/// for (unsigned int i = 0; i < reader.GetRowCount(); ++i)
///     Add(reader.GetRow(i)->GetColValue(0));
/// @endcode
class NX_CORE_API nxCSVFileReader
{
public:
    /// @param useQuotes  whether columns may stand in `"`.
    /// @param callback   says which lines are comments; not null, and must outlive the reader and its copies. By
    ///                   default one that serves all readers of the process.
    explicit nxCSVFileReader(char separator = ',', bool useQuotes = false,
                             nxCSVFileReaderCallback* callback = _GetDefaultCallback());
    nxCSVFileReader(nxCSVFileReader const& other) = default;
    nxCSVFileReader& operator=(nxCSVFileReader const& other) = default;
    virtual ~nxCSVFileReader();

    /// Adds the rows of the file to those already held, comments left out.
    ///
    /// @return OK; NX_ERR_CSV_FILE_READ_ERROR when the file can't be opened or read, as a directory, and for a line
    ///         that is too long. Rows that were read before the failure are kept, and nothing after it is.
    nxErrorEnum ReadFile(std::string const& path);

    unsigned int GetRowCount() const;

    /// @return the row, valid until the next ReadFile() and while the reader lives; null if `index` is not below the
    ///         count.
    nxCSVFileRow const* GetRow(unsigned int index) const;

    /// Makes a text fit for a column of a file whose columns are parted by commas and may be quoted: a text with a
    /// comma or a quote comes in quotes. From the first quote in the text on, each byte gets a quote in front of it,
    /// not only the quotes: `ab"cd` gives `"ab"""c"d"`. Files were written so, and still are. Line ends stay.
    static void GetAsCSVColumn(std::string const& value, std::string& column);
    static std::string GetAsCSVColumn(std::string const& value);

protected:
    /// Asks the callback.
    bool IsCommentRow(std::string const& row);

private:
    static nxCSVFileReaderCallback* _GetDefaultCallback();
    void _AddLine(std::string const& line);
    void _MakeRoomForRow(std::size_t rowsBefore, double partRead);

    std::vector<nxCSVFileRow> _rows;
    char _separator;
    bool _useQuotes;
    nxCSVFileReaderCallback* _callback; // not owned
};
