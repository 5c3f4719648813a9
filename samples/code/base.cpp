// Counts the words of a text, and tells which are the most frequent.
#include "word_count.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace
{

bool is_letter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
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
            ++counts[lower(word)], word.clear();
    }

    std::vector<WordCount> result(counts.begin(), counts.end());
    std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) {
        return a.second > b.second;
    });
    if (result.size() > limit)
        result.resize(limit);
    return result;
}
