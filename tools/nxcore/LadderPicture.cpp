#include "LadderPicture.h"

#include "Markup.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

namespace nxTool
{
namespace
{
/// Lengths in units of the picture.
struct Layout
{
    double width;
    double height;
    double left; // margins of the plot
    double right;
    double top;
    double bottom;
    double letter; // the height of a letter
    double dot;    // radius
};
constexpr Layout fileLayout = {900, 540, 84, 36, 78, 64, 13, 3.5};
constexpr Layout inlineLayout = {360, 216, 48, 12, 12, 24, 10, 2.2};

constexpr double letterWidth =
    0.58; // of its height, for the digits of a usual font; digits are as wide as each other
constexpr double labelDistance = 2; // letter heights between the labels of an axis

/// A range of the ladder as numbers, with the texts of its labels.
struct Step
{
    double top; // infinite for the last one
    double tick;
    std::string topText;
    std::string tickText;
};

std::vector<Step> StepsOf(nxVariableTickTable const& ladder)
{
    std::vector<Step> steps;
    for (auto const& [top, tick] : ladder.GetRangeData())
    {
        bool const isBounded = top.GetValue() != std::numeric_limits<long long>::max();
        steps.push_back({isBounded ? top.GetAsDouble() : std::numeric_limits<double>::infinity(),
                         tick.GetAsDouble(), isBounded ? top.GetAsString() : "", tick.GetAsString()});
    }
    return steps;
}

/// A logarithmic axis between two numbers, laid between two places.
class Axis
{
public:
    Axis(double low, double high, double from, double to)
        : _low(std::log10(low)), _high(std::log10(high)), _from(from), _to(to)
    {
    }

    double At(double number) const
    {
        return _from + (std::log10(number) - _low) / (_high - _low) * (_to - _from);
    }

    int FirstDecade() const
    {
        return static_cast<int>(std::ceil(_low));
    }
    int LastDecade() const
    {
        return static_cast<int>(std::floor(_high));
    }

    /// Only each so manyth decade has room for a label.
    int DecadesBetweenLabels(double room) const
    {
        double const decade = std::abs(_to - _from) / (_high - _low);
        return std::max(1, static_cast<int>(std::ceil(room / decade)));
    }

private:
    double _low;
    double _high;
    double _from;
    double _to;
};

/// A decade below the first edge and one above the last; a ladder with one range has no edge to go by.
Axis PriceAxis(std::vector<Step> const& steps, Layout const& layout)
{
    constexpr double decade = 10;
    double const first = steps.size() > 1 ? steps.front().top : steps.front().tick * decade * decade;
    double const last = steps.size() > 1 ? steps[steps.size() - 2].top : first * decade;
    return {first / decade, last * decade, layout.left, layout.width - layout.right};
}

Axis TickAxis(std::vector<Step> const& steps, Layout const& layout)
{
    constexpr double margin = 2;
    constexpr double least = 20; // so that a decade lies inside
    double low = steps.front().tick;
    double high = low;
    for (Step const& step : steps)
    {
        low = std::min(low, step.tick);
        high = std::max(high, step.tick);
    }
    double const widening = std::max(margin, std::sqrt(least * low / high));
    return {low / widening, high * widening, layout.height - layout.bottom, layout.top};
}

/// A coordinate, to a tenth.
std::string Place(double value)
{
    char buffer[32];
    auto const [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 1);
    std::string text(buffer, error == std::errc() ? end : buffer);
    return text.ends_with(".0") ? text.substr(0, text.size() - 2) : text;
}

/// 1000, 0.001.
std::string DecadeText(int exponent)
{
    if (exponent >= 0)
        return "1" + std::string(static_cast<std::size_t>(exponent), '0');
    return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + "1";
}

enum class Anchor
{
    Start,
    Middle,
    End
};

class Picture
{
public:
    Picture(std::string_view name, nxVariableTickTable const& ladder, PictureUse use)
        : _name(name), _use(use), _layout(use == PictureUse::File ? fileLayout : inlineLayout),
          _steps(StepsOf(ladder)), _price(PriceAxis(_steps, _layout)), _tick(TickAxis(_steps, _layout))
    {
    }

    std::string Draw()
    {
        _Begin();
        _DrawGrid();
        _DrawStairs();
        _LabelStairs();
        return _svg + "</svg>";
    }

private:
    bool _IsFile() const
    {
        return _use == PictureUse::File;
    }

    double _Left() const
    {
        return _layout.left;
    }
    double _Right() const
    {
        return _layout.width - _layout.right;
    }
    double _Top() const
    {
        return _layout.top;
    }
    double _Bottom() const
    {
        return _layout.height - _layout.bottom;
    }

    std::string _Summary() const
    {
        std::string text = "The tick is " + _steps.front().tickText;
        for (std::size_t index = 1; index < _steps.size(); ++index)
            text += (index == 1 ? " up to " : ", up to ") + _steps[index - 1].topText + "; then " +
                    _steps[index].tickText;
        return text + ".";
    }

