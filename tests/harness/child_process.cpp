#include "tests/harness/child_process.h"

#include <cerrno>
#include <cstdio>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

int run_in_child(const std::function<int()>& body)
{
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(body());
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        throw std::system_error(errno, std::generic_category(), "run_in_child");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}
