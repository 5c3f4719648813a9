#include "platform/ks.h"

#include <array>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace
{

constexpr std::size_t path_size = 4096;
constexpr std::string_view install_prefix = PLATFORM_INSTALL_PREFIX;
constexpr std::string_view program_folder = "/bin";

std::string_view product_of(std::string_view program)
{
    const std::size_t slash = program.rfind('/');
    if (slash == std::string_view::npos || !program.substr(0, slash).ends_with(program_folder))
        return install_prefix;
    return program.substr(0, slash - program_folder.size());
}

} // namespace

void ks_system_init()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) == -1)
            static_cast<void>(
                ::open("/dev/null", O_RDWR)); // takes the lowest free number: this one
}

char* ks_product_dir(char* buffer, int /*reserved*/)
{
    std::array<char, path_size> program;
    const ssize_t length = ::readlink("/proc/self/exe", program.data(), program.size());
    std::string_view directory =
        length < 0 ? install_prefix
                   : product_of({program.data(), static_cast<std::size_t>(length)});
    if (directory.size() >= path_size)
        directory = {};
    buffer[directory.copy(buffer, directory.size())] = '\0';
    return buffer;
}