    void _Begin()
    {
        std::string const box = "viewBox=\"0 0 " + Place(_layout.width) + " " + Place(_layout.height) + "\"";
        if (!_IsFile())
        {
            _svg = "<svg " + box + " role=\"img\" aria-label=\"Staircase of " + Escaped(_name) + "\">";
            return;
        }
        _svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" " + box + " width=\"" + Place(_layout.width) +
               "\" height=\"" + Place(_layout.height) +
               "\" role=\"img\" aria-labelledby=\"title summary\">\n<title id=\"title\">Tick ladder " +
               Escaped(_name) + "</title>\n<desc id=\"summary\">" + Escaped(_Summary()) + "</desc>\n" +
               _Style() + "<rect class=\"paper\" width=\"100%\" height=\"100%\"/>\n";
        _Text("title", Escaped(_name), _Left(), 38, Anchor::Start);
        _Text("axis", _RangeCount(), _Left(), 60, Anchor::Start);
        _Text("axis", "price", (_Left() + _Right()) / 2, _layout.height - 14, Anchor::Middle);
        _svg += "<text class=\"axis\" text-anchor=\"middle\" transform=\"translate(22 " +
                Place((_Top() + _Bottom()) / 2) + ") rotate(-90)\">tick</text>\n";
    }

    std::string _RangeCount() const
    {
        if (_steps.size() == 1)
            return "one range, the tick is " + _steps.front().tickText;
        return std::to_string(_steps.size()) + " ranges; each dot is the last price of its tick";
    }

    static std::string _Style()
    {
        return "<style>\n"
               "text { font: 13px system-ui, sans-serif; font-variant-numeric: tabular-nums; fill: #1d2733 "
               "}\n"
               ".paper { fill: #fff } .grid { stroke: #d5dbe3 } .fine { stroke: #eef1f4 }\n"
               ".grid, .fine, .stair { fill: none }\n"
               ".stair { stroke: #0a63c9; stroke-width: 2.5; stroke-linejoin: round } .end { fill: #0a63c9 "
               "}\n"
               "text.title { font-size: 22px; font-weight: 600 } text.axis { fill: #5a6675 }\n"
               "text.tick { fill: #0a63c9 }\n"
               "@media (prefers-color-scheme: dark) {\n"
               "text { fill: #e4e9ef } .paper { fill: #12171d } .grid { stroke: #303a46 } .fine { stroke: "
               "#1c232b }\n"
               ".stair { stroke: #6cb2ff } .end, text.tick { fill: #6cb2ff } text.axis { fill: #98a4b3 }\n"
               "}\n</style>\n";
    }

    /// @param text  escaped
    void _Text(char const* name, std::string const& text, double x, double y, Anchor anchor)
    {
        _svg.append("<text class=\"").append(name).append("\" x=\"").append(Place(x));
        _svg.append("\" y=\"").append(Place(y)).append("\"");
        if (anchor != Anchor::Start)
            _svg.append(" text-anchor=\"").append(anchor == Anchor::End ? "end" : "middle").append("\"");
        _svg.append(">").append(text).append("</text>");
        _svg += _IsFile() ? "\n" : "";
    }

    std::string _VerticalAt(double number) const
    {
        return "M" + Place(_price.At(number)) + " " + Place(_Top()) + "V" + Place(_Bottom());
    }
    std::string _HorizontalAt(double number) const
    {
        return "M" + Place(_Left()) + " " + Place(_tick.At(number)) + "H" + Place(_Right());
    }

    void _Path(char const* name, std::string const& path)
    {
        _svg.append("<path class=\"").append(name).append("\" d=\"").append(path).append("\"/>");
        _svg += _IsFile() ? "\n" : "";
    }

    /// The lines of 2 to 9 times each decade.
    void _DrawFineGrid()
    {
        std::string path;
        auto const add = [&](Axis const& axis, double from, double to, auto const& line)
        {
            for (int exponent = axis.FirstDecade() - 1; exponent <= axis.LastDecade(); ++exponent)
                for (int multiple = 2; multiple <= 9; ++multiple)
                {
                    double const number = multiple * std::pow(10.0, exponent);
                    double const place = axis.At(number);
                    if (place > std::min(from, to) && place < std::max(from, to))
                        path += line(number);
                }
        };
        add(_price, _Left(), _Right(), [this](double number) { return _VerticalAt(number); });
        add(_tick, _Top(), _Bottom(), [this](double number) { return _HorizontalAt(number); });
        _Path("fine", path);
    }

    void _DrawGrid()
    {
        if (_IsFile())
            _DrawFineGrid();
        std::string path;
        for (int exponent = _price.FirstDecade(); exponent <= _price.LastDecade(); ++exponent)
            path += _VerticalAt(std::pow(10.0, exponent));
        for (int exponent = _tick.FirstDecade(); exponent <= _tick.LastDecade(); ++exponent)
            path += _HorizontalAt(std::pow(10.0, exponent));
        _Path("grid", path);
        _LabelDecades();
    }

