#include "platform/ks.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace
{

using PathBuffer = std::array<char, 4096>;
constexpr std::string_view install_prefix = PLATFORM_INSTALL_PREFIX;
constexpr std::string_view program_folder = "/bin";
static_assert(install_prefix.size() < PathBuffer().size());

std::string_view product_of(std::string_view program)
{
    const std::size_t slash = program.rfind('/');
    if (slash == std::string_view::npos || !program.substr(0, slash).ends_with(program_folder))
        return install_prefix;
    return program.substr(0, slash - program_folder.size());
}

/** Read into `program`; empty when the program's path is longer than the system's paths are. */
std::string_view product_directory(PathBuffer& program)
{
    const ssize_t length = ::readlink("/proc/self/exe", program.data(), program.size());
    if (length < 0)
        return errno == ENAMETOOLONG ? std::string_view() : install_prefix;
    return product_of({program.data(), static_cast<std::size_t>(length)});
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
    PathBuffer program;
    const std::string_view directory = product_directory(program);
    buffer[directory.copy(buffer, directory.size())] = '\0';
    return buffer;
}
