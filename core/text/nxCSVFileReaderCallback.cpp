#include "core/text/nxCSVFileReaderCallback.h"

bool nxCSVFileReaderCallback::IsCommentRow(std::string const& row)
{
    return row.empty() || row.front() == ';' || row.front() == '#';
}