    void _LabelDecades()
    {
        double const widest = _layout.letter * letterWidth *
                              static_cast<double>(std::max(DecadeText(_price.FirstDecade()).size(),
                                                           DecadeText(_price.LastDecade()).size()));
        int const priceStep = _price.DecadesBetweenLabels(widest + _layout.letter);
        for (int exponent = _price.FirstDecade(); exponent <= _price.LastDecade(); exponent += priceStep)
            _Text("axis", DecadeText(exponent), _price.At(std::pow(10.0, exponent)),
                  _Bottom() + 1.5 * _layout.letter, Anchor::Middle);
        int const tickStep = _tick.DecadesBetweenLabels(labelDistance * _layout.letter);
        for (int exponent = _tick.FirstDecade(); exponent <= _tick.LastDecade(); exponent += tickStep)
            _Text("axis", DecadeText(exponent), _Left() - 0.6 * _layout.letter,
                  _tick.At(std::pow(10.0, exponent)) + 0.35 * _layout.letter, Anchor::End);
    }

    void _DrawStairs()
    {
        std::string path = "M" + Place(_Left()) + " " + Place(_tick.At(_steps.front().tick));
        std::string dots;
        for (std::size_t index = 0; index + 1 < _steps.size(); ++index)
        {
            double const x = _price.At(_steps[index].top);
            dots += "<circle class=\"end\" cx=\"" + Place(x) + "\" cy=\"" +
                    Place(_tick.At(_steps[index].tick)) + "\" r=\"" + Place(_layout.dot) + "\"/>";
            path += "H" + Place(x) + "V" + Place(_tick.At(_steps[index + 1].tick));
        }
        _Path("stair", path + "H" + Place(_Right()));
        std::string const y = Place(_tick.At(_steps.back().tick));
        double const size = 2 * _layout.dot; // the arrow's, towards all the prices above
        _svg += dots + "<path class=\"end\" d=\"M" + Place(_Right() + size) + " " + y + "l-" +
                Place(1.6 * size) + " -" + Place(size / 1.3) + "v" + Place(2 * size / 1.3) + "z\"/>";
        _svg += _IsFile() ? "\n" : "";
    }

    /// Beside a rising stair there is room on the left above and on the right below. Where a stair falls or goes on
    /// level, the room is above it.
    void _LabelStairs()
    {
        std::size_t const edges = _steps.size() - 1;
        _LabelLastTick();
        if (edges > 0)
            _LabelEdge(edges - 1);
        for (std::size_t index = 0; index + 1 < edges; ++index)
            _LabelEdge(index);
    }

    void _LabelEdge(std::size_t index)
    {
        Step const& step = _steps[index];
        double const x = _price.At(step.top);
        double const y = _tick.At(step.tick);
        double const next = _tick.At(_steps[index + 1].tick);
        double const gap = 0.7 * _layout.letter;
        double const drop = 0.35 * _layout.letter;
        if (next < y)
        {
            _Label("edge", step.topText, x - gap, next + drop, Anchor::End);
            _Label("tick", step.tickText, x + gap, y + drop, Anchor::Start);
            return;
        }
        _Label("edge", step.topText, x, y - gap, Anchor::End);
        if (next > y) // else the next label says it
            _Label("tick", step.tickText, x, y - gap - 1.15 * _layout.letter, Anchor::End);
    }

    void _LabelLastTick()
    {
        _Label("tick", _steps.back().tickText, _Right(), _tick.At(_steps.back().tick) - _layout.letter,
               Anchor::End);
    }

    struct Box
    {
        double left;
        double right;
        double y;
    };

    /// Writes a label where it stands inside the plot and clear of the earlier ones.
    void _Label(char const* name, std::string const& text, double x, double y, Anchor anchor)
    {
        double const width = _layout.letter * letterWidth * static_cast<double>(text.size());
        double const left = anchor == Anchor::Start ? x : anchor == Anchor::End ? x - width : x - width / 2;
        Box const box = {left, left + width, y};
        auto const touches = [&](Box const& other)
        {
            double const apart = 0.5 * _layout.letter;
            return box.left < other.right + apart && other.left < box.right + apart &&
                   std::abs(box.y - other.y) < 1.05 * _layout.letter;
        };
        if (box.left < _Left() || box.right > _Right() + 1 || std::ranges::any_of(_labels, touches))
            return;
        _labels.push_back(box);
        _Text(name, text, x, y, anchor);
    }

    std::string_view _name;
    PictureUse _use;
    Layout _layout;
    std::vector<Step> _steps;
    Axis _price;
    Axis _tick;
    std::vector<Box> _labels;
    std::string _svg;
};
} // namespace

std::string LadderPicture(std::string_view name, nxVariableTickTable const& ladder, PictureUse use)
{
    return Picture(name, ladder, use).Draw();
}
} // namespace nxTool
