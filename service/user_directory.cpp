#include "service/user_directory.h"

#include "service/own_fifo.h"

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace
{

[[noreturn]] void fail(int error, const std::string& what)
{
    throw std::system_error(error, std::generic_category(), what);
}

std::string path_of(int directory)
{
    const std::string link = "/proc/self/fd/" + std::to_string(directory);
    std::array<char, PATH_MAX> path{};
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return {path.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

} // namespace

UserDirectory::UserDirectory(const std::string& path)
    : directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)),
      given_path(path)
{
    struct stat entry {};
    if (!directory || ::fstat(directory.get(), &entry) != 0)
        fail(errno, path);
    if (entry.st_uid != ::geteuid())
        fail(EPERM, path + " belongs to somebody else");
    if (::fchmod(directory.get(), 0700) != 0)
        fail(errno, path);
    real_path = path_of(directory.get());
}

bool UserDirectory::is_named_by(const std::string& folder) const
{
    // Any other relative name would mean the service's working directory, not the launcher's.
    return folder == given_path || (folder.starts_with('/') && is_at(folder));
}

bool UserDirectory::is_at(const std::string& folder) const
{
    struct stat own {};
    struct stat named {};
    return ::stat(folder.c_str(), &named) == 0 && ::fstat(directory.get(), &own) == 0 &&
           own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

void UserDirectory::remove_fifo(const std::string& name) const
{
    if (is_own_fifo(directory.get(), name))
        ::unlinkat(directory.get(), name.c_str(), 0);
}
