#include "prompt/prompt_request.h"

#include <algorithm>
#include <string_view>

namespace
{

bool agrees(Answer answer)
{
    return answer == Answer::proceed || answer == Answer::yes;
}

std::optional<PromptType> read_type(std::string_view word)
{
    if (word == "error")
        return PromptType::error;
    if (word == "warning")
        return PromptType::warning;
    if (word == "ok" || word == "information")
        return PromptType::information;
    return std::nullopt;
}

/** Nothing for an empty mask, an unknown letter or one that comes twice. */
std::vector<Answer> read_mask(std::string_view mask)
{
    std::vector<Answer> answers;
    for (const char letter : mask) {
        const auto answer = static_cast<Answer>(letter);
        const bool is_known = std::string_view("payn").find(letter) != std::string_view::npos;
        if (!is_known || std::find(answers.begin(), answers.end(), answer) != answers.end())
            return {};
        answers.push_back(answer);
    }
    return answers;
}

std::string trimmed(const std::string& text)
{
    constexpr const char* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/** Takes an option and its value; false when that is none. */
bool take_option(const std::string& option, const std::string& value, PromptRequest& request)
{
    if (option == "-mask") {
        request.answers = read_mask(value);
        return !request.answers.empty();
    }
    if (option == "-type") {
        const auto type = read_type(value);
        request.type = type.value_or(request.type);
        return type.has_value();
    }
    request.text = trimmed(value);
    return option == "-prompt" && !request.text.empty();
}

} // namespace

std::optional<PromptRequest> read_request(const std::vector<std::string>& words)
{
    if (words.empty() || words.front() != "proceed")
        return std::nullopt;
    PromptRequest request;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i] == "-prefer_gui") {
            request.prefer_gui = true;
            continue;
        }
        if (i + 1 == words.size() || !take_option(words[i], words[i + 1], request))
            return std::nullopt;
        ++i;
    }
    if (request.answers.empty() || request.text.empty())
        return std::nullopt;
    return request;
}

const char* name_of(PromptType type)
{
    switch (type) {
    case PromptType::error:
        return "error";
    case PromptType::warning:
        return "warning";
    case PromptType::information:
        break;
    }
    return "information";
}

const char* name_of(Answer answer)
{
    switch (answer) {
    case Answer::proceed:
        return "Proceed";
    case Answer::abort:
        return "Abort";
    case Answer::yes:
        return "Yes";
    case Answer::no:
        break;
    }
    return "No";
}

int status_of(Answer answer)
{
    return agrees(answer) ? 0 : 1;
}

Answer unanswered(const PromptRequest& request)
{
    const auto refusal = std::find_if_not(request.answers.begin(), request.answers.end(), agrees);
    return refusal != request.answers.end() ? *refusal : request.answers.front();
}
