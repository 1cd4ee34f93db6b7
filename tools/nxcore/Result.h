#pragma once

#include "Command.h"

#include <nlohmann/json.hpp>

#include <concepts>
#include <deque>
#include <iosfwd>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// @file
/// What a command has to say, in a form that is printed as text for people or as one JSON document.

namespace nxTool
{
using Json = nlohmann::ordered_json;

/// A text for people and a value for programs.
struct Cell
{
    std::string text;
    Json value;

    Cell() = default;
    Cell(std::string shown) : text(std::move(shown)), value(text)
    {
    }
    Cell(std::string_view shown) : Cell(std::string(shown))
    {
    }
    Cell(char const* shown) : Cell(std::string(shown))
    {
    }
    /// A truth: "yes" or "no".
    Cell(bool truth) : text(truth ? "yes" : "no"), value(truth)
    {
    }
    template <std::integral Number>
    Cell(Number number) : text(std::to_string(number)), value(number)
    {
    }
    /// @param value  what a program gets, where it is more than the text
    Cell(std::string shown, Json content) : text(std::move(shown)), value(std::move(content))
    {
    }
};

enum class Align
{
    Left,
    Right
};

struct Column
{
    std::string key;   ///< of the JSON objects; lower camel case
    std::string title; ///< of the text
    Align align = Align::Left;
};

/// Rows under columns; a list of objects in JSON.
class Table
{
public:
    explicit Table(std::vector<Column> columns) : _columns(std::move(columns))
    {
    }

    /// @param cells  one for each column; missing ones are empty
    void Add(std::vector<Cell> cells);

    std::size_t GetRowCount() const
    {
        return _rows.size();
    }

    void Print(std::ostream& out, bool colour) const;
    Json GetJson() const;

private:
    std::vector<Column> _columns;
    std::vector<std::vector<Cell>> _rows;
};

/// A titled value: "title  text" and `"key": value`.
struct Field
{
    std::string key; ///< lower camel case
    std::string title;
    Cell cell;
};

/// Things that are described by fields of their own each; a list of objects in JSON, blocks of lines as text, where
/// fields without text are left out.
class Records
{
public:
    void Add(std::vector<Field> fields);

    void Print(std::ostream& out, bool colour) const;
    Json GetJson() const;

private:
    std::vector<std::vector<Field>> _records;
};

/// Something that was wrong with the input: where, and why.
struct Problem
{
    std::string file;
    long long line = 0; ///< from 1; 0 when it does not apply
    std::string column; ///< the column's or argument's name; may be empty
    std::string reason;
};

/// Collects fields, tables, records and lines in their order. Problems go to standard error (and into the JSON document); all
/// else to standard output when the command has ended.
class Result
{
public:
    /// A titled value: "Title: text" and `"key": value`.
    void AddField(std::string key, std::string title, Cell cell);

    /// A table that the caller goes on filling; valid as long as the result.
    Table& AddTable(std::string key, std::vector<Column> columns);

    /// Records that the caller goes on filling; valid as long as the result.
    Records& AddRecords(std::string key);

    /// A line for people only.
    void AddLine(std::string line);

    /// A value for programs only.
    void AddValue(std::string key, Json value);

    /// A text of whole lines, for people as it stands and for programs under a key.
    void AddText(std::string key, std::string text);

    void AddProblem(Problem problem);

    /// @param argument  the argument or switch that is at fault; empty for the command as a whole
    void AddProblem(std::string argument, std::string reason);

    /// The same for what ends the command.
    /// @return Status::Unusable
    Status Refuse(std::string argument, std::string reason);

    std::vector<Problem> const& GetProblems() const
    {
        return _problems;
    }

    void PrintText(std::ostream& out, bool colour) const;
    void PrintProblems(std::ostream& out, bool colour) const;
    void PrintJson(std::ostream& out) const;

private:
    struct Line
    {
        std::string text;
    };
    struct Value
    {
        std::string key;
        Json value;
    };
    struct KeyedTable
    {
        std::string key;
        Table table;
    };
    struct KeyedRecords
    {
        std::string key;
        Records records;
    };
    using Part = std::variant<Field, Line, Value, KeyedTable, KeyedRecords>;

    std::deque<Part> _parts; // a deque, so that tables stay where they are
    std::vector<Problem> _problems;
};

/// The number of columns that a UTF-8 text takes on a terminal, a column for each character.
std::size_t DisplayWidth(std::string_view text);

/// The text with control characters as \xNN: what a file holds can't play with the reader's terminal.
std::string Printable(std::string_view text);
} // namespace nxTool
