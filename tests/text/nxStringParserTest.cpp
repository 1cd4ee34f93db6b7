// How a text falls into fields: plain, quoted, and all at once, with a separator at its end meaning three things.
#include "core/text/nxStringParser.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace
{

using Fields = std::vector<std::string>;

Fields Quoted(std::string const& text)
{
    nxStringParser parser(text);
    Fields fields;
    while (!parser.IsFullyParsed())
        fields.push_back(parser.GetSubString(',', '"'));
    return fields;
}

Fields Extract(std::string const& text, bool reverse)
{
    std::deque<std::string> parts{"kept"};
    nxStringParser::ExtractAllSubstrings(text, parts, reverse, '.');
    return Fields(parts.begin(), parts.end());
}

} // namespace

TEST(nxStringParser, QuotedFields)
{
    using Row = std::tuple<std::string, Fields>;
    Row const rows[] = {
        {"1,\"two, three\",4", {"1", "two, three", "4"}},
        {"\"a\",", {"a"}},          // ends at once, where the unquoted form has one more field
        {"\"a\" x,", {"a"}},        // the same with something dropped in between
        {"\"a\",,", {"a", "", ""}}, // the second separator stands behind a plain field
        {"\"say \"\"hi\"\"\",b", {"say \"hi\"", "b"}},
        {"ab\"cd\"ef,g", {"cd", "g"}}, // what surrounds the quotes is dropped
        {"\"open, end", {"open, end"}},
        {"\"a\"\"", {"a\""}}, // a doubled quote, then no closing one
    };
    for (auto const& [text, fields] : rows)
        EXPECT_EQ(Quoted(text), fields) << text;
}

TEST(nxStringParser, BothFormsShareOneCursor)
{
    std::string const text("1;\"2;3\";4");
    nxStringParser parser(text);
    EXPECT_EQ(parser.GetSubString(';'), "1");
    EXPECT_FALSE(parser.IsFullyParsed());
    EXPECT_EQ(parser.GetSubString(';', '"'), "2;3");
    EXPECT_EQ(parser.GetSubString(';'), "4");
    EXPECT_TRUE(parser.IsFullyParsed());
}

TEST(nxStringParser, ExtractAddsToWhatIsThere)
{
    EXPECT_EQ(Extract("", false), (Fields{"kept"}));
    EXPECT_EQ(Extract("1.2.3", false), (Fields{"kept", "1", "2", "3"}));
    EXPECT_EQ(Extract("1.2.3", true), (Fields{"3", "2", "1", "kept"}));
    EXPECT_EQ(Extract("a.b.", false), (Fields{"kept", "a", "b"})); // no empty field at the end
    EXPECT_EQ(Extract(".a..b", false), (Fields{"kept", "", "a", "", "b"}));
    EXPECT_EQ(Extract(".", false), (Fields{"kept", ""}));
}
