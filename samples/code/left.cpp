// Counts the words of a text, and tells which are the most frequent.
#include "word_count.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <utility>

namespace
{

/** An apostrophe belongs to its word: "don't" is one. */
bool is_letter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '\'';
}

std::string lower(std::string word)
{
    for (char& c : word)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return word;
}

} // namespace

std::vector<WordCount> most_frequent(const std::string& text, std::size_t limit)
{
    std::map<std::string, int> counts;
    std::string word;
    for (const char c : text) {
        if (is_letter(c))
            word += c;
        else if (!word.empty())
            ++counts[lower(std::exchange(word, {}))];
    }
    if (!word.empty())
        ++counts[lower(word)];

    std::vector<WordCount> result(counts.begin(), counts.end());
    std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) {
        return a.second > b.second;
    });
    result.resize(std::min(result.size(), limit));
    return result;
}
