#include "Outline.h"

namespace nxTool
{
namespace
{
enum class LineKind
{
    Heading,
    Begin,
    Row,
    End
};

struct Line
{
    LineKind kind;
    std::string_view text;
    unsigned int number;
};

constexpr Line lines[] = {
#define NX_HEADING(title) {LineKind::Heading, title, 0},
#define NX_ENUM_BEGIN(Class) {LineKind::Begin, #Class, 0},
#define NX_ROW(number, token, text) {LineKind::Row, {}, number},
#define NX_WORD(number, token, text) {LineKind::Row, {}, number},
#define NX_TEXT(number, enumerator, token, text) {LineKind::Row, {}, number},
#define NX_ENUM_END(Class) {LineKind::End, {}, 0},
#include "core/vocabulary/tables/enumerations.def"
};

std::vector<ClassOutline> ReadOutline()
{
    std::vector<ClassOutline> outline;
    std::string_view heading;
    bool isInClass = false;
    for (Line const& line : lines)
    {
        switch (line.kind)
        {
        case LineKind::Heading:
            if (isInClass)
                outline.back().groups.push_back({line.text, {}});
            else
                heading = line.text;
            break;
        case LineKind::Begin:
            outline.push_back({heading, line.text, {}});
            isInClass = true;
            break;
        case LineKind::Row:
            if (outline.back().groups.empty())
                outline.back().groups.emplace_back();
            outline.back().groups.back().numbers.push_back(line.number);
            break;
        case LineKind::End: isInClass = false; break;
        }
    }
    return outline;
}
} // namespace

std::vector<ClassOutline> const& EnumerationOutline()
{
    static std::vector<ClassOutline> const outline = ReadOutline();
    return outline;
}
} // namespace nxTool
