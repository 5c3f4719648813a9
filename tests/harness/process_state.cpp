#include "tests/harness/process_state.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace
{

void set_variable(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

void require(int result)
{
    if (result != 0)
        throw std::system_error(errno, std::generic_category());
}

const std::string& deep_name()
{
    static const std::string name(200, 'd');
    return name;
}

} // namespace

EnvironmentVariable::EnvironmentVariable(std::string name, const std::optional<std::string>& value)
    : variable(std::move(name))
{
    if (const char* found = std::getenv(variable.c_str()))
        earlier = found;
    set_variable(variable, value);
}

EnvironmentVariable::~EnvironmentVariable()
{
    set_variable(variable, earlier);
}

WorkingDirectory::WorkingDirectory(const std::string& path)
    : earlier(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    require(::chdir(path.c_str()));
}

WorkingDirectory::~WorkingDirectory()
{
    [[maybe_unused]] const int result = ::fchdir(earlier);
    ::close(earlier);
}

DeepWorkingDirectory::DeepWorkingDirectory()
{
    while (levels < 25) {
        require(::mkdir(deep_name().c_str(), 0700));
        require(::chdir(deep_name().c_str()));
        ++levels;
    }
}

DeepWorkingDirectory::~DeepWorkingDirectory()
{
    while (levels-- > 0 && ::chdir("..") == 0)
        ::rmdir(deep_name().c_str());
}

Umask::Umask(mode_t mask) : earlier(::umask(mask)) {}

Umask::~Umask()
{
    ::umask(earlier);
}

int open_descriptors()
{
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return static_cast<int>(std::distance(begin(open), end(open)));
}
