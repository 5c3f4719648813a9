#include "prompt/terminal_prompt.h"

#include <iostream>
#include <unistd.h>

namespace
{

bool is_interactive()
{
    return ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
}

void print_choices(const PromptRequest& request)
{
    if (request.answers.size() == 1) {
        std::cerr << "Press Enter to go on: ";
        return;
    }
    for (const Answer answer : request.answers)
        std::cerr << name_of(answer) << " [" << static_cast<char>(answer) << "]  ";
    std::cerr << "(Enter: " << name_of(request.answers.front()) << "): ";
}

std::optional<Answer> chosen(const PromptRequest& request, const std::string& line)
{
    if (line.empty())
        return request.answers.front();
    for (const Answer answer : request.answers)
        if (line.front() == static_cast<char>(answer))
            return answer;
    return std::nullopt;
}

} // namespace

Answer ask_on_terminal(const PromptRequest& request)
{
    std::cerr << name_of(request.type) << ": " << request.text << '\n';
    if (!is_interactive())
        return unanswered(request);
    for (std::string line;;) {
        print_choices(request);
        if (!std::getline(std::cin, line))
            return unanswered(request);
        if (const auto answer = chosen(request, line))
            return *answer;
    }
}
