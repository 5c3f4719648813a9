#include "service/user_directory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace
{

using FileStatus = struct stat;

[[noreturn]] void fail(int error, const std::string& what)
{
    throw std::system_error(error, std::generic_category(), what);
}

bool is_own_fifo(const FileStatus& entry)
{
    return S_ISFIFO(entry.st_mode) && entry.st_uid == ::geteuid();
}

} // namespace

UserDirectory::UserDirectory(std::string path)
    : directory_path(std::move(path)),
      directory(::open(directory_path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC))
{
    struct stat entry {};
    if (!directory || ::fstat(directory.get(), &entry) != 0)
        fail(errno, directory_path);
    if (entry.st_uid != ::geteuid())
        fail(EPERM, directory_path + " belongs to somebody else");
    if (::fchmod(directory.get(), 0700) != 0)
        fail(errno, directory_path);
}

bool UserDirectory::is_named_by(const std::string& folder) const
{
    if (folder == directory_path)
        return true;
    // A relative name would mean the service's working directory, not the launcher's.
    struct stat own {};
    struct stat named {};
    return folder.starts_with('/') && ::stat(folder.c_str(), &named) == 0 &&
           ::fstat(directory.get(), &own) == 0 && own.st_dev == named.st_dev &&
           own.st_ino == named.st_ino;
}

Descriptor UserDirectory::open_fifo(const std::string& name, int access) const
{
    Descriptor fifo(::openat(directory.get(), name.c_str(),
                             access | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    struct stat entry {};
    if (!fifo || ::fstat(fifo.get(), &entry) != 0)
        fail(errno, name);
    if (!is_own_fifo(entry))
        fail(EPERM, name + " is no FIFO of this user");
    return fifo;
}

void UserDirectory::remove_fifo(const std::string& name) const
{
    struct stat entry {};
    if (::fstatat(directory.get(), name.c_str(), &entry, AT_SYMLINK_NOFOLLOW) == 0 &&
        is_own_fifo(entry))
        ::unlinkat(directory.get(), name.c_str(), 0);
}
