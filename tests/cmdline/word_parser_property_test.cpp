#include "tests/cmdline/grammar_model.h"
#include "tests/cmdline/parsed.h"

#include <gtest/gtest.h>
#include <random>

namespace
{

using Words = std::vector<std::string>;

constexpr int command_lines = 20000;
constexpr std::size_t longest = 12;

const Words& vocabulary()
{
    static const Words words = {
        "-out",       "-base",
        "-fname",     "-favor_contrib",
        "-encoding",  "-blank_ignore",
        "-out",       "-base",
        "-fname",     "-favor_contrib",
        "-encoding",  "-blank_ignore",
        "-abort",     "-pause",
        "-html",      "-force",
        "-query",     "-hstack",
        "-vstack",    "-qall",
        "-Out",       "-BASE",
        "-qntrivial", "-Encoding",
        "-",          "--",
        "--x",        "--out",
        "-outer",     "-ou",
        "",           "/base",
        "/out",       "a",
        "b.txt",      "out",
        "base",       "utf-8",
        "1",          "c d",
        "x-y",        "e",
        "contrib1",   "m",
        "UTF-16",     "./f",
        "\xff",       "g",
    };
    return words;
}

class WordSource
{
  public:
    Words command_line()
    {
        Words words(std::uniform_int_distribution<std::size_t>(0, longest)(random));
        for (std::string& word : words)
            word = vocabulary()[pick(random)];
        return words;
    }

  private:
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): the same command lines in every run, on purpose
    std::mt19937 random{20101109};
    std::uniform_int_distribution<std::size_t> pick{0, vocabulary().size() - 1};
};

bool differs(const Words& words)
{
    return result_of(parsed(words)) != model_parse(words);
}

/** Drops words as long as the difference stays. */
Words shrunk(Words words)
{
    for (std::size_t i = 0; i < words.size();) {
        Words fewer = words;
        fewer.erase(fewer.begin() + static_cast<Words::difference_type>(i));
        if (differs(fewer)) {
            words = fewer;
            i = 0;
        } else {
            ++i;
        }
    }
    return words;
}

std::string shown(const Words& words)
{
    std::string text;
    for (const std::string& word : words)
        text += "'" + word + "' ";
    return text;
}

TEST(WordParserProperty, AgreesWithTheModelOnRandomCommandLines)
{
    WordSource source;
    for (int i = 0; i < command_lines; ++i) {
        const Words words = source.command_line();
        if (!differs(words))
            continue;
        const Words least = shrunk(words);
        FAIL() << "command line " << i << ": " << shown(least)
               << "\n  parser: " << result_of(parsed(least))
               << "\n  model:  " << model_parse(least);
    }
}

} // namespace
