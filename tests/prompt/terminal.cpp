#include "tests/prompt/terminal.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

TerminalProgram::TerminalProgram(const std::vector<std::string>& words)
{
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (process == 0) {
        ::unsetenv("DISPLAY");
        ::unsetenv("WAYLAND_DISPLAY");
        ::execv(arguments.front(), arguments.data());
        ::_exit(126);
    }
}

TerminalProgram::~TerminalProgram()
{
    ::close(terminal);
    if (process > 0) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
}

bool TerminalProgram::await(const std::string& text)
{
    while (printed.find(text) == std::string::npos) {
        std::array<char, 256> bytes{};
        const ssize_t length = ::read(terminal, bytes.data(), bytes.size());
        if (length <= 0)
            return false;
        printed.append(bytes.data(), static_cast<std::size_t>(length));
    }
    printed.clear();
    return true;
}

void TerminalProgram::type(const std::string& keys) const
{
    [[maybe_unused]] const ssize_t written = ::write(terminal, keys.data(), keys.size());
}

int TerminalProgram::wait()
{
    int status = 0;
    ::waitpid(process, &status, 0);
    process = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
