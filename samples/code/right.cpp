// Counts the words of a text, and tells which are the most frequent.
#include "word_count.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>

namespace
{

bool is_letter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

std::string lower(std::string word)
{
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return word;
}

} // namespace

std::vector<WordCount> most_frequent(const std::string& text, std::size_t limit)
{
    std::unordered_map<std::string, int> counts;
    counts.reserve(text.size() / 16);
    std::string word;
    for (const char c : text) {
        if (is_letter(c))
            word += c;
        else if (!word.empty())
            ++counts[lower(word)], word.clear();
    }

    std::vector<WordCount> result(counts.begin(), counts.end());
    std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    if (limit != 0 && result.size() > limit)
        result.resize(limit);
    return result;
}
