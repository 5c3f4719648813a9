#include "tests/manual/manual_page.h"

#include "tests/harness/scratch.h"

#include <sstream>

namespace
{

constexpr std::string_view one_line = ".Dl $ ";
constexpr std::string_view first_line = "$ ";

/** "\e" stands for a backslash. */
std::string unescaped(std::string line)
{
    for (auto at = line.find("\\e"); at != std::string::npos; at = line.find("\\e", at + 1))
        line.erase(at + 1, 1);
    return line;
}

class Reader
{
  public:
    void take(const std::string& line)
    {
        if (line.starts_with(".Sh "))
            in_examples = line == ".Sh EXAMPLES";
        else if (in_examples)
            take_example(line);
    }

    std::vector<std::string> examples{};

  private:
    void take_example(const std::string& line)
    {
        if (line.starts_with(one_line))
            examples.push_back(line.substr(one_line.size()));
        else if (line.starts_with(first_line))
            examples.push_back(line.substr(first_line.size()));
        else if (in_display && !line.starts_with('.'))
            examples.back().append("\n").append(line);
        in_display = (in_display && !line.starts_with(".Ed")) || line.starts_with(".Bd");
    }

    bool in_examples = false;
    bool in_display = false;
};

} // namespace

std::vector<std::string> examples_of(const std::string& page)
{
    std::istringstream lines(file_contents(MANUAL_PAGES "/" + page));
    Reader reader;
    for (std::string line; std::getline(lines, line);)
        reader.take(unescaped(line));
    return reader.examples;
}
