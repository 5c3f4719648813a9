#include "viewer/window/line_wrapping.h"

#include "tests/viewer/window/window_test.h"
#include "viewer/core/characters.h"

namespace
{

std::vector<std::string> broken(const std::string& line, int cells)
{
    const SharedStyle style = style_with();
    const auto begins = wrap_line(line, cells * style->metrics.cell(), style->metrics);
    std::vector<std::string> parts;
    for (std::size_t index = 0; index < begins.size(); ++index) {
        const std::size_t end = index + 1 < begins.size() ? begins[index + 1] : line.size();
        parts.push_back(line.substr(begins[index], end - begins[index]));
    }
    return parts;
}

TEST(WrapLine, BreaksAtWordsWherePossible)
{
    EXPECT_EQ(broken("some words here", 10), (std::vector<std::string>{"some words ", "here"}));
    EXPECT_EQ(broken("abcdefghijklm", 5), (std::vector<std::string>{"abcde", "fghij", "klm"}));
    EXPECT_EQ(broken("short", 10), (std::vector<std::string>{"short"}));
    EXPECT_EQ(broken("", 10), (std::vector<std::string>{""}));
}

TEST(WrapLine, LosesNoCharacterAndSplitsNone)
{
    std::string line;
    for (int count = 0; count < 500; ++count)
        line += count % 7 == 0 ? " " : count % 3 == 0 ? "\u65e5" : "\u00e4";

    std::string whole;
    for (const std::string& part : broken(line, 13)) {
        EXPECT_TRUE(begins_character(part.front()));
        whole += part;
    }
    EXPECT_EQ(whole, line);
}

} // namespace
