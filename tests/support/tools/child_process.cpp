#include "tests/support/tools/child_process.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int cannot_start = 127;

void redirect(int descriptor, const std::string& path)
{
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    ::dup2(file, descriptor);
}

int become(const Command& command, const std::string& output, const std::string& error)
{
    redirect(STDOUT_FILENO, output);
    redirect(STDERR_FILENO, error);
    for (const auto& [name, value] : command.environment)
        ::setenv(name.c_str(), value.c_str(), 1);
    for (const int descriptor : command.closed)
        ::close(descriptor);
    std::vector<char*> words;
    for (const std::string& word : command.words)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    ::execv(words[0], words.data());
    return cannot_start;
}

int wait_for(pid_t child)
{
    int status = 0;
    if (::waitpid(child, &status, 0) != child)
        throw std::runtime_error("waitpid failed");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

int run_in_child(const std::function<int()>& body)
{
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(body());
    if (child < 0)
        throw std::runtime_error("fork failed");
    return wait_for(child);
}

Outcome run_program(const ScratchDirectory& scratch, const Command& command)
{
    const std::string output = scratch / "standard_output";
    const std::string error =
        command.error_file.empty() ? scratch / "standard_error" : command.error_file;
    const int status = run_in_child([&] { return become(command, output, error); });
    return {status, read_text(output), command.error_file.empty() ? read_text(error) : ""};
}
