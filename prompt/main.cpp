#include "prompt/prompt_request.h"
#include "prompt/terminal_prompt.h"
#include "prompt/window_prompt.h"

#include <iostream>

namespace
{

constexpr int bad_command_line = 2;

constexpr const char* usage =
    "Usage: quarnprompt proceed -mask letters [ -type error|warning|ok|information ]"
    " -prompt text [ -prefer_gui ]\n"
    "letters: p proceed, a abort, y yes, n no\n";

} // namespace

int main(int argc, char* argv[])
{
    const auto request = read_request({argv + 1, argv + argc});
    if (!request) {
        std::cerr << usage;
        return bad_command_line;
    }
    if (request->prefer_gui)
        if (const auto answer = ask_in_window(*request))
            return status_of(*answer);
    return status_of(ask_on_terminal(*request));
}
