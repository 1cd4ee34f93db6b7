#include "Result.h"

#include <algorithm>
#include <ostream>

namespace nxTool
{
namespace
{
constexpr std::string_view bold = "\x1b[1m";
constexpr std::string_view red = "\x1b[31m";
constexpr std::string_view plain = "\x1b[0m";
constexpr std::size_t gapBetweenColumns = 2;

std::string Styled(std::string_view text, std::string_view style, bool colour)
{
    if (!colour)
        return std::string(text);
    return std::string(style).append(text).append(plain);
}

std::string Padded(std::string_view text, std::size_t width, Align align)
{
    std::string const blanks(width - std::min(width, DisplayWidth(text)), ' ');
    return align == Align::Left ? std::string(text) + blanks : blanks + std::string(text);
}

void PrintField(std::ostream& out, Field const& field, std::size_t titleWidth, bool colour)
{
    out << Styled(Padded(field.title, titleWidth, Align::Left), bold, colour) << "  " << field.cell.text
        << '\n';
}

std::string Location(Problem const& problem)
{
    std::string location = problem.file;
    if (problem.line > 0)
        location += ':' + std::to_string(problem.line);
    if (!problem.column.empty())
        location += (location.empty() ? "" : ": ") + problem.column;
    return location;
}
} // namespace

std::string Printable(std::string_view text)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    for (char const character : text)
    {
        auto const byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte != 0x7f)
            result += character;
        else
            result.append("\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
    }
    return result;
}

std::size_t DisplayWidth(std::string_view text)
{
    // Bytes 10xxxxxx continue a character.
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0) != 0x80; }));
}

void Table::Add(std::vector<Cell> cells)
{
    cells.resize(_columns.size());
    for (Cell& cell : cells)
        cell.text = Printable(cell.text);
    _rows.push_back(std::move(cells));
}

void Table::Print(std::ostream& out, bool colour) const
{
    std::vector<std::size_t> widths;
    for (std::size_t column = 0; column < _columns.size(); ++column)
    {
        std::size_t width = DisplayWidth(_columns[column].title);
        for (auto const& row : _rows)
            width = std::max(width, DisplayWidth(row[column].text));
        widths.push_back(width);
    }
    auto const printRow = [&](auto const& textOf, std::string_view style)
    {
        std::string line;
        for (std::size_t column = 0; column < _columns.size(); ++column)
        {
            if (column > 0)
                line.append(gapBetweenColumns, ' ');
            line += Padded(textOf(column), widths[column], _columns[column].align);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << (style.empty() ? line : Styled(line, style, colour)) << '\n';
    };
    printRow([this](std::size_t column) -> std::string_view { return _columns[column].title; }, bold);
    for (auto const& row : _rows)
        printRow([&row](std::size_t column) -> std::string_view { return row[column].text; }, "");
}

Json Table::GetJson() const
{
    Json list = Json::array();
    for (auto const& row : _rows)
    {
        Json object = Json::object();
        for (std::size_t column = 0; column < _columns.size(); ++column)
            object[_columns[column].key] = row[column].value;
        list.push_back(std::move(object));
    }
    return list;
}

void Records::Add(std::vector<Field> fields)
{
    for (Field& field : fields)
        field.cell.text = Printable(field.cell.text);
    _records.push_back(std::move(fields));
}

void Records::Print(std::ostream& out, bool colour) const
{
    bool first = true;
    for (auto const& record : _records)
    {
        if (!first)
            out << '\n';
        first = false;
        std::size_t width = 0;
        for (Field const& field : record)
            width = std::max(width, DisplayWidth(field.title));
        for (Field const& field : record)
            if (!field.cell.text.empty())
                PrintField(out, field, width, colour);
    }
}

Json Records::GetJson() const
{
    Json list = Json::array();
    for (auto const& record : _records)
    {
        Json object = Json::object();
        for (Field const& field : record)
            object[field.key] = field.cell.value;
        list.push_back(std::move(object));
    }
    return list;
}

void Result::AddField(std::string key, std::string title, Cell cell)
{
    cell.text = Printable(cell.text);
    _parts.emplace_back(Field{std::move(key), std::move(title), std::move(cell)});
}

Table& Result::AddTable(std::string key, std::vector<Column> columns)
{
    _parts.emplace_back(KeyedTable{std::move(key), Table(std::move(columns))});
    return std::get<KeyedTable>(_parts.back()).table;
}

Records& Result::AddRecords(std::string key)
{
    _parts.emplace_back(KeyedRecords{std::move(key), Records()});
    return std::get<KeyedRecords>(_parts.back()).records;
}

void Result::AddLine(std::string line)
{
    _parts.emplace_back(Line{std::move(line)});
}

void Result::AddValue(std::string key, Json value)
{
    _parts.emplace_back(Value{std::move(key), std::move(value)});
}

void Result::AddText(std::string key, std::string text)
{
    AddLine(text.substr(0, text.rfind('\n'))); // a line ends itself
    AddValue(std::move(key), std::move(text));
}

void Result::AddProblem(Problem problem)
{
    _problems.push_back(std::move(problem));
}

void Result::AddProblem(std::string argument, std::string reason)
{
    AddProblem({.file = {}, .line = 0, .column = std::move(argument), .reason = std::move(reason)});
}

Status Result::Refuse(std::string argument, std::string reason)
{
    AddProblem(std::move(argument), std::move(reason));
    return Status::Unusable;
}

void Result::PrintText(std::ostream& out, bool colour) const
{
    std::size_t titleWidth = 0;
    for (Part const& part : _parts)
        if (auto const* field = std::get_if<Field>(&part))
            titleWidth = std::max(titleWidth, DisplayWidth(field->title));
    for (Part const& part : _parts)
        if (auto const* field = std::get_if<Field>(&part))
            PrintField(out, *field, titleWidth, colour);
        else if (auto const* line = std::get_if<Line>(&part))
            out << line->text << '\n';
        else if (auto const* table = std::get_if<KeyedTable>(&part))
            table->table.Print(out, colour);
        else if (auto const* records = std::get_if<KeyedRecords>(&part))
            records->records.Print(out, colour);
}

void Result::PrintProblems(std::ostream& out, bool colour) const
{
    for (Problem const& problem : _problems)
    {
        std::string const location = Printable(Location(problem));
        if (!location.empty())
            out << Styled(location, bold, colour) << ": ";
        out << Styled(Printable(problem.reason), red, colour) << '\n';
    }
}

void Result::PrintJson(std::ostream& out) const
{
    Json document = Json::object();
    for (Part const& part : _parts)
        if (auto const* field = std::get_if<Field>(&part))
            document[field->key] = field->cell.value;
        else if (auto const* value = std::get_if<Value>(&part))
            document[value->key] = value->value;
        else if (auto const* table = std::get_if<KeyedTable>(&part))
            document[table->key] = table->table.GetJson();
        else if (auto const* records = std::get_if<KeyedRecords>(&part))
            document[records->key] = records->records.GetJson();
    Json problems = Json::array();
    for (Problem const& problem : _problems)
    {
        Json entry = Json::object();
        if (!problem.file.empty())
            entry["file"] = problem.file;
        if (problem.line > 0)
            entry["line"] = problem.line;
        if (!problem.column.empty())
            entry["column"] = problem.column;
        entry["reason"] = problem.reason;
        problems.push_back(std::move(entry));
    }
    document["problems"] = std::move(problems);
    // Bytes that are no UTF-8 become U+FFFD: the document stays one that every reader takes.
    out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}
} // namespace nxTool
